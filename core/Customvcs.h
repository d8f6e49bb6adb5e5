#pragma once

#include <windows.h>
// The system's macro of that name would rename an operation below.
#undef MoveFile

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/Customvcs_types.h"
#include "core/FileItems.h"
#include "core/WorkDirTree.h"
#include "framework/base/format.h"
#include "framework/base/object.h"
#include "framework/base/registry.h"
#include "framework/base/string_list.h"

namespace tandrel {

class TCvsExecuteClass;

/// A message or a piece of a command's output, as it comes; messages end in CR LF.
using TMessageEvent = std::function<void(framework::TObject* Sender, const std::string& Text)>;

/// The abstract version-control object of one project: connection, working copy, the files the next
/// operation works on, the channel to the user, the off-line command log, and the one runner of
/// command lines. Most operations here only record their kind; a client's class gives them their
/// meaning.
///
/// Everything happens on the main thread. Members that the runner's thread also reads are atomic or
/// marked; do not assign marked ones while a command runs. What a run needs besides is taken when
/// it starts.
class TCustomCvsObj : public framework::TObject {
public:
    // The virtual operations stand in the order of their slots; derived classes keep it.

    /// Version of the client's class. No body here.
    virtual std::string Get_Version();
    /// The folder that commands run in when none is given.
    virtual std::string Get_CurrentProcDirectory();
    /// The variables set for the child, for messages.
    virtual std::string GetEnvVariable();
    /// Names the repository that commands work on, the way the client wants it.
    virtual void SetCVSROOT(const std::string& Value);
    /// Whether a folder of this name is the client's own.
    virtual bool CVS_SystemDirectory(const std::string& Name);
    /// Whether a file of this name is the client's own.
    virtual bool CVS_SystemFile(const std::string& Name);
    /// Where the repository keeps the folder or file of the working copy; empty when unknown.
    virtual std::string Get_RepositoryPath(const std::string& Path);
    /// The name that the repository gives the entry; empty when unknown.
    virtual std::string Get_RepositoryFileName(const std::string& Name, bool IsDirectory);
    /// Completes a folder's items from the client's records. No body here.
    virtual void ReadCVSInfo(TWorkDirTree& Tree, const std::string& Dir);
    /// Completes a folder's items from its ignore list. No body here.
    virtual void ReadCVS_SystemFile(TWorkDirTree& Tree, const std::string& Dir);
    /// Whether the working directory is a working copy. No body here.
    virtual bool GetIsVCSstored();
    /// Takes connection and module from the working copy's records. No body here.
    virtual void LoadVCSProjectInfo();
    /// The log of one file, without empty lines.
    virtual std::string LogFileEx(const std::string& FileName);
    /// The differences of one file from the repository, without empty lines.
    virtual std::string DiffFileEx(const std::string& FileName);

    TCustomCvsObj();

    /// Reads the stored connection data into the fields that are still empty. A key that cannot be
    /// opened leaves all as it is. @param RootKey stays the caller's.
    virtual void LoadPreferences(HKEY RootKey, const std::string& Key);
    /// Writes the connection data that is not empty; raises ERegistryError when it cannot.
    virtual void SavePreferences(HKEY RootKey, const std::string& Key);
    /// The child may be waiting for an answer: puts one into `Answer`. @param Output what it wrote.
    virtual void ProcessConfirm(const std::string& Output, std::string& Answer);

    /// The operations, on the whole project or on FileItems. They return when they are over: true
    /// when their last command succeeded, false also when the user cancelled. Here they record
    /// their kind and answer false. @param Interactive ask for options and show the result.
    ///
    /// Making a repository, logging in and logging out also go to the folder for temporary files
    /// when there is no working directory.
    virtual bool CreateLocalRepository();
    /// Imports the working directory and makes a working copy of it. No body here.
    virtual bool PlaceProject();
    /// Makes the project's folder from the repository. No body here.
    virtual bool PullProject();
    /// Makes an ordinary folder of the working copy.
    virtual bool RemoveProjectFrom();
    virtual bool CheckOut(bool Interactive);
    virtual bool Update();
    virtual bool Commit(bool Interactive);
    virtual bool Add();
    /// Deletes the listed files first when DeleteLocalFiles is set.
    virtual bool Remove();
    virtual bool Import(bool Interactive);
    virtual bool Release();
    virtual bool Status();
    virtual bool Admin();
    virtual bool Annotate();
    virtual bool Diff();
    virtual bool Edit();
    virtual bool Editors();
    virtual bool Export_cmd(bool Interactive);
    virtual bool History();
    virtual bool Log();
    virtual bool Login(bool Interactive);
    virtual bool Logout(bool Interactive);
    virtual bool Rdiff();
    virtual bool Create_Rtag(bool Interactive);
    virtual bool Del_Rtag(bool Interactive);
    virtual bool Create_Tag(bool Interactive);
    virtual bool Del_Tag(bool Interactive);
    virtual bool Unedit();
    virtual bool watch();
    virtual bool Watchers();
    /// Windows on the project, and help on an operation. No bodies here.
    virtual bool WatchersBrowser();
    virtual bool StatusBrowser();
    virtual bool CommitBrowser();
    virtual bool Preferences();
    virtual void HelpCommand(TOperationType Op);

    /// Puts one file under version control. As with all operations on one file, FileName is a full
    /// name, and FileItems is empty afterwards.
    virtual bool AddFile(const std::string& FileName);
    /// Takes one file out of version control. @param DeleteLocal also delete it here, first.
    /// When it cannot be deleted, nothing else is done and FileItems keeps it.
    virtual bool RemoveFile(const std::string& FileName, bool DeleteLocal);
    /// Version control for a move. @param OsMove also move the file; otherwise it has been moved.
    virtual bool MoveFile(const std::string& Src, const std::string& Dst, bool OsMove);
    /// The file's status, told to the user.
    virtual bool StatusFile(const std::string& FileName);
    /// Here it is Diff, on what FileItems holds.
    virtual bool DiffFile(bool Interactive, const std::string& FileName);
    /// The file's log, told to the user.
    virtual bool LogFile(const std::string& FileName);

    ~TCustomCvsObj() override;

    /// Runs CvsExecutable followed by CommandLine in the folder; returns when the run has ended.
    /// The outcome is in ExitCode.
    void Execute(const std::string& Directory);
    /// Whether a command runs. Operations are refused then: they tell the user, answer false, and
    /// leave everything as it is.
    bool IsRunning() const;
    /// The status of one file, without empty lines.
    std::string StatusFileEx(const std::string& FileName);

    /// Tells the user a line: `Fmt` as it is without arguments, else formatted with them.
    void MessageProc(std::string_view Fmt, framework::FormatArgs Args = {});
    /// Hands on raw output, and keeps it while output is captured.
    void MessageProc2(const std::string& Chunk);

    /// Appends the folder's entries, and all below, to the tree, completed from the client's
    /// records and ignore lists. What cannot be read is told and left out.
    void LoadFiles(TWorkDirTree& Tree, const std::string& Dir);
    /// Builds WorkDirTree anew from the working directory.
    void Load_WorkDirTree();

    /// The working directory's backup name; empty when there is none to give.
    std::string Get_NewName() const;
    /// Deletes the files (not the folders) of FileItems; true when that succeeded.
    bool DeleteFileListsFiles();
    /// Sets a variable of this process, which every child inherits; an empty value removes it, an
    /// empty name does nothing.
    void SetEnvVariable(const std::string& Name, const std::string& Value);

    /// Going on-line runs the command log first, while still counting as off-line. It stays
    /// off-line when the log has to wait for a command that runs.
    void Set_ServerOnline(bool Value);
    /// A folder: also finds out whether it is a working copy, and module and project root.
    void Set_WorkingDirectory(const std::string& Value);
    /// Also moves the working directory below the new root.
    void Set_ProjectRoot(const std::string& Value);
    /// Also moves the working directory to the new name.
    void Set_Modulename(const std::string& Value);
    /// Setting it clears DeleteLocalFiles: the file is not there any more.
    void Set_OsMoveFilesFlag(bool Value);

    /// Keeps the command for later, if it adds or removes files. Raises EInOutError when there is
    /// no log to write to.
    void SaveCommandLog();
    /// Runs the kept commands in their order and deletes the log. False, with nothing done, while
    /// another command runs. Raises EInOutError when the log cannot be read or deleted.
    bool ProcessCommandLog();

    const std::string& CVSROOT() const { return CVSROOT_; }
    const std::string& Modulename() const { return Modulename_; }
    /// The folder that contains the module's working folder.
    const std::string& ProjectRoot() const { return ProjectRoot_; }
    const std::string& WorkingDirectory() const { return WorkingDirectory_; }
    bool ServerOnline() const { return ServerOnline_; }
    /// Moves are done in the file system before version control hears of them.
    bool OsMoveFilesFlag() const { return OsMoveFilesFlag_; }

    std::unique_ptr<TCvsExecuteClass> ExecuteClass;  ///< Runs the commands; always there.

    std::atomic<bool> Aborted{false};         ///< Set it to stop reading the child's output.
    std::atomic<bool> SuppressOutput{false};  ///< Withholds raw output while it is captured.
    std::atomic<std::int32_t> ExitCode{0};    ///< Of the last command; 1 until it has ended.
    std::string CvsExecutable;                ///< The program part of every command line.
    std::string CommandLine;                  ///< The argument part.

    TConnectionType ConnectionType = cnLocal;
    std::string Path;  ///< The repository's path on the server, or on this machine.
    std::string Server;
    std::string UserName;
    std::string Password;
    std::string SpecialPort;  ///< The server's port when it is not the default.

    TMessageEvent OnMessage;                  ///< The runner's thread looks whether it is assigned.
    TOperationType Operation = otCreateLRep;  ///< Of the operation last started.
    TFileItems FileItems;                     ///< What the next operation works on.
    TWorkDirTree WorkDirTree{this};
    /// WorkDirTree was loaded from the working directory, and nothing here has changed files since.
    /// A host that changes files itself clears it.
    bool ModelCurrent = false;

    bool DeleteLocalFiles = false;           ///< Remove also deletes the local files.
    std::atomic<bool> AnswerPrompts{false};  ///< The next run answers the child's questions.
    bool IsVCSStoredFlag = false;            ///< The working directory is a working copy.
    std::atomic<framework::TStringList*> OutputList{nullptr};  ///< Collects raw output while set.
    std::int32_t OutputListLimit = 50;  ///< No chunk is added to a list that holds more.

    /// Writing ignore lists keeps, in front, the lines of a list at hand that name no entry of its
    /// folder: patterns, and names of files that are not there now.
    bool KeepIgnorePatterns = false;

protected:
    /// Calls LoadVCSProjectInfo and stays in the folder: its module may be called otherwise, and
    /// the module's name moves the object to the folder of that name.
    void LoadInfoOfFolder();
    /// Tells that the operation is refused, and answers true, while a command runs.
    bool Refused(TOperationType Kind);
    bool Refused(std::string_view Command);

    /// Alive while preferences are loaded or saved.
    std::unique_ptr<framework::TRegistry> PreferencesRegistry;

    std::string CVS_RSH_;    // the remote shell program
    std::string CVSIGNORE_;  // the ignore patterns

private:
    bool Record(TOperationType Kind);
    bool DeleteListedFiles(bool OnlyExisting);
    bool WithFile(const std::string& FileName, TOperationType Kind,
                  bool (TCustomCvsObj::*Operate)());
    void MoveTo(const std::string& Directory);
    std::string CommandLogName() const;
    void ReplayLine(const std::string& Line, std::string& Command);

    std::string CVSROOT_;
    std::string Modulename_;
    std::string ProjectRoot_;
    std::string WorkingDirectory_;
    bool ServerOnline_ = false;
    bool OsMoveFilesFlag_ = false;
};

/// Sets a flag for one call: it is clear afterwards, whether the call has used it up or not.
template <class TFlag>
class TFlagForCall {
public:
    explicit TFlagForCall(TFlag& flag, bool value = true) : Flag_(flag) { Flag_ = value; }
    ~TFlagForCall() { Flag_ = false; }
    TFlagForCall(const TFlagForCall&) = delete;
    TFlagForCall& operator=(const TFlagForCall&) = delete;

private:
    TFlag& Flag_;
};

/// Collects a version-control object's raw output while it lives.
class TOutputCapture {
public:
    explicit TOutputCapture(TCustomCvsObj& obj)
        : Obj_(obj), Before_(obj.OutputList.exchange(&Chunks_)) {}
    ~TOutputCapture() { Obj_.OutputList = Before_; }
    TOutputCapture(const TOutputCapture&) = delete;
    TOutputCapture& operator=(const TOutputCapture&) = delete;

    /// What came so far: its lines, without the empty ones. Chunks end anywhere in a line, so they
    /// are joined first.
    std::string Text() const;

private:
    TCustomCvsObj& Obj_;
    framework::TStringList Chunks_;
    framework::TStringList* Before_;
};

}  // namespace tandrel
