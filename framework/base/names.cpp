#include "framework/base/names.h"

#include <algorithm>

#include "framework/base/lead_bytes.h"
#include "framework/base/text.h"

namespace framework {

namespace {

constexpr char Unusable = '?';

/// What follows the one prefix of paths that has such a character.
std::string_view WithoutPrefix(std::string_view path) {
    constexpr std::string_view Prefix = "\\\\?\\";
    return path.substr(path.starts_with(Prefix) ? Prefix.size() : 0);
}

#if defined(_WIN32)

/// The characters that part paths, name streams of files or stand for others. Disks of other
/// systems have names with them.
constexpr bool IsNameCharacter(wchar_t c) {
    switch (c) {
        case L'\\':
        case L'/':
        case L':':
        case L'*':
        case L'?':
        case L'"':
        case L'<':
        case L'>':
        case L'|':
            return false;
        default:
            return c >= L' ';
    }
}

/// The name with "?" for what it may not have in it, and for all behind its length.
std::wstring WithoutUnusable(std::wstring_view name, std::size_t length) {
    std::wstring result(name);
    for (std::size_t at = 0; at < result.size(); ++at)
        if (at >= length || !IsNameCharacter(result[at]))
            result[at] = Unusable;
    return result;
}

std::string FromOtherLetters(std::wstring name) {
    std::string result = FromWide(name);
    // None has a separator, so this is a look-alike of another letter.
    ReplaceCharacter(result, '\\', Unusable);
    if (result.find(Unusable) != std::string::npos || ToWide(result) == name)
        return result;
    // Not all code pages tell which letters they lack.
    std::ranges::replace_if(
        name, [](wchar_t c) { return c >= 0x80; }, Unusable);
    return FromWide(name);
}

#endif

}  // namespace

#if defined(_WIN32)

std::string NameFromWide(std::wstring_view name) {
    if (name == L"." || name == L"..")
        return std::string(name.size(), '.');
    // Many thousands of names are listed, and most are ASCII: the system is not asked about them.
    std::string ascii(name.size(), Unusable);
    // The system passes over dots and blanks at the end of a name.
    const std::size_t length = name.find_last_not_of(L". ") + 1;
    for (std::size_t at = 0; at < length; ++at) {
        if (name[at] >= 0x80)
            return FromOtherLetters(WithoutUnusable(name, length));
        if (IsNameCharacter(name[at]))
            ascii[at] = static_cast<char>(name[at]);
    }
    return ascii;
}

#endif

bool IsUnusable(std::string_view path) {
    return WithoutPrefix(path).find(Unusable) != std::string_view::npos;
}

bool IsPattern(std::string_view path) {
    return WithoutPrefix(path).find_first_of("*?<>\"") != std::string_view::npos;
}

}  // namespace framework
