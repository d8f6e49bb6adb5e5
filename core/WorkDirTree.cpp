#include "core/WorkDirTree.h"

#include <vector>

#include "core/Customvcs.h"
#include "core/Cvs_utils.h"
#include "core/IgnoreList.h"
#include "framework/base/text.h"
#include "framework/ui/views.h"

namespace tandrel {
namespace {

// Positions in the state images of the trees.
constexpr int UncheckedState = 4;
constexpr int CheckedState = 5;

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

bool TWorkDirItem::Fetch(std::string& text, bool again,
                         std::string (TCustomCvsObj::*fetch)(const std::string&)) {
    if (!again)
        return false;
    TCustomCvsObj& obj = *Owner_.CvsObj();
    // While another command runs this one is refused, and its empty answer is none.
    const bool refused = obj.IsRunning();
    const std::string fetched = (obj.*fetch)(SlashSep(Directory, Name));
    if (!refused)
        text = fetched;
    return !refused;
}

void TWorkDirItem::OnSelect2(TOperationType Operation, framework::TTextView& RichEdit, bool Force) {
    RichEdit.Clear();
    if (IsDirectory || !InRepository)
        return;
    switch (Operation) {
        case otStatus:
            Fetch(StatusText, Force || StatusText.empty(), &TCustomCvsObj::StatusFileEx);
            RichEdit.SetText(StatusText);
            break;
        case otLog:
            Fetch(LogText, Force || LogText.empty(), &TCustomCvsObj::LogFileEx);
            RichEdit.SetText(LogText);
            break;
        case otDiff:
            if (!Changed)
                break;
            if (Fetch(DiffText, Force || (DiffText.empty() && !DiffLoaded),
                      &TCustomCvsObj::DiffFileEx))
                DiffLoaded = true;
            RichEdit.SetText(DiffText);
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
        } else if (item.IsDirectory || !CvsObj_->CVS_SystemFile(item.Name)) {
            // The list itself is ignored because it says so, not because the user does.
            names.push_back(item.Name);
            folder = item.Directory;
        }
    }
    if (names.empty())
        return;
    const std::string path = SlashSep(folder, FileName);
    std::vector<std::string> kept;
    if (CvsObj_->KeepIgnorePatterns)
        kept = OtherIgnoreLines(
            path, [&](const std::string& name) { return ItemExist(folder, name) != nullptr; });
    WriteIgnoreList(path, std::move(kept), names);
}

void AddLwItems(framework::TListRows& ListView, TWorkDirItem& Item) {
    ListView.Add({.Caption = Item.Name,
                  .SubItems = {Item.StatusName(), Item.Revision, Item.TimeStamp,
                               Item.RepositoryPath, Item.RepositoryFileName},
                  .ImageIndex = Item.ImageIndex,
                  .Data = &Item});
}

}  // namespace tandrel
