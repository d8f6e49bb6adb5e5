#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/base/datetime.h"

namespace workbench {

/// A revision of a file, as the client's log tells it. Texts have the bytes that the client gives.
struct TRevision {
    std::string Number;
    framework::TDateTime Date = 0;  ///< UTC; 0 when it could not be read.
    std::string Author;
    std::string State;                            ///< "dead" for a file that was removed.
    std::optional<int> Added = {}, Removed = {};  ///< Lines.
    std::string CommitId = {};                    ///< Empty where the client knew none.
    std::vector<std::string> Branches = {};       ///< Numbers of those that leave it.
    std::string Message = {};                     ///< Lines end in LF, the last one in nothing.

    bool IsDead() const { return State == "dead"; }
    bool operator==(const TRevision&) const = default;
};

/// A symbolic name of a file.
struct TFileLabel {
    std::string Name;
    std::string Revision;

    /// Whether the number is a branch's.
    bool IsBranch() const;
    bool operator==(const TFileLabel&) const = default;
};

/// What the client's log says of one file.
struct TFileLog {
    std::string Repository;   ///< The path of its ",v" file, as the client gives it.
    std::string Name = {};    ///< The working file's, with "/"; empty in a log of the repository.
    std::string Head = {};    ///< The trunk's newest revision; empty when there is none.
    std::string Branch = {};  ///< That a check-out without a label takes; empty for the trunk.
    std::string KeywordMode = {};
    std::string Description = {};
    std::vector<TFileLabel> Labels = {};    ///< The latest first.
    bool IsPart = false;                    ///< Not all of the file's revisions were asked for.
    std::vector<TRevision> Revisions = {};  ///< As the client gives them (see IsLoggedBefore).

    bool operator==(const TFileLog&) const = default;
};

/// Reads what "log" or "rlog" say; lines end in CR LF or LF, and the client's own remarks may stand
/// between the files. Any text gives a result. The time grows with the text, not faster.
///
/// Messages may hold all that marks revisions and files: lines of dashes, whole logs. The client
/// says first how many revisions there are; LogEntries.h tells which. A file's log ends where there
/// are so many of them, and nothing or the head of another file comes behind it; where messages
/// quote heads, too, of a file that was not there yet and does not come again. Ends of quoted logs
/// are told by their heads.
///
/// What cannot be told: what LogEntries.h names; logs of two files that a message quotes one behind
/// the other, when the second is nowhere else and quotes something itself; a message that begins
/// like the line about the branches that leave a revision, when there are such branches; one that
/// is just what the client says for an empty message; and, of a line of a message, a carriage
/// return at its end.
std::vector<TFileLog> ParseLog(std::string_view text);

}  // namespace workbench
