#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// The message of a commit, as text in the process's code page. Lines end in CR LF or LF.

/// Letters that a line of a message may have: what shows logs has room for them.
inline constexpr int LongestMessageLine = 72;

/// What is handed over of a message: all that was typed but lines that begin with "CVS:", which are
/// remarks to whoever types.
std::string MessageToSend(std::string_view text);

/// Whether nothing was said: no letter but those of the template, and of remarks.
/// @param templateText what the message began with; empty for none.
bool IsUnfilled(std::string_view text, std::string_view templateText);

/// The numbers, from 1, of the lines that are too long, without remarks.
std::vector<int> LongLines(std::string_view text);

/// A place in a text, both from 1; columns count letters.
struct TTextPlace {
    int Line = 1;
    int Column = 1;
};
/// @param offset in bytes.
TTextPlace PlaceOf(std::string_view text, std::size_t offset);

/// What the status bar says: where the caret is, and which lines are too long.
std::string DescribePlace(std::string_view text, std::size_t caret);

/// A message in one line: its first one with text in it, and dots for what is left out.
std::string SummaryOf(std::string_view text);

}  // namespace workbench
