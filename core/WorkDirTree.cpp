#include "core/WorkDirTree.h"

#include <vector>

#include "core/Customvcs.h"
#include "core/Cvs_utils.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"
#include "framework/ui/views.h"

namespace tandrel {
namespace {

// Positions in the state images of the trees.
constexpr int UncheckedState = 4;
constexpr int CheckedState = 5;

constexpr const char* IgnoreFile = ".cvsignore";

}  // namespace

TWorkDirItem::TWorkDirItem(TWorkDirTree& owner)
    : Children(std::make_unique<TWorkDirTree>(owner.CvsObj())), Owner_(owner) {}

TWorkDirItem::~TWorkDirItem() = default;

TWorkDirItem* TWorkDirItem::ItemExist(std::string_view Dir, std::string_view Name_) {
    // Names mostly differ, folders mostly do not.
    return framework::SameText(Name, Name_) && framework::SameText(Directory, Dir) ? this : nullptr;
}

void TWorkDirItem::SaveIgnore(const std::string& FileName) const {
    if (!Children->Empty())
        Children->SaveIgnore(FileName);
}

void TWorkDirItem::OnExpanding(framework::TTreeNode& Node, bool& AllowExpansion) {
    Node.DeleteChildren();
    AllowExpansion = !Children->Empty();
    for (TWorkDirItem& child : *Children) {
        framework::TTreeNode& node = Node.AddChild(child.Name);
        node.SetData(&child);
        node.SetImages(child.ImageIndex, child.ImageIndex,
                       child.Included ? CheckedState : UncheckedState);
        node.SetHasChildren(child.IsDirectory);
        child.TreeNode = &node;
    }
}

void TWorkDirItem::OnSelect(framework::TListRows& ListView) {
    const framework::TListUpdate update(ListView);
    ListView.Clear();
    if (!IsDirectory) {
        AddLwItems(ListView, *this);
        return;
    }
    for (TWorkDirItem& child : *Children)
        AddLwItems(ListView, child);
}

void TWorkDirItem::OnSelect2(TOperationType Operation, framework::TTextView& RichEdit, bool Force) {
    RichEdit.Clear();
    if (IsDirectory || !InRepository)
        return;
    TCustomCvsObj& obj = *Owner_.CvsObj();
    const std::string path = SlashSep(Directory, Name);
    switch (Operation) {
        case otStatus:
            if (Force || StatusText_.empty())
                StatusText_ = obj.StatusFileEx(path);
            RichEdit.SetText(StatusText_);
            break;
        case otLog:
            if (Force || LogText_.empty())
                LogText_ = obj.LogFileEx(path);
            RichEdit.SetText(LogText_);
            break;
        case otDiff:
            if (!Changed)
                break;
            if (Force || (DiffText_.empty() && !DiffLoaded_)) {
                DiffText_ = obj.DiffFileEx(path);
                DiffLoaded_ = true;
            }
            RichEdit.SetText(DiffText_);
            break;
        default:
            break;
    }
}

void TWorkDirItem::OnDblClick() {
    if (!TreeNode)
        return;
    TreeNode->SetSelected(false);
    TreeNode->SetSelected(true);
}

const char* TWorkDirItem::StatusName() const {
    if (!Included)
        return "Ignore";
    if (IsDirectory)
        return "Directory";
    if (!InRepository)
        return "Not in repository";
    return Changed ? "Changed in workspace" : "Not changed";
}

TWorkDirItem& TWorkDirTree::Add() {
    return Emplace(*this);
}

TWorkDirItem* TWorkDirTree::ItemExist(std::string_view Dir, std::string_view Name) const {
    for (TWorkDirItem& item : *this)
        if (TWorkDirItem* found = item.ItemExist(Dir, Name))
            return found;
    return nullptr;
}

void TWorkDirTree::SaveIgnore(const std::string& FileName) const {
    std::vector<std::string> names;
    std::string folder;
    for (const TWorkDirItem& item : *this) {
        if (item.Included) {
            item.SaveIgnore(FileName);
        } else {
            names.push_back(item.Name);
            folder = item.Directory;
        }
    }
    if (names.empty())
        return;
    // The list ignores itself.
    names.push_back(IgnoreFile);
    framework::ReplaceTextFile(SlashSep(folder, FileName), names);
}

void AddLwItems(framework::TListRows& ListView, TWorkDirItem& Item) {
    ListView.Add({.Caption = Item.Name,
                  .SubItems = {Item.StatusName(), Item.Revision, Item.TimeStamp,
                               Item.RepositoryPath, Item.RepositoryFileName},
                  .ImageIndex = Item.ImageIndex,
                  .Data = &Item});
}

}  // namespace tandrel
