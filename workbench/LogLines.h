#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "workbench/LogEntries.h"
#include "workbench/LogText.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

// The forms that lines of the client's log have.

/// Lines of a text without their ends; they refer to it.
using TLines = std::vector<std::string_view>;
TLines LinesOfLog(std::string_view text);

/// Takes a beginning off a text; false when it begins otherwise.
bool Take(std::string_view& text, std::string_view beginning);

/// The whole text as a number; none when it is not one, or too large.
template <class T>
std::optional<T> NumberIn(std::string_view text) {
    T number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// Lines of a file's head. It is one when all that the client writes is there, in its order.
class THeadReader {
public:
    /// @param line the head's first. The lines must outlive the reader.
    THeadReader(const TLines& lines, std::size_t line) : Lines_(lines), Line_(line) {}

    /// Reads it, once. @param log receives what the lines say; null when that does not matter.
    /// @return false when it is none.
    bool Read(TFileLog* log);
    /// The first line behind the head.
    std::size_t Line() const { return Line_; }
    const TLogHead& Counts() const { return Counts_; }

private:
    bool Next(std::string_view beginning, std::string_view& rest);
    bool InList() const { return Line_ < Lines_.size() && Lines_[Line_].starts_with('\t'); }
    void SkipList();
    void ReadLabels(TFileLog* log);
    bool ReadCounts(std::string_view rest);

    const TLines& Lines_;
    std::size_t Line_;
    TLogHead Counts_;
};

/// Whether a line is the first of a head, perhaps.
bool IsHeadLine(std::string_view line);
/// Whether a line ends a file's log, perhaps.
bool IsEndLine(std::string_view line);
/// Whether a line is a remark of the client's: "cvs log: ...", "cvs.exe [rlog aborted]: ...".
bool IsRemark(std::string_view line);
/// Whether a revision begins with that line, one of dashes, perhaps.
bool IsEntry(const TLines& lines, std::size_t line);
/// The number in the line behind it.
std::optional<TRevisionNumber> EntryNumber(std::string_view line);
/// The branches in a line "branches:  1.2.2;  1.2.4;" of that revision; none of any other line.
std::vector<TRevisionNumber> BranchesIn(const TRevisionNumber& revision, std::string_view line);

}  // namespace workbench
