#pragma once

#include <string>
#include <string_view>

#include "framework/api.h"

namespace framework {

/// Names of files and folders come from whoever made them. These functions keep a name that this
/// process cannot use from being taken for another one.

#if defined(_WIN32)
/// The name of an entry as the process's code page has it. What the system would take for another
/// name when it is given back becomes "?": characters that the code page lacks, separators and
/// other characters that no name has, dots and blanks at the end. No path with "?" leads anywhere.
FRAMEWORK_API std::string NameFromWide(std::wstring_view name);
#endif

/// True for a path through a name that NameFromWide could not give.
FRAMEWORK_API bool IsUnusable(std::string_view path);

/// True for a name or path with a character that stands for others, or for none at all: it is not
/// that of one file.
FRAMEWORK_API bool IsPattern(std::string_view path);

}  // namespace framework
