#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Customvcs.h"
#include "cvs/CvsOptions.h"
#include "cvs/LogList.h"

namespace framework {
class TPatience;
}

namespace tandrel {

class TCvsObject;

/// Called when an operation's dialog was accepted and before its command is built: the host may
/// change options, or save what its editors hold.
using TBeforeOperationEvent = std::function<void(TCvsObject& CvsObject)>;

/// Version control by the external cvs client. The options of all operations are its fields; they
/// stay as they are from one operation to the next.
///
/// Operations return true exactly when the client's exit code is zero. Those that take Interactive
/// show their dialog before, if they have one, and their result after the command.
class TCvsObject : public TCustomCvsObj, public TCvsOptions {
public:
    std::string Get_Version() override;
    /// The working directory, or the project root for commands that name a module.
    std::string Get_CurrentProcDirectory() override;
    std::string GetEnvVariable() override;
    /// Also sets the variable CVSROOT of this process.
    void SetCVSROOT(const std::string& Value) override;
    bool CVS_SystemDirectory(const std::string& Name) override;
    bool CVS_SystemFile(const std::string& Name) override;
    std::string Get_RepositoryPath(const std::string& Path) override;
    std::string Get_RepositoryFileName(const std::string& Name, bool IsDirectory) override;
    void ReadCVSInfo(TWorkDirTree& Tree, const std::string& Dir) override;
    void ReadCVS_SystemFile(TWorkDirTree& Tree, const std::string& Dir) override;
    bool GetIsVCSstored() override;
    void LoadVCSProjectInfo() override;

    std::string LogFileEx(const std::string& FileName) override;
    std::string DiffFileEx(const std::string& FileName) override;

    TCvsObject();
    ~TCvsObject() override;

    void LoadPreferences(HKEY RootKey, const std::string& Key) override;
    void SavePreferences(HKEY RootKey, const std::string& Key) override;
    void ProcessConfirm(const std::string& Output, std::string& Answer) override;
    bool CreateLocalRepository() override;
    bool PlaceProject() override;
    bool PullProject() override;
    /// Takes the client's records off the working directory, and the module out of a local
    /// repository when that is asked for.
    bool RemoveProjectFrom() override;
    bool CheckOut(bool Interactive) override;
    bool Update() override;
    bool Commit(bool Interactive) override;
    /// Puts the selected files under version control, and the folders they are in. With
    /// StrictQuoting each file gets the keyword mode of its item, with a command for each mode, and
    /// a server the folders in a command of their own.
    bool Add() override;
    bool Remove() override;
    bool Import(bool Interactive) override;
    bool Release() override;
    bool Status() override;
    bool Admin() override;
    bool Annotate() override;
    bool Diff() override;
    bool Edit() override;
    bool Editors() override;
    bool Export_cmd(bool Interactive) override;
    bool History() override;
    bool Log() override;
    /// Only for a password server, whose question is answered with Password.
    bool Login(bool Interactive) override;
    /// Only for a password server.
    bool Logout(bool Interactive) override;
    bool Rdiff() override;
    bool Create_Rtag(bool Interactive) override;
    bool Del_Rtag(bool Interactive) override;
    bool Create_Tag(bool Interactive) override;
    bool Del_Tag(bool Interactive) override;
    bool Unedit() override;
    bool watch() override;
    bool Watchers() override;
    /// Does nothing.
    bool WatchersBrowser() override;
    /// Shows the working copy, read anew; returns when the user has closed the browser.
    bool StatusBrowser() override;
    /// Does nothing.
    bool CommitBrowser() override;
    /// Lets the user edit the connection and the project's settings; true when that was accepted.
    bool Preferences() override;
    void HelpCommand(TOperationType Op) override;
    bool StatusFile(const std::string& FileName) override;
    bool DiffFile(bool Interactive, const std::string& FileName) override;
    bool LogFile(const std::string& FileName) override;
    /// The log of the whole module, from the repository.
    bool RLog();
    /// Update, with its options from a dialog.
    bool UpdateSpecial();

    // What is left of an operation when its dialog has been accepted.

    /// Puts the working directory into the repository and makes it a working copy. The user's files
    /// are in the working directory or in its backup (Get_NewName) at any time; messages say which.
    /// Raises EOSError when the backup cannot be made.
    bool PlaceProjectAccepted();
    bool PullProjectAccepted();
    bool CreateLocalRepositoryAccepted();
    bool UpdateSpecialAccepted();
    bool ReleaseAccepted();

    /// Fills LogListA from the log of the selected files, or of the module when there is no working
    /// copy; true when the client succeeded. What is captured is limited by OutputListLimit.
    bool ParseLogInfo();
    /// Fills LogListB likewise.
    bool ParseLogInfoForRevDate();
    /// The symbolic name that the user chose, or an empty text. Asks the client only while LogListA
    /// is empty. @param withFiles only names of the selected files; else of the whole working copy.
    std::string Get_CVSProjectTag(TTagShowOption option, bool withFiles = false);
    /// The revision date that the user chose, in local time, or 0. Asks the client only while
    /// LogListB is empty.
    framework::TDateTime Get_CVSFileRevDate();

    /// Moves the working directory to its backup name. False when there is none to move; raises
    /// EOSError when it cannot be moved.
    bool CreateCopyProject();
    /// Appends the full names of all files below the folder. Raises EInOutError.
    static void CreateCopyList(const std::string& Dir, framework::TStringList& List);
    /// Deletes the client's records below the folder; true when nothing failed. Links are not
    /// followed.
    bool DeleteCVSDirs(const std::string& Dir);
    /// Deletes a file if it is there, and tells. Raises EInOutError when it cannot.
    void TryDeleteFile(const std::string& Dir, const std::string& Name);
    /// Writes the ignored names of the selection into the working directory's ignore list and opens
    /// it in an editor. Raises EInOutError.
    void ExploreIgnore();

    /// Appends the command of Operation to CommandLine; true when CommandLine then holds text.
    /// Raises framework::Exception, and leaves CommandLine alone, for a file outside the working
    /// directory.
    bool ParseCommand();
    /// Appends what "add" names to CommandLine: new folders first, then the files.
    void AddFilesToCommad();
    /// The names of the selected files, joined by ","; the module's name when there are none.
    std::string Get_FileListString() const;
    /// Tells the user when no root is set, and returns true then.
    bool NoCVSROOTMessage();
    /// Puts all options back to what they are in a new object.
    void ResetOptions();

    /// Each also sets the variable of that name ("PATH" for the path) of this process, which every
    /// child inherits.
    void Set_CVS_RSH(const std::string& Value);
    void Set_CVSIGNORE(const std::string& Value);
    void Set_CVSREAD(const std::string& Value);
    void Set_CVSPATH(const std::string& Value);
    const std::string& CVS_RSH() const { return CVS_RSH_; }
    const std::string& CVSIGNORE() const { return CVSIGNORE_; }

    TBeforeOperationEvent OnPlaceProject;
    TBeforeOperationEvent OnPullProject;
    TBeforeOperationEvent OnCommit;
    TBeforeOperationEvent OnCreateLabel;
    TBeforeOperationEvent OnDeleteLabel;
    TBeforeOperationEvent OnCreateBranch;
    TBeforeOperationEvent OnDeleteBranch;
    TBeforeOperationEvent OnUpdate;  ///< Of UpdateSpecial.
    TBeforeOperationEvent OnRelease;
    TBeforeOperationEvent OnLogin;
    TBeforeOperationEvent OnLogout;
    TBeforeOperationEvent OnDiff;

    TLogList LogListA;  ///< Symbolic names of the project.
    TLogList LogListB;  ///< Dates of its revisions.

    /// Quote every value so that the client reads it as one argument, whatever it holds, and takes
    /// names of files for names; one that can only be a pattern is refused, and so are names and
    /// labels that begin with a dash and values with control characters. Folders with names that
    /// are not in the code page are not imported, and not deleted by a release. Lines of messages
    /// end in line feeds. Without it, blanks in names and quotes in messages part arguments,
    /// any value can add options to the command, carriage returns stay in messages, and modes in
    /// import's wrappers are passed over.
    bool StrictQuoting = false;

    /// Reading a folder's records goes on behind entries that the folder does not have, with one
    /// message for each folder (ReadCVSInfo raises it when all is read), and applies what the
    /// client left in its journal. Without it, reading stops at the first such entry.
    bool ReadAllEntries = false;

    bool ExportInsteadOfCheckout = false;  ///< Pulling leaves no records of the client.
    bool KeepProjectCopy = false;          ///< Placing leaves its backup where it is.
    bool WizardDataAccepted = false;       ///< A wizard that chooses a folder was finished.
    bool KeepCvsIgnore = true;             ///< Taking records off leaves the ignore lists.
    bool RemoveFromRepository = false;     ///< Taking records off also deletes the module.

private:
    /// A working directory and its backup name.
    struct TMovedFolder {
        std::string Folder, Backup;
    };
    /// Tells what begins; called only when a command is about to run.
    using TStartMessage = std::function<void()>;

    /// The common tail of all operations. What handlers raise leaves through it; only a command
    /// that cannot be built is a message.
    bool Run(const TStartMessage& start = {});
    /// Has the model show what the command that has run made of the working directory.
    void UpdateModel();
    void Fire(const TBeforeOperationEvent& event);
    void TellMissingLabel();
    void BuildCommand();
    bool RunFileOperation(const char* whenEmpty);
    bool AddNewFolders();
    bool AddByModes();
    void ShowResult(const std::string& caption, const std::string& text);
    using TLabelDialog = bool (*)(TCvsObject& CvsObject);
    /// @param flag an option to set before the event, or none. @param what the result's caption.
    bool RunLabel(bool Interactive, TLabelDialog dialog, bool* flag,
                  const TBeforeOperationEvent& event, const std::string& what);
    bool RunLog(bool headerOnly, TLogList& list,
                bool (*parse)(std::string_view text, TLogList& list));
    bool CanBePlaced();
    /// Whether a path can lead to everything below the folder, also when its name is longer by
    /// `more`; tells when not.
    bool CanAllBeNamed(const std::string& folder, std::size_t more);
    /// Whether the files that the present operation's command looks for itself are those that their
    /// names say.
    bool CanClientName();
    bool WriteIgnoreLists();
    bool Place();
    bool CheckOutWorkingDirectory(const std::string& folder);
    bool BringFilesBack(const TMovedFolder& moved);
    void ShowPlaceResult(int code);
    /// Moves the working directory to its backup name; raises EOSError when it cannot be moved.
    void MoveAside(const TMovedFolder& moved);
    void TellCopyMade(const TMovedFolder& moved);
    bool DeleteRecordsBelow(const std::string& Dir, framework::TPatience& patience);
    /// Deletes all of the client's folder that is its own; false, and told, when that failed.
    bool DeleteAdminDirectory(const std::string& Dir, framework::TPatience& patience);
    bool DeleteRecord(const std::string& Dir, const char* Name, framework::TPatience& patience);
    /// Tells of an error of the action, and answers whether there was none.
    template <class Action>
    bool Contained(Action action);
    /// The folder that the present operation's command runs in.
    std::string ExecuteDirectory();
    template <class Action>
    void WithBuilder(Action action);

    bool NewFoldersOnly_ = false;          // while those of "add" are added
    std::optional<TKeywordMode> AddMode_;  // of the files that are being added
    std::string CVSREAD_;
    std::string CVSPATH_;
};

}  // namespace tandrel
