#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/base/datetime.h"

namespace workbench {

/// A line of a file, and where it comes from.
struct TAnnotatedLine {
    std::string Revision;
    std::string Author;             ///< Its first eight letters: the client gives no more.
    framework::TDateTime Date = 0;  ///< The day; 0 when it could not be read.
    std::string Text;

    bool operator==(const TAnnotatedLine&) const = default;
};

/// Reads what "annotate" says of one file; lines end in CR LF or LF. Any text gives a result: what
/// is no line of the file is left out.
std::vector<TAnnotatedLine> ParseAnnotation(std::string_view text);

}  // namespace workbench
