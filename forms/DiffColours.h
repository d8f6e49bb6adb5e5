#pragma once

#include <windows.h>

#include <functional>
#include <string_view>

namespace tandrel {

inline constexpr COLORREF RemovedColour = RGB(255, 0, 0);  ///< Of lines that begin with "<".
inline constexpr COLORREF AddedColour = RGB(0, 0, 255);    ///< Of lines that begin with ">".

/// Finds what is to be coloured in a comparison's text, whose lines end in CR LF.
/// @param colour called with position and length in characters, each line end counting as two, from
/// the first to the last.
void ForEachColouredLine(
    std::string_view text,
    const std::function<void(std::size_t start, std::size_t length, COLORREF colour)>& colour);

}  // namespace tandrel
