#include "framework/base/lead_bytes.h"

#if defined(_WIN32)
#include <windows.h>
#endif

#include <utility>

namespace framework {

namespace {

constexpr unsigned char FirstTrailByte = 0x40;

bool IsLeadByte([[maybe_unused]] unsigned char c) {
#if defined(_WIN32)
    return ::IsDBCSLeadByte(c) != FALSE;
#else
    return false;
#endif
}

/// Behind a lead byte something else may stand in a text that is damaged, or of another code page:
/// a separator or a line's end must not go under with it.
bool MayTrail(char c) {
    return static_cast<unsigned char>(c) >= FirstTrailByte;
}

}  // namespace

TLeadBytes::TLeadBytes(bool (*isLeadByte)(unsigned char)) {
    // ASCII is the same in all code pages.
    for (unsigned c = 0x80; c < Bytes_.size(); ++c)
        if (isLeadByte(static_cast<unsigned char>(c)))
            Any_ = Bytes_[c] = true;
}

TLeadBytes& LeadBytes() {
    static TLeadBytes bytes(&IsLeadByte);
    return bytes;
}

std::size_t LetterSize(std::string_view text, std::size_t at) {
    return LeadBytes().Contains(text[at]) && at + 1 < text.size() && MayTrail(text[at + 1]) ? 2 : 1;
}

bool IsTrailByte(std::string_view text, std::size_t at) {
    const TLeadBytes& lead = LeadBytes();
    if (!lead.Any() || at >= text.size() || !MayTrail(text[at]))
        return false;
    // Whatever is no lead byte ends a letter. What is one may also be a trail byte, so the bytes
    // from there on go in pairs.
    std::size_t begin = at;
    while (begin > 0 && lead.Contains(text[begin - 1]))
        --begin;
    return (at - begin) % 2 != 0;
}

bool IsWhole(std::string_view text) {
    const TLeadBytes& lead = LeadBytes();
    if (!lead.Any())
        return true;
    for (std::size_t at = 0, size = 0; at < text.size(); at += size) {
        size = LetterSize(text, at);
        if (size == 1 && lead.Contains(text[at]))
            return false;
    }
    return true;
}

std::size_t FindFirstOf(std::string_view text, std::string_view characters, std::size_t from) {
    std::size_t at = text.find_first_of(characters, from);
    while (IsTrailByte(text, at))
        at = text.find_first_of(characters, at + 1);
    return at;
}

std::size_t FindLastOf(std::string_view text, std::string_view characters) {
    std::size_t at = text.find_last_of(characters);
    // Never the first byte, which trails nothing.
    while (IsTrailByte(text, at))
        at = text.find_last_of(characters, at - 1);
    return at;
}

std::size_t FindLastNotOf(std::string_view text, std::string_view characters) {
    const std::size_t found = text.find_last_not_of(characters);
    // What follows is made of such bytes alone, so only the first of them can trail.
    const std::size_t next = found + 1;
    return IsTrailByte(text, next) ? next : found;
}

std::size_t FindText(std::string_view text, std::string_view wanted, std::size_t from) {
    std::size_t at = text.find(wanted, from);
    while (IsTrailByte(text, at))
        at = text.find(wanted, at + 1);
    return at;
}

void ReplaceCharacter(std::string& text, char from, char to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + 1))
        if (!IsTrailByte(text, at))
            text[at] = to;
}

std::string_view WholeLetters(std::string_view text, std::size_t limit) {
    text = text.substr(0, limit);
    if (!text.empty() && LeadBytes().Contains(text.back()) && !IsTrailByte(text, text.size() - 1))
        text.remove_suffix(1);
    return text;
}

std::string TLetterPieces::Next(std::string_view piece) {
    std::string text = std::exchange(Held_, {});
    text += piece;
    const std::size_t whole = WholeLetters(text).size();
    Held_ = text.substr(whole);
    text.resize(whole);
    return text;
}

std::string TLetterPieces::Rest() {
    return std::exchange(Held_, {});
}

}  // namespace framework
