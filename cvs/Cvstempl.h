#pragma once

#include <functional>
#include <string>

#include "core/Customvcs.h"
#include "cvs/CvsOptions.h"
#include "cvs/LogList.h"

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
    bool GetIsVCSstored() override;
    void LoadVCSProjectInfo() override;

    TCvsObject();
    ~TCvsObject() override;

    void ProcessConfirm(const std::string& Output, std::string& Answer) override;
    bool CheckOut(bool Interactive) override;
    bool Update() override;
    bool Commit(bool Interactive) override;
    bool Add() override;
    bool Remove() override;
    bool Import(bool Interactive) override;
    bool Status() override;
    bool Admin() override;
    bool Annotate() override;
    bool Diff() override;
    bool Edit() override;
    bool Editors() override;
    bool Export_cmd(bool Interactive) override;
    bool History() override;
    bool Log() override;
    bool Rdiff() override;
    bool Create_Rtag(bool Interactive) override;
    bool Create_Tag(bool Interactive) override;
    bool Unedit() override;
    bool watch() override;
    bool Watchers() override;
    void HelpCommand(TOperationType Op) override;
    /// The log of the whole module, from the repository.
    bool RLog();

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
    const std::string& CVSREAD() const { return CVSREAD_; }
    const std::string& CVSPATH() const { return CVSPATH_; }

    TBeforeOperationEvent OnCommit;
    TBeforeOperationEvent OnCreateLabel;
    TBeforeOperationEvent OnCreateBranch;

    TLogList LogListA;  ///< Symbolic names of the project.
    TLogList LogListB;  ///< Dates of its revisions.

    /// Quote every value so that the client reads it as one argument, whatever it holds. Without
    /// it, blanks in names and quotes in messages part arguments.
    bool StrictQuoting = false;

private:
    /// Tells what begins; called only when a command is about to run.
    using TStartMessage = std::function<void()>;

    /// The common tail of all operations.
    bool Run(const TStartMessage& start = {});
    bool RunFileOperation(const char* whenEmpty);
    void ShowResult(const std::string& caption, const std::string& text);
    /// Tells that an operation that was called interactively has no dialog; answers false.
    bool NoDialog();
    /// The folder that the present operation's command runs in.
    std::string ExecuteDirectory();
    template <class Action>
    void WithBuilder(Action action);

    std::string CVSREAD_;
    std::string CVSPATH_;
};

}  // namespace tandrel
