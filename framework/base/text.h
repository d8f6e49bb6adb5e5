#pragma once

#include <string>
#include <string_view>

#include "framework/api.h"

namespace framework {

/// Texts are in the process's code page, whose letters have one byte or two (lead_bytes.h), unless
/// a name says otherwise.

/// Upper case by the rules of the process's code page, letter by letter: each stays in its place.
FRAMEWORK_API std::string UpperCase(std::string_view text);
/// True when both texts are equal in upper case.
FRAMEWORK_API bool SameText(std::string_view a, std::string_view b);
/// The text without leading and trailing blanks and control characters.
FRAMEWORK_API std::string Trim(std::string_view text);

#if defined(_WIN32)
/// To UTF-16. Bytes the code page does not know become its replacement character.
FRAMEWORK_API std::wstring ToWide(std::string_view text);
/// From UTF-16. Characters the code page does not have become "?".
FRAMEWORK_API std::string FromWide(std::wstring_view text);
#endif

}  // namespace framework
