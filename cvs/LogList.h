#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "framework/base/collection.h"

namespace tandrel {

class TCvsObject;

/// A symbolic name or a date from the client's log.
class TLogClass : public framework::TObject {
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
    /// Items only go together: the index would still lead to one that is gone.
    void Delete(int index) = delete;
    /// The first item of exactly that name, or none.
    TLogClass* ItemExist(std::string_view name) const;
    /// Appends an item and returns none. When there is one of that name already, only its kind is
    /// replaced, and that item is returned.
    TLogClass* Add(std::string_view name, std::string_view value, bool isLabel);

private:
    /// A place in the index. Places of the standard maps are blocks of their own all over the
    /// memory, and then a list of twice the length takes more than twice the time.
    struct TSlot {
        std::size_t Hash = 0;
        TLogClass* Item = nullptr;
    };
    /// Where the name is, or where it belongs.
    std::size_t SlotOf(std::string_view name, std::size_t hash) const;
    /// Makes room for one more; at least half of the index stays free.
    void Widen();

    std::vector<TSlot> Index_;  // none, or a power of two
};

/// Whether the object's list of symbolic names holds the name, upper and lower case alike.
bool CheckTagNameExists(const TCvsObject& CvsObject, std::string_view TagName);

}  // namespace tandrel
