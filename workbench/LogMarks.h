#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "workbench/LogLines.h"

namespace workbench {

/// A place in a log that looks like the beginning or end of something.
struct TLogMark {
    enum TKind { Head, Entry, End };
    TKind Kind;
    std::size_t Line;
    std::size_t Selected = 0;  ///< Of a head: the revisions that follow.
    bool CanEnd = false;       ///< Of an end: nothing or a head comes behind it.
};

/// All such places, in their order.
std::vector<TLogMark> MarksOf(const TLines& lines);

/// Follows the logs that messages quote: each from its head to its end, or to as many revisions as
/// it says. To be told of all marks of a file's log, in their order.
class TLogQuotes {
public:
    void Head(std::size_t selected) { Open_.push_back(selected); }
    /// Whether the entry that comes is quoted.
    bool Entry();
    /// Whether the end that comes is that of a quoted log. One that is not complete may have been
    /// quoted in part.
    bool End();

private:
    std::vector<std::size_t> Open_;  // how many revisions are to come
};

/// Finds where the files' logs end. Lines and marks must outlive it.
class TFileEnds {
public:
    TFileEnds(const TLines& lines, const std::vector<TLogMark>& marks);

    /// The mark that ends the file's log which begins with mark `head`; the number of marks when
    /// there is none. To be asked in the order of the files.
    std::size_t Find(std::size_t head);

private:
    bool HasBegun(std::size_t head) const;
    bool IsNextFile(std::size_t head) const;
    bool LeadsToMessage(std::size_t head) const;

    const TLines& Lines_;
    const std::vector<TLogMark>& Marks_;
    // By the first lines of heads: the last head of it that stands behind an end, ...
    std::unordered_map<std::string_view, std::size_t> Last_;
    std::unordered_set<std::string_view> Before_;  // ... and whether a file has come
};

}  // namespace workbench
