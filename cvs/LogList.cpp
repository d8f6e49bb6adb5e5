#include "cvs/LogList.h"

#include "cvs/Cvstempl.h"
#include "framework/base/text.h"

namespace tandrel {

void TLogList::Clear() {
    Index_.clear();
    TCollection::Clear();
}

TLogClass* TLogList::ItemExist(std::string_view name) const {
    const auto found = Index_.find(name);
    return found == Index_.end() ? nullptr : found->second;
}

TLogClass* TLogList::Add(std::string_view name, std::string_view value, bool isLabel) {
    if (TLogClass* known = ItemExist(name)) {
        known->IsLabel = isLabel;
        return known;
    }
    TLogClass& item = Emplace();
    item.Name = name;
    item.Value = value;
    item.IsLabel = isLabel;
    Index_.emplace(item.Name, &item);
    return nullptr;
}

bool CheckTagNameExists(const TCvsObject& CvsObject, std::string_view TagName) {
    for (const TLogClass& item : CvsObject.LogListA)
        if (framework::SameText(item.Name, TagName)) return true;
    return false;
}

}  // namespace tandrel
