#pragma once

#include <string_view>

#include "cvs/LogList.h"

namespace tandrel {

/// Both take the text of "log" or "rlog", with lines that end in CR LF, and add what they find to
/// the list. Any text gives a result. False when there is more than a log can hold; the list then
/// has what was read so far.

/// The symbolic names of all files, with their revisions. The last name of each file counts as a
/// branch, whatever its revision is.
bool ParseSymbolicNames(std::string_view text, TLogList& list);

/// The dates of all revisions, each with the text "revision" and its number.
bool ParseRevisionDates(std::string_view text, TLogList& list);

}  // namespace tandrel
