#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hosting {

/// What a line of the client's says of a file: "M name", "? name" and the like.
struct TFileMention {
    char Letter = 0;   ///< U, P, A, R, M, C, ?, I, N or L.
    std::string Name;  ///< As the client wrote it, from the folder that it was started in.
};

/// The mention in a line without its end; Letter is 0 when it is none.
TFileMention ParseMention(std::string_view line);

/// What came of a command, in a few words taken from the client's lines. The client's own last word
/// is often that all went well.
class TCommandSummary {
public:
    /// What the client says, in pieces of any size.
    void Add(std::string_view text);
    /// Such as "3 updated, 1 merged, 1 conflict: README.txt"; empty when nothing was said of any
    /// file and nothing failed.
    std::string Text() const;
    /// The files that the client could not put together.
    const std::vector<std::string>& Conflicts() const { return Conflicts_; }
    /// The client's reason for giving up; empty when it has not.
    const std::string& Failure() const { return Failure_; }
    /// The file that the user has to see to first; empty for none.
    std::string First() const { return Conflicts_.empty() ? std::string() : Conflicts_.front(); }

private:
    void AddLine(const std::string& line);
    void AddMention(const TFileMention& mention);
    void AddConflict(const std::string& name);
    /// What was merged without a word behind it.
    void EndMerging();

    std::string Rest_;         // of a line that has not ended
    std::string Folder_;       // that the client said it is in, with "/" at its end, or none
    std::string MergingName_;  // what the client said it is merging, without its folder
    int Updated_ = 0, Merged_ = 0, Changed_ = 0, Added_ = 0, Removed_ = 0, Committed_ = 0;
    int Scheduled_ = 0, Unscheduled_ = 0, Unknown_ = 0;
    std::vector<std::string> Conflicts_;
    std::string Guessed_;  // the last conflict, where its name was put together here
    std::string Failure_;
};

}  // namespace hosting
