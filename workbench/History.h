#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/ui/views.h"
#include "hosting/Queries.h"
#include "workbench/Commits.h"
#include "workbench/RevisionTree.h"

namespace workbench {

/// A column of a table. @param Width design units.
struct TColumn {
    const char* Caption;
    int Width;
};

/// What is chosen in a history: rows of its table, ascending, and rows of what stands below of the
/// first of them.
struct TChosen {
    std::vector<int> Rows;
    std::vector<int> Details;
};

/// A file (its full path) in one of its revisions.
struct TFileAt {
    std::string Path;
    std::string Revision;

    bool operator==(const TFileAt&) const = default;
};

/// Two states of files (full paths; none for the whole project).
struct TStates {
    std::vector<std::string> Paths;
    hosting::TVersion From, To;

    bool operator==(const TStates&) const = default;
};

/// The moment as users read it, in their own time: "2026-05-04 10:30"; empty for none. @param utc 0
/// for none.
std::string LocalText(framework::TDateTime utc);

/// What a window shows of the past, and what the rows mean. Without windows; main thread.
class THistory {
public:
    virtual ~THistory() = default;

    /// What the rows are, for the user: "revisions".
    virtual const char* Kind() const = 0;
    /// The columns of the table, and those of what belongs to one row.
    virtual std::vector<TColumn> Columns() const = 0;
    virtual std::vector<TColumn> DetailColumns() const = 0;

    /// From now on the rows are those that the filter lets through.
    virtual void Filter(const TCommitFilter& filter) = 0;
    /// How many there are without a filter.
    virtual std::size_t Count() const = 0;
    virtual std::vector<framework::TListRow> Rows() const = 0;
    /// The tree that the rows are laid out as; null when they are none.
    virtual const TRevisionTree* Tree() const { return nullptr; }
    /// Whether a row's revision took a file away.
    virtual bool IsRemoval(int /*row*/) const { return false; }

    /// What tells a row from the others, also when the history is read anew.
    virtual std::string Key(int row) const = 0;
    /// The whole message; lines end in LF.
    virtual std::string Message(int row) const = 0;
    virtual std::vector<framework::TListRow> Details(int row) const = 0;
    /// The row as a text for other programs; lines end in LF.
    virtual std::string Text(int row) const = 0;

    /// What one row has changed, or what two of them differ in. None when that cannot be said.
    virtual std::optional<TStates> Changes(const TChosen& chosen) const = 0;
    /// What the working copy differs in from one row.
    virtual std::optional<TStates> SinceThen(const TChosen& chosen) const = 0;
    /// The files that are meant, without those that were taken away.
    virtual std::vector<TFileAt> Files(const TChosen& chosen) const = 0;
    /// Whether one of these files is kept byte for byte.
    virtual bool IsBinary(const TFileAt& file) const = 0;
};

/// The revisions of one file, in a tree. @param path the file's.
std::unique_ptr<THistory> HistoryOfFile(TFileLog log, std::string path);

/// The commits of several files. @param paths the files', in the order of the logs; empty for those
/// that the working copy cannot have. @param folder the one that names are shown from. @param about
/// what the history is about: files and folders, none for the whole project.
std::unique_ptr<THistory> HistoryOfProject(std::vector<TFileLog> logs,
                                           std::vector<std::string> paths,
                                           const std::string& folder,
                                           std::vector<std::string> about);

}  // namespace workbench
