#include "framework/base/text.h"

#if defined(_WIN32)
#include <windows.h>
#endif

#include <cstddef>

#include "framework/base/lead_bytes.h"

namespace framework {

namespace {

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

#if !defined(_WIN32)
/// Other systems have no code page for the process: the letters of Western Europe stand in for it.
char WesternUpper(char c) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0xE0 && code <= 0xFE && code != 0xF7)
        return static_cast<char>(code - 0x20);
    return AsciiUpper(c);
}
#endif

#if defined(_WIN32)
/// A letter of two bytes. It stays as it is when its capital has another number of them.
void UpperLetter(std::string& text, std::size_t at) {
    std::wstring wide = ToWide(std::string_view(text).substr(at, 2));
    if (wide.size() != 1)
        return;
    ::CharUpperBuffW(wide.data(), 1);
    if (const std::string upper = FromWide(wide); upper.size() == 2)
        text.replace(at, 2, upper);
}

/// Letter by letter: the system does not keep the length.
void UpperLetters(std::string& text) {
    for (std::size_t at = 0, size = 0; at < text.size(); at += size) {
        size = LetterSize(text, at);
        if (size == 2)
            UpperLetter(text, at);
        else if (IsAscii(text[at]))
            text[at] = AsciiUpper(text[at]);
        else
            ::CharUpperBuffA(&text[at], 1);
    }
}
#endif

bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

}  // namespace

std::string UpperCase(std::string_view text) {
    std::string result(text);
#if defined(_WIN32)
    if (LeadBytes().Any())
        UpperLetters(result);
    else
        ::CharUpperBuffA(result.data(), static_cast<DWORD>(result.size()));
#else
    for (char& c : result)
        c = WesternUpper(c);
#endif
    return result;
}

bool SameText(std::string_view a, std::string_view b) {
    // Names are compared often and are mostly ASCII: the system's tables are asked only from the
    // first character on that needs them.
    if (a.size() != b.size())
        return false;
    for (std::size_t at = 0; at < a.size(); ++at) {
        if (!IsAscii(a[at]) || !IsAscii(b[at]))
            return a.substr(at) == b.substr(at) ||
                   UpperCase(a.substr(at)) == UpperCase(b.substr(at));
        if (AsciiUpper(a[at]) != AsciiUpper(b[at]))
            return false;
    }
    return true;
}

std::string Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return std::string(text);
}

#if defined(_WIN32)

std::wstring ToWide(std::string_view text) {
    std::wstring result;
    if (text.empty())
        return result;
    const int size = static_cast<int>(text.size());
    result.resize(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0)));
    ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, result.data(),
                          static_cast<int>(result.size()));
    return result;
}

std::string FromWide(std::wstring_view text) {
    std::string result;
    if (text.empty())
        return result;
    // Without the flag a character becomes a look-alike, and a file name that of another file.
    // UTF-8 has all characters and refuses both arguments.
    const bool complete = ::GetACP() == CP_UTF8;
    const DWORD flags = complete ? 0 : WC_NO_BEST_FIT_CHARS;
    const char* const unknown = complete ? nullptr : "?";
    const int size = static_cast<int>(text.size());
    result.resize(static_cast<std::size_t>(
        ::WideCharToMultiByte(CP_ACP, flags, text.data(), size, nullptr, 0, unknown, nullptr)));
    ::WideCharToMultiByte(CP_ACP, flags, text.data(), size, result.data(),
                          static_cast<int>(result.size()), unknown, nullptr);
    return result;
}

#endif

}  // namespace framework
