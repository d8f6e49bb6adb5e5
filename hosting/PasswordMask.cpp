#include "hosting/PasswordMask.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

#include "framework/base/lead_bytes.h"

namespace hosting {

namespace {

constexpr std::string_view Stars = "***";
constexpr std::size_t ShortestKnown = 4;
/// A root longer than this is none that anybody waits for.
constexpr std::size_t LongestHeld = 2048;

bool IsLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

/// Where a method that begins at the colon `at` ends: behind its second colon; npos when there is
/// no method, text.size() when the text ends before it does.
std::size_t EndOfMethod(std::string_view text, std::size_t at) {
    std::size_t end = at + 1;
    while (end < text.size() && IsLetter(text[end]))
        ++end;
    if (end == at + 1)
        return end == text.size() ? end : std::string_view::npos;
    // Options of the method.
    if (end < text.size() && text[end] == ';')
        end = text.find_first_of(":\r\n", end);
    if (end >= text.size())
        return text.size();
    return text[end] == ':' ? end + 1 : std::string_view::npos;
}

/// Where the password of the root ends whose user begins at `user`: at the last "@" of the line
/// that a server follows. A password may hold anything, another "@" included. The second byte of a
/// letter may look like one, and counts: servers send texts of other code pages, and it is better
/// to hide too much.
std::size_t EndOfPassword(std::string_view line, std::size_t password) {
    for (std::size_t at = line.rfind('@'); at != std::string_view::npos && at >= password;
         at = at == 0 ? std::string_view::npos : line.rfind('@', at - 1)) {
        std::size_t end = at + 1;
        while (end < line.size() && (std::isalnum(static_cast<unsigned char>(line[end])) ||
                                     line[end] == '.' || line[end] == '-' || line[end] == '_'))
            ++end;
        if (end > at + 1 && end < line.size() && (line[end] == ':' || line[end] == '/'))
            return at;
    }
    return std::string_view::npos;
}

void MaskLine(std::string& line) {
    for (std::size_t at = line.find(':'); at != std::string::npos; at = line.find(':', at + 1)) {
        const std::size_t user = EndOfMethod(line, at);
        if (user == std::string_view::npos || user == line.size())
            continue;
        // The user's name; one without a password ends in "@", a server without a user in "/".
        const std::size_t colon = framework::FindFirstOf(line, ":@/", user);
        if (colon == std::string::npos || line[colon] != ':')
            continue;
        const std::size_t end = EndOfPassword(line, colon + 1);
        if (end == std::string_view::npos)
            continue;
        // Another root may follow in the line: the password ends before it.
        const std::string_view between = std::string_view(line).substr(colon, end - colon);
        std::size_t stop = end;
        for (std::size_t next = between.find(':', 1); next != std::string_view::npos;
             next = between.find(':', next + 1)) {
            const std::size_t method = EndOfMethod(line, colon + next);
            if (method == std::string_view::npos || method >= end)
                continue;
            const std::size_t before =
                EndOfPassword(std::string_view(line).substr(0, colon + next), colon + 1);
            if (before != std::string_view::npos)
                stop = before;
        }
        line.replace(colon + 1, stop - colon - 1, Stars);
    }
}

void ReplaceAll(std::string& text, const std::string& known) {
    if (known.size() < ShortestKnown)
        return;
    for (std::size_t at = text.find(known); at != std::string::npos;
         at = text.find(known, at + Stars.size()))
        text.replace(at, known.size(), Stars);
}

/// Where something begins at the end of the text that may turn out to be a password.
std::size_t BeginOfUnfinished(std::string_view text, const std::string& known) {
    const std::size_t line = text.find_last_of("\r\n") + 1;
    std::size_t begin = text.size();
    for (std::size_t at = text.find(':', line); at != std::string_view::npos;
         at = text.find(':', at + 1))
        if (EndOfMethod(text, at) != std::string_view::npos) {
            begin = at;
            break;
        }
    if (known.size() >= ShortestKnown)
        for (std::size_t length = std::min(known.size() - 1, text.size()); length > 0; --length)
            if (text.ends_with(std::string_view(known).substr(0, length))) {
                begin = std::min(begin, text.size() - length);
                break;
            }
    // No letter is parted.
    if (framework::IsTrailByte(text, begin))
        --begin;
    return text.size() - begin > LongestHeld ? text.size() : begin;
}

}  // namespace

std::string MaskPasswords(std::string text, const std::string& known) {
    ReplaceAll(text, known);
    if (text.find('@') == std::string::npos)
        return text;
    std::string masked;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        std::string line = text.substr(start, end - start);
        MaskLine(line);
        masked += line;
        if (end < text.size())
            masked += text[end];
        start = end + 1;
    }
    return masked;
}

std::string TMaskedPieces::Next(const std::string& piece, const std::string& known) {
    Held_ += piece;
    // What is whole already must not be parted.
    ReplaceAll(Held_, known);
    const std::size_t begin = BeginOfUnfinished(Held_, known);
    std::string now = Held_.substr(0, begin);
    Held_.erase(0, begin);
    return MaskPasswords(std::move(now), known);
}

std::string TMaskedPieces::Rest(const std::string& known) {
    return MaskPasswords(std::exchange(Held_, {}), known);
}

}  // namespace hosting
