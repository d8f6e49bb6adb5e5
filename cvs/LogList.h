#pragma once

#include <string>
#include <string_view>

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

class TLogList : public framework::TCollection<TLogClass> {
public:
    /// The first item of exactly that name, or none.
    TLogClass* ItemExist(std::string_view name) const;
    /// Appends an item and returns none. When there is one of that name already, only its kind is
    /// replaced, and that item is returned.
    TLogClass* Add(std::string_view name, std::string_view value, bool isLabel);
};

/// Whether the object's list of symbolic names holds the name, upper and lower case alike.
bool CheckTagNameExists(const TCvsObject& CvsObject, std::string_view TagName);

}  // namespace tandrel
