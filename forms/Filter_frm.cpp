#include "forms/Filter_frm.h"

#include <vector>

#include "cvs/Cvstempl.h"

namespace tandrel {

using namespace framework;

namespace {

TWorkDirItem* ItemOf(const TTreeViewNode& node) {
    return static_cast<TWorkDirItem*>(node.Data());
}

int StateOf(const TWorkDirItem& item) {
    return item.Included ? IncludedImage : ExcludedImage;
}

/// The browser's tree has nodes for the same items, and keeps them.
class TOtherNodes {
public:
    explicit TOtherNodes(TWorkDirTree& tree) : Tree_(tree) {
        for (const TWorkDirItem& item : tree)
            Nodes_.push_back(item.TreeNode);
    }
    ~TOtherNodes() {
        std::size_t i = 0;
        for (TWorkDirItem& item : Tree_)
            item.TreeNode = Nodes_[i++];
    }
    TOtherNodes(const TOtherNodes&) = delete;
    TOtherNodes& operator=(const TOtherNodes&) = delete;

private:
    TWorkDirTree& Tree_;
    std::vector<TTreeNode*> Nodes_;
};

}  // namespace

TFilter_Form::TFilter_Form() : TFrameDetForm("File include list") {
    TFormRows rows(*this, 400, 0);
    Heading_ = &rows.Heading("File include list");
    TreeView1_ = &rows.Block<TTreeView>("TreeView1", 260);
    TreeView1_->SetStateImages(States_.Get());
    SetDesignSize(rows.Width(), rows.Top() + TFormRows::Margin - TFormRows::Gap);
    TreeView1_->SetAnchors(akLeft | akTop | akRight | akBottom);
    TreeView1_->OnExpanding = [this](TTreeViewNode& node) { return Expand(node); };
    TreeView1_->OnStateClick = [this](TTreeViewNode& node) { StateClick(node); };
    TreeView1_->OnNodeColor = [](TTreeViewNode& node) -> std::optional<COLORREF> {
        if (const TWorkDirItem* item = ItemOf(node); node.StateImage() != StateOf(*item))
            node.SetStateImage(StateOf(*item));
        return std::nullopt;
    };
}

bool TFilter_Form::StatusOk() {
    return !CvsObject->WorkDirTree.Empty();
}

void TFilter_Form::LoadFormData() {
    TreeView1_->SetImages(ShellSmallImageList());
    if (CvsObject->WorkDirTree.Empty())
        CvsObject->Load_WorkDirTree();
    LoadRootNodes();
}

void TFilter_Form::LoadRootNodes() {
    const TTreeUpdate update(*TreeView1_);
    TreeView1_->Clear();
    for (TWorkDirItem& item : CvsObject->WorkDirTree) {
        TTreeViewNode& node = TreeView1_->Root().AddChild(item.Name);
        node.SetData(&item);
        node.SetImages(item.ImageIndex, item.ImageIndex, StateOf(item));
        node.SetHasChildren(item.IsDirectory);
    }
}

bool TFilter_Form::Expand(TTreeViewNode& node) {
    TWorkDirItem& item = *ItemOf(node);
    const TOtherNodes kept(*item.Children);
    const TTreeUpdate update(*TreeView1_);
    bool allow = true;
    item.OnExpanding(node, allow);
    return allow;
}

void TFilter_Form::StateClick(TTreeViewNode& node) {
    if (ReadOnly_)
        return;
    const int state = node.StateImage() == IncludedImage ? ExcludedImage : IncludedImage;
    node.SetStateImage(state);
    ItemOf(node)->Included = state == IncludedImage;
}

void TFilter_Form::SetReadOnly() {
    ReadOnly_ = true;
    TreeView1_->SetAccessibleName(Heading_->Text());
    Heading_->SetText("");
    // Nothing stands above the tree now.
    const RECT before = TreeView1_->Bounds();
    const int top = static_cast<int>(Heading_->Bounds().top);
    TreeView1_->SetBounds(static_cast<int>(before.left), top, TreeView1_->Width(),
                          static_cast<int>(before.bottom) - top);
    TreeView1_->SetAnchors(akLeft | akTop | akRight | akBottom);
}

TFilter_FormReadOnly::TFilter_FormReadOnly() {
    SetReadOnly();
}

}  // namespace tandrel
