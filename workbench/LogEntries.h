#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "framework/base/datetime.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

/// Lines of a file's log that look like the beginning of a revision.
struct TLogEntry {
    TRevisionNumber Number;
    framework::TDateTime Date = 0;          ///< UTC; 0 when it could not be read.
    std::vector<TRevisionNumber> Branches;  ///< That leave it, as it says.
    bool IsQuoted = false;   ///< It stands between the head and the end of another log.
    bool IsSuspect = false;  ///< Right behind a part of a head, or right before an end.
};

/// What the client says at the head of a file's log.
struct TLogHead {
    TRevisionNumber Head;      ///< Of the trunk's newest revision; empty when it has none.
    std::size_t Total = 0;     ///< Revisions in the file.
    std::size_t Selected = 0;  ///< Revisions in the log.
};

/// The positions, ascending, of the entries that the client has written; the others are quoted in
/// messages. Only with more entries than the client speaks of there is anything to tell apart.
///
/// Of those that can be right by their order (see IsLoggedBefore), in which a number occurs once,
/// the longest row is taken where each entry is the neighbour of the one before, and where nothing
/// is quoted that is as new as the message it stands in. What stands beside lines that only another
/// log can have is rather quoted; where two are equally good the quotes are taken to stand late. It
/// takes n log n.
///
/// What cannot be told, because nothing in the text says it: quotes in the oldest messages from a
/// log where all is older and numbers are the same, from those in a newer message of a history as
/// old as that; a quoted revision with a number that the file lacks, where numbers were taken out.
std::vector<std::size_t> ChooseEntries(const std::vector<TLogEntry>& entries, const TLogHead& head);

}  // namespace workbench
