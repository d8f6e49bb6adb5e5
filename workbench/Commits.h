#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "framework/base/datetime.h"
#include "workbench/LogText.h"

namespace workbench {

/// A file in a commit.
struct TCommittedFile {
    std::string Name;      ///< As FileNameOf gives it.
    std::string Revision;  ///< That the commit made.
    std::string Before;    ///< The one it was made from; empty for a new file.
    bool Removed = false;
    std::size_t Log = 0;  ///< Which of the logs it is from.

    bool operator==(const TCommittedFile&) const = default;
};

/// What was committed at one time to a project.
struct TCommit {
    framework::TDateTime Date = 0;  ///< Of its first revision, UTC.
    framework::TDateTime Last = 0;  ///< Of its last one.
    std::string Author;
    std::string Message;
    std::string Branch;  ///< Its name, its number when it has none, empty for the trunk.
    std::vector<TCommittedFile> Files;  ///< In the order of the logs.
};

/// The name of a log's file: the working file's, or that in the repository without its ending and
/// without the folder for removed files.
std::string FileNameOf(const TFileLog& log);

/// Puts the revisions of a project's files together to commits, the newest first.
///
/// Revisions belong to one commit when they have the same commit identifier; of those without one,
/// when author, message and branch are the same and none is more than 300 seconds younger than the
/// one before it. In a commit a file occurs once: a second revision begins another one.
/// Where one identifier stands for revisions of several branches, the first one's is told.
/// What the client makes by itself is left out: the trunk's revision 1.1 of a file that was
/// imported, which equals 1.1.1.1, and the dead one of a file that was added on a branch.
///
/// It takes n log n of all revisions.
std::vector<TCommit> CommitsOf(const std::vector<TFileLog>& logs);

/// What is looked for among commits.
struct TCommitFilter {
    /// A part, in any case, of the message, the author, a file's name or a label of one of the
    /// revisions; empty for all.
    std::string Text = {};
    framework::TDateTime From = 0;  ///< Only those that began at or after it, UTC; 0 for all.
};

/// The positions of the commits that the filter lets through, in their order. @param logs those
/// that the commits were made of.
std::vector<std::size_t> FindCommits(const std::vector<TCommit>& commits,
                                     const std::vector<TFileLog>& logs,
                                     const TCommitFilter& filter);
/// The same of one file's revisions; a revision's file is not looked at.
std::vector<std::size_t> FindRevisions(const TFileLog& log, const TCommitFilter& filter);

/// A label or branch of a project.
struct TProjectLabel {
    std::string Name;
    bool IsBranch = false;  ///< In one of the files at least.
    std::size_t Files = 0;  ///< That have it.
    /// Of the newest revision that it means, UTC; for a branch, also of those on it. 0 where the
    /// logs do not tell.
    framework::TDateTime Newest = 0;

    bool operator==(const TProjectLabel&) const = default;
};

/// All labels and branches of a project, by their names.
std::vector<TProjectLabel> LabelsOf(const std::vector<TFileLog>& logs);

}  // namespace workbench
