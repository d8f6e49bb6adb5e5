#include "workbench/FolderTree.h"

#include <algorithm>
#include <utility>

#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/ui/form.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

/// The flag is set as long as it lives.
class TSetFor {
public:
    explicit TSetFor(bool& flag) : Flag_(flag), Before_(std::exchange(flag, true)) {}
    ~TSetFor() { Flag_ = Before_; }
    TSetFor(const TSetFor&) = delete;
    TSetFor& operator=(const TSetFor&) = delete;

private:
    bool& Flag_;
    const bool Before_;
};

std::optional<COLORREF> ColourOf(const TFolderRow& folder) {
    if (folder.State == TFileState::Ignored)
        return RGB(128, 128, 128);
    if (folder.State == TFileState::Unknown)
        return RGB(0, 128, 0);
    return folder.HasChanges ? std::optional(RGB(192, 0, 0)) : std::nullopt;
}

}  // namespace

TFolderTree::TFolderTree(TTreeView& tree) : Tree_(tree) {
    Tree_.OnChange = [this](TObject*) {
        if (!Updating_ && OnSelect)
            OnSelect();
    };
    Tree_.OnExpanding = [this](TNode& node) {
        const auto path = Paths_.find(&node);
        const TFolderRow* const folder = path == Paths_.end() ? nullptr : Find(path->second);
        if (folder && node.Children().empty())
            AddChildren(node, *folder);
        return true;
    };
    Tree_.OnDeletion = [this](TNode& node) { Paths_.erase(&node); };
    Tree_.OnNodeColor = [this](TNode& node) -> std::optional<COLORREF> {
        const auto path = Paths_.find(&node);
        const TFolderRow* const folder = path == Paths_.end() ? nullptr : Find(path->second);
        return folder ? ColourOf(*folder) : std::nullopt;
    };
}

const TFolderRow* TFolderTree::Find(const std::string& path) const {
    const TFolderRow* at = &Top_;
    while (!SameText(at->Path, path)) {
        const auto next = std::ranges::find_if(at->Folders, [&](const TFolderRow& folder) {
            return SameText(folder.Path, path.substr(0, folder.Path.size())) &&
                   (path.size() == folder.Path.size() || path[folder.Path.size()] == '\\');
        });
        if (next == at->Folders.end())
            return nullptr;
        at = &*next;
    }
    return at;
}

void TFolderTree::Label(TNode& node, const TFolderRow& folder) {
    // Never by the colour alone.
    const char* const mark = folder.State == TFileState::Ignored   ? " (ignored)"
                             : folder.State == TFileState::Unknown ? " (not in repository)"
                             : folder.HasChanges                   ? " *"
                                                                   : "";
    node.SetText(folder.Name + mark);
    node.SetImages(folder.ImageIndex, folder.ImageIndex, 0);
    node.SetHasChildren(!folder.Folders.empty());
}

void TFolderTree::Add(TNode& above, const TFolderRow& folder) {
    TNode& node = above.AddChild(folder.Name);
    Paths_[&node] = folder.Path;
    Label(node, folder);
}

void TFolderTree::AddChildren(TNode& node, const TFolderRow& folder) {
    const TTreeUpdate update(Tree_);
    for (const TFolderRow& below : folder.Folders)
        Add(node, below);
}

void TFolderTree::Opened(const TNode& node, std::vector<std::string>& paths) const {
    for (const auto& child : node.Children()) {
        if (!child->Expanded())
            continue;
        paths.push_back(Paths_.at(child.get()));
        Opened(*child, paths);
    }
}

void TFolderTree::Update(TNode& node, const TFolderRow& folder) {
    Label(node, folder);
    if (!node.Expanded() && !node.Children().empty())
        node.DeleteChildren();
    if (node.Children().empty())
        return;
    const bool isSame = std::ranges::equal(node.Children(), folder.Folders,
                                           [&](const auto& child, const TFolderRow& below) {
                                               return Paths_[child.get()] == below.Path;
                                           });
    if (isSame) {
        for (std::size_t i = 0; i < folder.Folders.size(); ++i)
            Update(*node.Children()[i], folder.Folders[i]);
        return;
    }
    // Others have come or gone: these are made anew, and opened where they were open.
    std::vector<std::string> opened;
    Opened(node, opened);
    node.DeleteChildren();
    AddChildren(node, folder);
    node.SetExpanded(true);
    for (const std::string& path : opened)
        if (TNode* const again = NodeOf(path))
            again->SetExpanded(true);
}

bool TFolderTree::Show(TFolderRow top) {
    const bool isOther = !SameText(top.Path, Top_.Path);
    if (!isOther && top == Top_)
        return false;
    const std::string before = Folder();
    std::string selected = isOther ? top.Path : before;
    Top_ = std::move(top);
    {
        const TSetFor quiet(Updating_);
        if (isOther || Tree_.Root().Children().empty()) {
            Tree_.Clear();
            Add(Tree_.Root(), Top_);
            Tree_.Root().Children().front()->SetExpanded(true);
        } else {
            Update(*Tree_.Root().Children().front(), Top_);
        }
        // One that is gone leaves the selection to what was around it.
        while (!Select(selected) && selected.size() > Top_.Path.size())
            selected = ExtractFileDir(selected);
    }
    if (!isOther && SameText(before, Folder()))
        return false;
    if (OnSelect)
        OnSelect();
    return true;
}

void TFolderTree::Clear() {
    const TSetFor quiet(Updating_);
    Top_ = {};
    Tree_.Clear();
}

std::string TFolderTree::Folder() const {
    const TNode* const node = Tree_.Selected();
    const auto path = Paths_.find(node);
    return path == Paths_.end() ? Top_.Path : path->second;
}

TTreeViewNode* TFolderTree::NodeOf(const std::string& path) {
    if (!Find(path))
        return nullptr;
    TNode* node = Tree_.Root().Children().front().get();
    while (!SameText(Paths_.at(node), path)) {
        if (node->Children().empty())
            AddChildren(*node, *Find(Paths_.at(node)));
        const auto next = std::ranges::find_if(node->Children(), [&](const auto& child) {
            const std::string& below = Paths_.at(child.get());
            return SameText(below, path.substr(0, below.size())) &&
                   (path.size() == below.size() || path[below.size()] == '\\');
        });
        if (next == node->Children().end())
            return nullptr;
        node = next->get();
    }
    return node;
}

bool TFolderTree::Select(const std::string& folder) {
    TNode* const node = NodeOf(folder);
    if (!node)
        return false;
    if (!node->Selected())
        node->SetSelected(true);
    return true;
}

}  // namespace workbench
