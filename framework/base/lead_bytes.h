#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "framework/api.h"

namespace framework {

/// In some code pages letters may have two bytes. The second one may look like a backslash, a
/// bracket or a letter of ASCII; never like what stands below "@", such as a slash, a colon, a dot,
/// a quote, a blank or a line's end. So these, and these alone, are found by looking at bytes.
/// Everything else that is looked for in a text of the system's goes through here. Texts begin with
/// a whole letter.

/// The bytes with which letters of two bytes begin. Looked up once: in most code pages there are
/// none.
class FRAMEWORK_API TLeadBytes {
public:
    explicit TLeadBytes(bool (*isLeadByte)(unsigned char));
    bool Any() const { return Any_; }
    bool Contains(char c) const { return Bytes_[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> Bytes_{};
    bool Any_ = false;
};

/// Those of the process's code page; tests put another code page's in their place. Not to be
/// changed while other threads run.
FRAMEWORK_API TLeadBytes& LeadBytes();

/// The number of bytes, one or two, of the letter that begins at `at`.
FRAMEWORK_API std::size_t LetterSize(std::string_view text, std::size_t at);
/// True for the second byte of a letter.
FRAMEWORK_API bool IsTrailByte(std::string_view text, std::size_t at);

/// True unless there is a lead byte without a trail byte, as in texts of another code page.
FRAMEWORK_API bool IsWhole(std::string_view text);

/// As the functions of the same purpose of std::string_view, for characters of ASCII that are no
/// trail bytes. What is not found is at npos.
FRAMEWORK_API std::size_t FindFirstOf(std::string_view text, std::string_view characters,
                                      std::size_t from = 0);
FRAMEWORK_API std::size_t FindLastOf(std::string_view text, std::string_view characters);
/// The last byte that is none of the characters, which may be a trail byte that looks like one.
FRAMEWORK_API std::size_t FindLastNotOf(std::string_view text, std::string_view characters);
/// Where `wanted` stands, beginning with a whole letter.
FRAMEWORK_API std::size_t FindText(std::string_view text, std::string_view wanted,
                                   std::size_t from = 0);
/// Paths are joined by the thousand: the bytes before the last one are mostly not looked at.
inline bool EndsWith(std::string_view text, char c) {
    return text.ends_with(c) && !IsTrailByte(text, text.size() - 1);
}
FRAMEWORK_API void ReplaceCharacter(std::string& text, char from, char to);

/// The first `limit` bytes, without the first half of a letter at their end.
FRAMEWORK_API std::string_view WholeLetters(std::string_view text,
                                            std::size_t limit = std::string_view::npos);

/// Puts letters together whose bytes come in two pieces of a text.
class FRAMEWORK_API TLetterPieces {
public:
    /// The piece with what was held back before, without the first half of a letter at its end.
    std::string Next(std::string_view piece);
    /// What is held back: one byte or none.
    const std::string& Held() const { return Held_; }
    /// What was held back; nothing more comes, or what comes is another text.
    std::string Rest();

private:
    std::string Held_;
};

}  // namespace framework
