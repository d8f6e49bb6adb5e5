#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Customvcs_types.h"
#include "core/FileItems.h"
#include "cvs/CvsOptions.h"

namespace tandrel {

/// What a command line is built from besides the options. Refers to its parts, does not keep them.
struct TCommandContext {
    TOperationType Operation;
    TConnectionType ConnectionType;
    const std::string& RepositoryPath;
    const std::string& CVSROOT;
    const std::string& Modulename;
    const std::string& WorkingDirectory;
    const TFileItems& FileItems;
    /// Quote every value so that the client reads it as one argument, whatever it holds, and refuse
    /// those that it would take for something else. Otherwise values stand as the plain rules put
    /// them, and messages keep their carriage returns.
    bool StrictQuoting = false;
    /// The command of "add" names only folders that are not yet under version control; there is no
    /// command when there are none.
    bool NewFoldersOnly = false;
    /// Of the files and folders of "add" it names those of this mode only, and gives it to them;
    /// none names all and says nothing of modes.
    std::optional<TKeywordMode> AddMode = std::nullopt;
    /// Whether a folder is under version control already. Asked once for each folder.
    std::function<bool(const std::string& folder)> IsUnderVersionControl;
};

/// Builds the client's argument string for one operation, by appending to what is there.
class TCommandBuilder {
public:
    /// @param commandLine the text to append to; it and the other two must outlive the builder.
    TCommandBuilder(std::string& commandLine, const TCvsOptions& options,
                    const TCommandContext& context)
        : Line_(commandLine), Options_(options), Context_(context) {}

    /// Appends the whole command. An operation that is none appends nothing. Raises
    /// framework::Exception for a file outside the working directory, and for a value that strict
    /// quoting refuses; the text is then unfinished.
    void Build();
    /// Appends the folders and files of "add": folders that are not yet under version control
    /// first, upper before lower ones.
    void AddFilesToCommad();

private:
    void Append(std::string_view piece);
    void AppendIf(bool condition, std::string_view option);
    void AppendValue(std::string_view value);
    void AppendQuoted(std::string_view value);
    std::string Value(std::string_view value) const;
    std::string Quoted(std::string_view value) const;
    std::string_view Name(std::string_view name) const;
    std::string_view Revision(std::string_view revision) const;

    void RepositoryOption();
    void Subcommand();
    void RevisionSelection();
    void Keyword();
    void Merge();
    void MergeOption(std::string_view revision, bool useDate, framework::TDateTime date);
    void DiffRevisions();
    void DiffRevision(std::string_view revision, bool useDate, framework::TDateTime date);
    std::string RelativeName(std::string_view folder, std::string_view name) const;
    std::vector<std::string> NamesToAdd() const;
    void AppendNames(const std::vector<std::string>& names);
    void Files();
    void Message(std::string_view whenEmpty);
    void IgnoreOptions();
    std::string Wrapper(const TFileItem& item) const;
    void EditActionOption();
    void TargetDirOption();
    void WorkingCopyOptions();
    void TagOptions();

    void Add();
    void Import();
    void CheckOut();
    void Update();
    void Export();
    void Release();
    void Log();
    void Rtag();
    void Tag();
    void LocalFiles();

    std::string& Line_;
    const TCvsOptions& Options_;
    const TCommandContext& Context_;
};

/// The value as one argument of the client's run-time library: in quotes, with inner quotes and the
/// backslashes before them escaped. Without `always` a value that needs no quotes gets none.
std::string QuoteArgument(std::string_view value, bool always);

}  // namespace tandrel
