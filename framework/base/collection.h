#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/base/exceptions.h"
#include "framework/base/object.h"

namespace framework {

/// An ordered list that owns its items. Items keep their address until they are removed.
template <class Item>
class TCollection : public TObject {
public:
    /// Number of items.
    int Count() const { return static_cast<int>(Items_.size()); }
    bool Empty() const { return Items_.empty(); }

    /// The item at a position from 0; raises EListError outside the list.
    Item& GetItem(int index) const {
        CheckIndex(index);
        return *Items_[static_cast<std::size_t>(index)];
    }

    /// Position of an item from 0; -1 when it is not, or no longer, in the list. The address alone
    /// is compared.
    template <class Other>
    int IndexOf(const Other* item) const {
        for (int index = 0; index < Count(); ++index)
            if (&GetItem(index) == item)
                return index;
        return -1;
    }

    /// Removes all items.
    virtual void Clear() { Items_.clear(); }
    /// Removes the item at a position; raises EListError outside the list.
    void Delete(int index) {
        CheckIndex(index);
        Items_.erase(Items_.begin() + index);
    }
    /// Moves an item to another position; those between make room. Raises EListError when one of
    /// the two is outside the list.
    void Move(int from, int to) {
        CheckIndex(from);
        CheckIndex(to);
        const auto first = Items_.begin() + std::min(from, to);
        const auto last = Items_.begin() + std::max(from, to) + 1;
        std::rotate(first, from < to ? first + 1 : last - 1, last);
    }

    auto begin() const { return Iterator{Items_.data()}; }
    auto end() const { return Iterator{Items_.data() + Items_.size()}; }

protected:
    /// Appends an item made from the arguments and returns it.
    template <class... Args>
    Item& Emplace(Args&&... args) {
        return *Items_.emplace_back(std::make_unique<Item>(std::forward<Args>(args)...));
    }

private:
    void CheckIndex(int index) const {
        if (index < 0 || index >= Count())
            throw EListError("List index out of bounds (" + std::to_string(index) + ")");
    }

    struct Iterator {
        const std::unique_ptr<Item>* At;
        Item& operator*() const { return **At; }
        Iterator& operator++() {
            ++At;
            return *this;
        }
        bool operator==(const Iterator&) const = default;
    };

    std::vector<std::unique_ptr<Item>> Items_;
};

}  // namespace framework
