#include "cvs/LogList.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "cvs/Cvstempl.h"
#include "framework/base/text.h"

namespace tandrel {

namespace {

std::size_t HashOf(std::string_view name) {
    return std::hash<std::string_view>()(name);
}

}  // namespace

void TLogList::Clear() {
    Index_.clear();
    TCollection::Clear();
}

TLogClass* TLogList::ItemExist(std::string_view name) const {
    return Index_.empty() ? nullptr : Index_[SlotOf(name, HashOf(name))].Item;
}

TLogClass* TLogList::Add(std::string_view name, std::string_view value, bool isLabel) {
    Widen();
    const std::size_t hash = HashOf(name);
    TSlot& slot = Index_[SlotOf(name, hash)];
    if (slot.Item) {
        slot.Item->IsLabel = isLabel;
        return slot.Item;
    }
    TLogClass& item = Emplace();
    item.Name = name;
    item.Value = value;
    item.IsLabel = isLabel;
    slot = {hash, &item};
    return nullptr;
}

std::size_t TLogList::SlotOf(std::string_view name, std::size_t hash) const {
    const std::size_t mask = Index_.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const TSlot& slot = Index_[at];
        if (!slot.Item || (slot.Hash == hash && slot.Item->Name == name))
            return at;
    }
}

void TLogList::Widen() {
    constexpr std::size_t Least = 64;
    if (static_cast<std::size_t>(Count()) < Index_.size() / 2)
        return;
    const std::vector<TSlot> before =
        std::exchange(Index_, std::vector<TSlot>(std::max(Least, Index_.size() * 2)));
    for (const TSlot& slot : before)
        if (slot.Item)
            Index_[SlotOf(slot.Item->Name, slot.Hash)] = slot;
}

bool CheckTagNameExists(const TCvsObject& CvsObject, std::string_view TagName) {
    for (const TLogClass& item : CvsObject.LogListA)
        if (framework::SameText(item.Name, TagName))
            return true;
    return false;
}

}  // namespace tandrel
