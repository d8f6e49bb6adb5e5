#include "core/WorkDirTree.h"

#include "framework/base/text.h"

namespace tandrel {

TWorkDirItem::TWorkDirItem(TWorkDirTree& owner)
    : Children(std::make_unique<TWorkDirTree>(owner.CvsObj())) {}

TWorkDirItem::~TWorkDirItem() = default;

TWorkDirItem* TWorkDirItem::ItemExist(std::string_view Dir, std::string_view Name_) {
    return framework::SameText(Directory, Dir) && framework::SameText(Name, Name_) ? this : nullptr;
}

TWorkDirItem& TWorkDirTree::Add() { return Emplace(*this); }

TWorkDirItem* TWorkDirTree::ItemExist(std::string_view Dir, std::string_view Name) const {
    for (TWorkDirItem& item : *this)
        if (TWorkDirItem* found = item.ItemExist(Dir, Name)) return found;
    return nullptr;
}

}  // namespace tandrel
