#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "framework/ui/tree_view.h"
#include "hosting/FileRows.h"

namespace workbench {

/// The folders of a working copy in a tree view, which outlives it. Nodes of folders that are still
/// there stay, open or closed, selected or not. Main thread only.
class TFolderTree {
public:
    explicit TFolderTree(framework::TTreeView& tree);
    TFolderTree(const TFolderTree&) = delete;
    TFolderTree& operator=(const TFolderTree&) = delete;

    /// Shows these folders. Those of another project than before begin with the top one selected,
    /// and open. @return true when OnSelect was called.
    bool Show(hosting::TFolderRow top);
    void Clear();
    /// The selected folder's path, which is the top one's while none is; empty when there is none.
    std::string Folder() const;
    /// Selects a folder, and opens what is above it. @return false when it is not there.
    bool Select(const std::string& folder);

    /// Another folder was selected, or none.
    std::function<void()> OnSelect;

private:
    using TNode = framework::TTreeViewNode;
    void Add(TNode& above, const hosting::TFolderRow& folder);
    void AddChildren(TNode& node, const hosting::TFolderRow& folder);
    void Update(TNode& node, const hosting::TFolderRow& folder);
    void Label(TNode& node, const hosting::TFolderRow& folder);
    const hosting::TFolderRow* Find(const std::string& path) const;
    TNode* NodeOf(const std::string& path);
    void Opened(const TNode& node, std::vector<std::string>& paths) const;

    framework::TTreeView& Tree_;
    hosting::TFolderRow Top_;
    std::unordered_map<const TNode*, std::string> Paths_;
    bool Updating_ = false;  // what the selection does now is no event
};

}  // namespace workbench
