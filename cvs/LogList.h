#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "framework/base/collection.h"

namespace tandrel {

class TCvsObject;

/// A symbolic name or a date from the client's log.
class TLogClass {
public:
    std::string Name;
    std::string Value;     ///< The revision that belongs to it.
    bool IsLabel = false;  ///< A label, not a branch.
};

/// The names are looked up while a list of many thousands is being filled, so it keeps an index of
/// them: do not rename an item.
class TLogList : public framework::TCollection<TLogClass> {
public:
    void Clear() override;
    /// The first item of exactly that name, or none.
    TLogClass* ItemExist(std::string_view name) const;
    /// Appends an item and returns none. When there is one of that name already, only its kind is
    /// replaced, and that item is returned.
    TLogClass* Add(std::string_view name, std::string_view value, bool isLabel);

private:
    std::unordered_map<std::string_view, TLogClass*> Index_;  // refers to the items' names
};

/// Whether the object's list of symbolic names holds the name, upper and lower case alike.
bool CheckTagNameExists(const TCvsObject& CvsObject, std::string_view TagName);

}  // namespace tandrel
