#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// A place where the client has left two texts. Positions are bytes of the whole text.
struct TConflict {
    std::size_t Start = 0;  ///< Of the line with the first mark.
    std::size_t End = 0;    ///< Behind the line with the last one.
    std::string Mine;       ///< What stood in the working copy, with its lines' ends.
    std::string Theirs;     ///< What came from the repository.
};

/// The first conflict that begins at `from` or behind it; none when there is no complete one.
std::optional<TConflict> NextConflict(std::string_view text, std::size_t from);
/// The last one that begins before `before`.
std::optional<TConflict> PreviousConflict(std::string_view text, std::size_t before);

}  // namespace workbench
