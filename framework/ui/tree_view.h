#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/control.h"
#include "framework/ui/image_list.h"
#include "framework/ui/views.h"

namespace framework {

class TTreeView;

/// A node of a tree view, owned by the node above it. References to it hold until that node's
/// children are deleted; TTreeView::OnDeletion tells of it.
class FRAMEWORK_API TTreeViewNode final : public TTreeNode {
public:
    /// Nodes are made by AddChild.
    TTreeViewNode(TTreeView& tree, TTreeViewNode* parent, std::string text);
    ~TTreeViewNode() override;

    TTreeViewNode& AddChild(const std::string& text) override;
    void DeleteChildren() override;
    void SetData(TObject* data) override { Data_ = data; }
    TObject* Data() const override { return Data_; }
    /// @param state 1 to 15, or 0 for no state image.
    void SetImages(int image, int selected, int state) override;
    void SetHasChildren(bool hasChildren) override;
    /// Nodes that are closed above the node are opened as they are; OnExpanding is not asked.
    void SetSelected(bool selected) override;

    const std::string& Text() const { return Text_; }
    void SetText(const std::string& text);
    /// The node above; none for those of the first level.
    TTreeViewNode* Parent() const;
    const std::vector<std::unique_ptr<TTreeViewNode>>& Children() const { return Children_; }

    int StateImage() const { return State_; }
    void SetStateImage(int state) { SetImages(Image_, SelectedImage_, state); }
    bool Selected() const;
    bool Expanded() const;
    /// Expanding asks OnExpanding first, each time.
    void SetExpanded(bool expanded);
    /// The node's place in the client area, without its images; none while it cannot be seen.
    std::optional<RECT> TextRect() const;

private:
    friend class TTreeView;
    void Insert();

    TTreeView& Tree_;
    TTreeViewNode* Parent_;  // none for the invisible root
    HTREEITEM Item_ = nullptr;
    std::string Text_;
    TObject* Data_ = nullptr;
    int Image_ = 0;
    int SelectedImage_ = 0;
    int State_ = 0;
    std::optional<bool> HasChildren_;  // by its children while nobody has said
    std::vector<std::unique_ptr<TTreeViewNode>> Children_;
};

/// A tree with lines and buttons, whose selection shows also without the focus. Its texts cannot be
/// edited by the user.
class FRAMEWORK_API TTreeView : public TControl {
public:
    explicit TTreeView(TControl& parent);
    ~TTreeView() override;

    /// The invisible node above those of the first level.
    TTreeViewNode& Root() { return *Root_; }
    void Clear() { Root_->DeleteChildren(); }
    /// The selected node, or none.
    TTreeViewNode* Selected() const;

    /// Nothing is drawn between the two, and nodes are handed to the system at the end, with all
    /// that was set by then, or when the tree is first seen. Brackets may stand in brackets.
    void BeginUpdate();
    void EndUpdate();

    /// Image lists stay their owner's and must live as long as the tree; null for none.
    void SetImages(HIMAGELIST images);
    /// Position 0 of the list is never shown.
    void SetStateImages(HIMAGELIST images);
    /// @param indent design units by which each level stands further to the right.
    void SetIndent(int indent);

    /// Another node was selected, or none.
    TNotifyEvent OnChange;
    TNotifyEvent OnClick;
    /// A node is about to be expanded, by the user or by SetExpanded: the place to fill in its
    /// children, anew each time. False refuses.
    std::function<bool(TTreeViewNode& node)> OnExpanding;
    /// The user has pressed a node's state image, or the space bar on the selected node that has
    /// one.
    std::function<void(TTreeViewNode& node)> OnStateClick;
    /// Asked before a node is drawn: the colour of its text, or none for the usual one. It may set
    /// the node's images.
    std::function<std::optional<COLORREF>(TTreeViewNode& node)> OnNodeColor;
    /// A node is about to be deleted: what refers to it has to forget it. Called also when the tree
    /// itself goes.
    std::function<void(TTreeViewNode& node)> OnDeletion;

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Notify(NMHDR& header) override;
    POINT MenuPlace() const override;

private:
    friend class TTreeViewNode;
    LRESULT Expanding(const NMTREEVIEWW& expanding);
    LRESULT CustomDraw(NMTVCUSTOMDRAW& draw);
    void InsertPending();
    /// Selects a node, or none; the only way to do so.
    void Select(const TTreeViewNode* node);

    // Nodes inserted below one another in a bracket, first to last, not yet known to the system.
    std::vector<TTreeViewNode*> Pending_;
    int Updating_ = 0;
    int Deferring_ = 0;
    bool Revealing_ = false;  // what is above a node being selected is opened
    std::unique_ptr<TTreeViewNode> Root_;
};

/// The bracket of BeginUpdate and EndUpdate.
class TTreeUpdate {
public:
    explicit TTreeUpdate(TTreeView& tree) : Tree_(tree) { Tree_.BeginUpdate(); }
    ~TTreeUpdate() { Tree_.EndUpdate(); }
    TTreeUpdate(const TTreeUpdate&) = delete;
    TTreeUpdate& operator=(const TTreeUpdate&) = delete;

private:
    TTreeView& Tree_;
};

}  // namespace framework
