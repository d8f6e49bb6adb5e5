#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cvs/Cvstempl.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/timer.h"
#include "hosting/BinaryFiles.h"
#include "hosting/ClientProcess.h"
#include "hosting/CommandSummary.h"
#include "hosting/FileRows.h"
#include "hosting/OfflineLog.h"
#include "hosting/PasswordMask.h"
#include "hosting/ProjectState.h"
#include "hosting/Settings.h"
#include "hosting/Trust.h"

namespace hosting {

/// What a project asks of the window it is shown in.
class TProjectHost {
public:
    virtual ~TProjectHost() = default;
    /// What an operation tells; passwords are masked already.
    virtual void Tell(const std::string& text) = 0;
    /// An operation is about to read the project's files: what the editors hold has to be on disk.
    /// False when the user does not want to go on.
    virtual bool SaveDocuments() = 0;
    /// Asks for the tags of a project that is about to be placed. False when the user does not want
    /// to go on.
    virtual bool AskForTags(std::string& vendor, std::string& release) = 0;
    virtual bool AskYesNo(const std::string& question) = 0;
    virtual framework::TAnswer AskYesNoCancel(const std::string& question) = 0;
    /// Names the files that are about to be kept byte for byte; the user may take some for texts.
    /// False when the user does not want to go on.
    virtual bool ChooseBinary(std::vector<TBinaryChoice>& files) = 0;
    /// For what could harm: No unless the user chooses Yes.
    virtual bool AskRisk(const std::string& question) = 0;
    /// There is no client: tells so, and lets the user choose one. @return its path, or an empty
    /// text.
    virtual std::string AskForClient() = 0;
    /// Nothing was told for a while: what is not shown yet is to be shown.
    virtual void ShowTold() = 0;
};

/// An open project: a folder, and the version-control object that works on it. Main thread only.
///
/// The package leaves options as they were, and keeps the connection in the environment, which all
/// projects share. So each operation runs through Operate, which puts the three kinds of state
/// (hosting/ProjectState.h) where they belong before, and takes the project's after it.
class TProject {
public:
    /// @param folder an existing one, without a trailing backslash.
    TProject(TProjectHost& window, TSettings& settings, const std::string& folder);
    TProject(const TProject&) = delete;
    TProject& operator=(const TProject&) = delete;

    const std::string& Folder() const { return Folder_; }
    tandrel::TCvsObject& Cvs() { return Cvs_; }
    bool Stored() const { return Cvs_.IsVCSStoredFlag; }
    bool Running() const;

    /// What no dialog of the package sets.
    TOperationState Options;

    /// Runs an operation on the selection (full paths; none for the whole project). A selection
    /// that no command line takes is worked on in parts, one after the other, until one fails.
    /// @return what the operation says, false when another one is running.
    bool Operate(const std::function<bool(tandrel::TCvsObject&)>& operation,
                 const std::vector<std::string>& selection = {});

    /// Within an operation: it has been called for an earlier part of the selection. What it asked
    /// the user then is not to be asked again.
    bool IsFurtherPart() const { return FurtherPart_; }
    /// What came of earlier commands is no longer told, nor that the user has stopped one. Operate
    /// and RunWaiting begin so.
    void BeginCommand();
    /// Ends the command that runs, also one that talks all the time or never. Returns at once.
    void Stop();
    /// What runs, for the user: the command and since when; empty when nothing does.
    std::string RunningText() const;
    /// What came of the last operation, for the user.
    std::string Outcome() const;
    /// What the client said in it. FileOf finds the files that it names.
    const TCommandSummary& Summary() const { return Summary_; }
    /// The file that a name stands for that the client has written; empty when there is none.
    std::string FileOf(const std::string& name) const;

    /// Asks the client something that changes nothing: what it says is not shown, and the files are
    /// not read anew. @param kind what it is about. @param arguments a command, a blank first.
    /// @param output all that the client has written, its complaints among it.
    /// @return its exit code; nothing when it could not be run, or was stopped.
    std::optional<int> Ask(tandrel::TOperationType kind, const std::string& arguments,
                           std::string& output);
    /// Tells what the client has answered, when it is not what was wanted.
    void TellAnswer(const std::string& output);
    /// The names that a check-out from the project's repository takes, as far as it tells.
    std::vector<std::string> Modules();
    /// Adds files and folders (full paths). What is no text is kept byte for byte, and named first.
    bool Add(const std::vector<std::string>& paths);
    /// Imports the folder, with its result shown; likewise.
    bool Import(const std::string& vendor, const std::string& release);

    /// Moves a file, for version control, too. While the server is off-line both halves are kept
    /// for later. @param to must not be there yet.
    bool Move(const std::string& from, const std::string& to);

    /// Whether the server can be reached, as the user says; a new project begins on-line.
    bool Online() const { return Cvs_.ServerOnline(); }
    /// Off-line, adding and removing are kept for later; on-line again, they are run. Raises
    /// EInOutError when there is no keeping them.
    void SetOnline(bool online);
    /// What is kept for later.
    std::vector<TKeptCommand> Waiting() const { return OfflineLog_.Waiting(!Online()); }
    /// Asks what is to become of a command that was interrupted while it ran, if there is one.
    void SettleInterrupted();
    /// Runs what waits; only while on-line.
    void RunWaiting();

    /// Reads the files anew, and which repositories they belong to.
    void Reload();
    /// Reads the files anew without a word: nobody has asked for it.
    void Refresh();
    /// Stores what belongs to the project. What cannot be stored is told.
    void Save();

private:
    void BindEvents();
    /// Finds out whether the folder is one that commands may run in.
    void Examine();
    /// Whether they may, asking the user where that is not known.
    bool MayRun();
    void Trust(const std::string& folder);
    bool FindPrograms();
    bool RunParts(const std::function<bool(tandrel::TCvsObject&)>& operation,
                  const std::vector<std::string>& selection);
    void MakeFolder(const std::string& folder);
    void BeforePlacing();

    // --- what is no text (BinaryCommands.cpp)
    /// Asks which of the files are to be kept byte for byte, and tells. @return their paths, or
    /// nothing when the user gave up.
    std::optional<std::vector<std::string>> ChooseBinary(const std::vector<std::string>& files);
    /// Has the import that follows keep those of its files; false when the user gave up.
    bool NameBinary(const std::vector<std::string>& files);
    /// Has the import that follows put in what is ticked in the model, and nothing else.
    void PlaceWhatIsTicked();
    /// Warns of files that the commit would damage; ends it when the user gives up.
    void BeforeCommit();
    bool KeepBytes(const std::vector<TFileRow>& rows);
    bool IsKeptAsBinary(const std::string& path) const;
    bool MoveBinary(const std::string& from, const std::string& to);

    void Load();
    void Prepare(const std::vector<std::string>& selection);
    void ReturnToFolder();
    void RepairRoot();
    void TellRest();
    /// False when another host runs what waits.
    bool TakeKept();
    void KeepOffline();
    const std::string& KnownPassword() const;
    void ForgetPassword();
    bool RunKept(const TKeptCommand& kept);
    void MessageReceived(const std::string& text);
    void WatchCancel();
    void CancelWatchTick();

    TProjectHost& Window_;
    TSettings& Settings_;
    const std::string Folder_;
    const TOfflineLog OfflineLog_;
    // Sees to the mark of a run that says nothing. A tick within the quiet second after which the
    // progress form shows would keep it hidden, and there would be nothing to press: the interval
    // is longer, and other projects' watches stand still.
    framework::TTimer CancelWatch_{1500};
    int TicksSinceCancel_ = 0;
    TClientTree Tree_;
    TCommandSummary Summary_;
    std::vector<std::string> MadeFolders_;  // for the command at hand, the lowest first
    bool FurtherPart_ = false;
    bool Capturing_ = false;   // what the client says is not for the user
    bool Stopped_ = false;     // by the user
    bool Succeeded_ = true;    // the last operation
    ULONGLONG StartedAt_ = 0;  // ms
    bool HasLooked_ = false;   // which processes the command has
    TMaskedPieces Pieces_;
    std::string Password_;  // typed last; never to be shown
    TRoots Roots_;
    bool Trusted_ = false;
    tandrel::TCvsObject Cvs_;
};

}  // namespace hosting
