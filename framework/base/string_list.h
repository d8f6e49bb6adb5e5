#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/base/object.h"

namespace framework {

/// A list of texts, usually the lines of a text.
class FRAMEWORK_API TStringList : public TObject {
public:
    int Count() const { return static_cast<int>(Lines_.size()); }
    /// The text at a position from 0; raises EListError outside the list.
    const std::string& operator[](int index) const;
    void Add(std::string text) { Lines_.push_back(std::move(text)); }
    void Clear() { Lines_.clear(); }
    /// Removes the empty texts; the others keep their order.
    void RemoveEmpty();

    /// All texts, each followed by CR LF.
    std::string Text() const;
    /// Replaces the list by the lines of a text. A line ends in CR LF, LF or CR; the last may lack
    /// its end.
    void SetText(std::string_view text);

    auto begin() const { return Lines_.begin(); }
    auto end() const { return Lines_.end(); }

private:
    std::vector<std::string> Lines_;
};

}  // namespace framework
