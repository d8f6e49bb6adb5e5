#include "workbench/Conflicts.h"

namespace workbench {

namespace {

constexpr std::string_view Begin = "<<<<<<< ", Middle = "=======", End = ">>>>>>> ";

/// The position behind the line that begins at `at`.
std::size_t NextLine(std::string_view text, std::size_t at) {
    const std::size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end + 1;
}

std::string_view LineAt(std::string_view text, std::size_t at) {
    std::string_view line = text.substr(at, NextLine(text, at) - at);
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

/// The conflict whose first mark is the line at `start`.
std::optional<TConflict> ConflictAt(std::string_view text, std::size_t start) {
    const std::size_t mine = NextLine(text, start);
    std::size_t middle = mine;
    while (middle < text.size() && LineAt(text, middle) != Middle) {
        if (LineAt(text, middle).starts_with(Begin))
            return std::nullopt;
        middle = NextLine(text, middle);
    }
    const std::size_t theirs = middle < text.size() ? NextLine(text, middle) : text.size();
    for (std::size_t at = theirs; at < text.size(); at = NextLine(text, at))
        if (LineAt(text, at).starts_with(End))
            return TConflict{start, NextLine(text, at),
                             std::string(text.substr(mine, middle - mine)),
                             std::string(text.substr(theirs, at - theirs))};
    return std::nullopt;
}

}  // namespace

std::optional<TConflict> NextConflict(std::string_view text, std::size_t from) {
    // The line around `from` has begun before it.
    std::size_t at = from;
    if (at > 0 && (at > text.size() || text[at - 1] != '\n'))
        at = at > text.size() ? text.size() : NextLine(text, at);
    for (; at < text.size(); at = NextLine(text, at))
        if (LineAt(text, at).starts_with(Begin))
            if (auto conflict = ConflictAt(text, at))
                return conflict;
    return std::nullopt;
}

std::optional<TConflict> PreviousConflict(std::string_view text, std::size_t before) {
    std::optional<TConflict> last;
    for (auto next = NextConflict(text, 0); next && next->Start < before;
         next = NextConflict(text, next->End))
        last = next;
    return last;
}

}  // namespace workbench
