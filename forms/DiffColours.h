#pragma once

#include <windows.h>

#include <functional>
#include <string_view>

namespace tandrel {

inline constexpr COLORREF RemovedColour = RGB(255, 0, 0);  ///< From a "<" to the end of its line.
inline constexpr COLORREF AddedColour = RGB(0, 0, 255);    ///< From a ">" to the end of its line.

/// Finds what is to be coloured in a comparison's text, whose lines end in CR LF: what follows a
/// mark that is the first or the second character of a line, but of the text's first line.
/// @param colour called with position and length in characters, each line end counting as two, from
/// the first to the last, none within another.
void ForEachColouredLine(
    std::string_view text,
    const std::function<void(std::size_t start, std::size_t length, COLORREF colour)>& colour);

}  // namespace tandrel
