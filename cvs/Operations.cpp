// The operations on a repository: options in, one command, result out.

#include "core/CvsExecute.h"
#include "core/Cvs_utils.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "cvs/Kept.h"
#include "framework/base/exceptions.h"
#include "framework/base/system_time.h"

namespace tandrel {
namespace {

/// Whether the operation may change all of the working directory, or make it, so that its model is
/// to be built anew.
bool ChangesWorkingDirectory(TOperationType operation) {
    return operation == otCheckOut || operation == otExport || operation == otUpdate ||
           operation == otCommit;
}

}  // namespace

std::string TCvsObject::ExecuteDirectory() {
    // An export makes the module's folder: it cannot run in it.
    return Operation == otExport ? ProjectRoot() : Get_CurrentProcDirectory();
}

bool TCvsObject::Run(const TStartMessage& start) {
    if (NoCVSROOTMessage())
        return false;
    CommandLine.clear();
    try {
        if (ParseCommand()) {
            if (start)
                start();
            // Called from a handler of a run, this one will be refused.
            const bool refused = ExecuteClass->Thread != nullptr;
            Execute(ExecuteDirectory());
            if (!refused && ChangesWorkingDirectory(Operation) && !WorkDirTree.Empty())
                Load_WorkDirTree();
        }
    } catch (const framework::EAbort&) {
        throw;
    } catch (const framework::Exception& error) {
        // Bad input, such as a file of another project.
        MessageProc(error.what());
        ExitCode = 1;
        return false;
    }
    return ExitCode == 0;
}

void TCvsObject::ShowResult(const std::string& caption, const std::string& text) {
    // Without a root nothing was begun, and the exit code is that of some earlier command.
    if (!CVSROOT().empty())
        Show_OkForm(caption, text, ExitCode);
}

// --- operations without messages of their own -------------------------------------------------

bool TCvsObject::Status() {
    TCustomCvsObj::Status();
    return Run();
}

bool TCvsObject::Admin() {
    TCustomCvsObj::Admin();
    return Run();
}

bool TCvsObject::Annotate() {
    TCustomCvsObj::Annotate();
    return Run();
}

bool TCvsObject::Diff() {
    TCustomCvsObj::Diff();
    return Run();
}

bool TCvsObject::Edit() {
    TCustomCvsObj::Edit();
    return Run();
}

bool TCvsObject::Editors() {
    TCustomCvsObj::Editors();
    return Run();
}

bool TCvsObject::History() {
    TCustomCvsObj::History();
    return Run();
}

bool TCvsObject::Log() {
    TCustomCvsObj::Log();
    return Run();
}

bool TCvsObject::Rdiff() {
    TCustomCvsObj::Rdiff();
    return Run();
}

bool TCvsObject::Unedit() {
    TCustomCvsObj::Unedit();
    return Run();
}

bool TCvsObject::watch() {
    TCustomCvsObj::watch();
    return Run();
}

bool TCvsObject::Watchers() {
    TCustomCvsObj::Watchers();
    return Run();
}

bool TCvsObject::Export_cmd(bool Interactive) {
    TCustomCvsObj::Export_cmd(Interactive);
    return Run();
}

bool TCvsObject::RLog() {
    Operation = otRlog;
    return Run();
}

// --- the working copy -------------------------------------------------------------------------

bool TCvsObject::CheckOut(bool Interactive) {
    TCustomCvsObj::CheckOut(Interactive);
    const bool done = Run([this] {
        MessageProc("CheckOut project %S into directory(%s) from  repository %s ",
                    {Modulename(), Get_CurrentProcDirectory(), CVSROOT()});
    });
    if (Interactive)
        ShowResult("CVS CheckOut", "CVS project " + Modulename());
    return done;
}

bool TCvsObject::Update() {
    TCustomCvsObj::Update();
    const bool done = Run([this] {
        MessageProc("Update project %S directory(%s) from  repository %s ",
                    {Modulename(), Get_CurrentProcDirectory(), CVSROOT()});
    });
    ShowResult("CVS update", "CVS update  \"" + Modulename() + "\"");
    return done;
}

bool TCvsObject::Commit(bool Interactive) {
    TCustomCvsObj::Commit(Interactive);
    if (Interactive && !Commit_Prepare(*this))
        return false;
    if (OnCommit)
        OnCommit(*this);
    const bool done = Run([this] {
        MessageProc("Commit  project from  directory(%s) into repository %s ",
                    {WorkingDirectory(), CVSROOT()});
    });
    if (Interactive)
        ShowResult("CVS commit", "CVS commit  \"" + Modulename() + "\"");
    return done;
}

bool TCvsObject::Import(bool Interactive) {
    TCustomCvsObj::Import(Interactive);
    const bool done = Run([this] {
        MessageProc("Imorting directory(%s) into repository %s ", {WorkingDirectory(), CVSROOT()});
    });
    if (Interactive)
        ShowResult("CVS import", "CVS import " + WorkingDirectory());
    return done;
}

bool TCvsObject::RunFileOperation(const char* whenEmpty) {
    if (!FileItems.Empty())
        return Run();
    MessageProc(whenEmpty);
    return ExitCode == 0;
}

bool TCvsObject::AddNewFolders() {
    const TKept kept(NewFoldersOnly_);
    NewFoldersOnly_ = true;
    ExitCode = 0;  // there may be none
    return Run();
}

bool TCvsObject::Add() {
    TCustomCvsObj::Add();
    // A server knows nothing of the files in a folder that the same command makes.
    const bool isServed = ConnectionType != cnLocal && ServerOnline() && !CVSROOT().empty();
    // One that is called while a command runs is refused as a whole: the exit code is that one's.
    const bool refused = ExecuteClass->Thread != nullptr;
    if (isServed && !refused && !FileItems.Empty() && !AddNewFolders())
        return false;
    return RunFileOperation("No files in FileList ");
}

bool TCvsObject::Remove() {
    TCustomCvsObj::Remove();
    return RunFileOperation("No files in  FileList ");
}

// --- labels and branches ----------------------------------------------------------------------

bool TCvsObject::RunLabel(bool Interactive, TLabelDialog dialog, bool* flag,
                          const TBeforeOperationEvent& event, const std::string& what) {
    if (Interactive && !dialog(*this))
        return false;
    if (flag)
        *flag = true;
    if (event)
        event(*this);
    const bool done = Run();
    if (Interactive)
        ShowResult(what, what + " " + TagName);
    return done;
}

bool TCvsObject::Create_Rtag(bool Interactive) {
    TCustomCvsObj::Create_Rtag(Interactive);
    return RunLabel(Interactive, sh_CrBranch_Form, &TagBranch, OnCreateBranch, "CVS create branch");
}

bool TCvsObject::Create_Tag(bool Interactive) {
    TCustomCvsObj::Create_Tag(Interactive);
    return RunLabel(Interactive, sh_CrLabel_Form, nullptr, OnCreateLabel, "CVS create label");
}

bool TCvsObject::Del_Rtag(bool Interactive) {
    TCustomCvsObj::Del_Rtag(Interactive);
    return RunLabel(Interactive, sh_DelBranch_Form, &TagDelete, OnDeleteBranch,
                    "CVS delete branch");
}

bool TCvsObject::Del_Tag(bool Interactive) {
    TCustomCvsObj::Del_Tag(Interactive);
    return RunLabel(Interactive, sh_DelLabel_Form, &TagDelete, OnDeleteLabel, "CVS delete label");
}

// --- the repository ---------------------------------------------------------------------------

bool TCvsObject::CreateLocalRepository() {
    TCustomCvsObj::CreateLocalRepository();
    return Init_Prepare(*this) && CreateLocalRepositoryAccepted();
}

bool TCvsObject::CreateLocalRepositoryAccepted() {
    TCustomCvsObj::CreateLocalRepository();
    const bool done = Run([this] { MessageProc("Creating new repository (%s)", {CVSROOT()}); });
    ShowResult("CVS init", "CVS init " + CVSROOT());
    return done;
}

bool TCvsObject::StatusBrowser() {
    Load_WorkDirTree();
    if (IsVCSStoredFlag)
        LoadInfoOfFolder();
    return Sh_StatusBrowser(*this);
}

bool TCvsObject::Preferences() {
    return CVSProperty_Frm(*this);
}

bool TCvsObject::UpdateSpecial() {
    MergeSpec.Date1 = MergeSpec.Date2 = framework::Now();
    return Update_Prepare(*this) && UpdateSpecialAccepted();
}

bool TCvsObject::UpdateSpecialAccepted() {
    if (OnUpdate)
        OnUpdate(*this);
    return Update();
}

bool TCvsObject::Login(bool Interactive) {
    TCustomCvsObj::Login(Interactive);
    if (Interactive && !Login_Prepare(*this))
        return false;
    if (ConnectionType != cnPServer) {
        MessageProc("Loging in is required for pserver  authentication only");
        return false;
    }
    if (OnLogin)
        OnLogin(*this);
    bool done = false;
    {
        const TFlagForCall answers(AnswerPrompts);
        done = Run();
    }
    if (Interactive)
        ShowResult("CVS login", "CVS login to " + CVSROOT());
    return done;
}

bool TCvsObject::Logout(bool Interactive) {
    TCustomCvsObj::Logout(Interactive);
    if (Interactive && !Logout_Prepare(*this))
        return false;
    if (ConnectionType != cnPServer) {
        MessageProc("Logout is required for pserver  authentication only");
        return false;
    }
    if (OnLogout)
        OnLogout(*this);
    const bool done = Run();
    if (Interactive)
        ShowResult("CVS logout", "CVS logout " + CVSROOT());
    return done;
}

}  // namespace tandrel
