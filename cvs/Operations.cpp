// The operations on a repository: options in, one command, result out.

#include <set>

#include "core/Cvs_utils.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "cvs/Kept.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
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
    // A dialog may have been open while somebody else began to run one.
    if (Refused(Operation) || NoCVSROOTMessage())
        return false;
    CommandLine.clear();
    TellMissingLabel();
    if (!CanClientName()) {
        ExitCode = 1;
        return false;
    }
    try {
        BuildCommand();
    } catch (const framework::Exception& error) {
        // Bad input, such as a file of another project.
        ExitCode = 1;
        MessageProc(error.what());
        return false;
    }
    if (!CommandLine.empty()) {
        if (start) {
            // Whoever is told may run something else meanwhile.
            const TKept operation(Operation);
            start();
        }
        Execute(ExecuteDirectory());
        UpdateModel();
    }
    return ExitCode == 0;
}

void TCvsObject::UpdateModel() {
    const bool changes = ChangesWorkingDirectory(Operation);
    if (WorkDirTree.Empty() || !(changes || Operation == otRelease))
        return;
    if (!framework::DirectoryExists(WorkingDirectory())) {
        // The command has said why.
        WorkDirTree.Clear();
        ModelCurrent = true;
    } else if (changes) {
        Load_WorkDirTree();
    }
}

void TCvsObject::Fire(const TBeforeOperationEvent& event) {
    // The host may run something else meanwhile; the operation stays what it is.
    const TKept operation(Operation);
    if (event)
        event(*this);
}

void TCvsObject::ShowResult(const std::string& caption, const std::string& text) {
    // What runs now has refused this operation.
    if (IsRunning())
        return;
    // Without a root nothing was begun, and the exit code is that of some earlier command.
    Show_OkForm(caption, text, CVSROOT().empty() ? 1 : ExitCode.load());
}

// --- operations without messages of their own -------------------------------------------------

bool TCvsObject::Status() {
    if (Refused(otStatus))
        return false;
    TCustomCvsObj::Status();
    return Run();
}

bool TCvsObject::Admin() {
    if (Refused(otAdmin))
        return false;
    TCustomCvsObj::Admin();
    return Run();
}

bool TCvsObject::Annotate() {
    if (Refused(otAnnotate))
        return false;
    TCustomCvsObj::Annotate();
    return Run();
}

bool TCvsObject::Diff() {
    if (Refused(otDiff))
        return false;
    TCustomCvsObj::Diff();
    return Run();
}

bool TCvsObject::Edit() {
    if (Refused(otEdit))
        return false;
    TCustomCvsObj::Edit();
    return Run();
}

bool TCvsObject::Editors() {
    if (Refused(otEditors))
        return false;
    TCustomCvsObj::Editors();
    return Run();
}

bool TCvsObject::History() {
    if (Refused(otHistory))
        return false;
    TCustomCvsObj::History();
    return Run();
}

bool TCvsObject::Log() {
    if (Refused(otLog))
        return false;
    TCustomCvsObj::Log();
    return Run();
}

bool TCvsObject::Rdiff() {
    if (Refused(otRdiff))
        return false;
    TCustomCvsObj::Rdiff();
    return Run();
}

bool TCvsObject::Unedit() {
    if (Refused(otUnedit))
        return false;
    TCustomCvsObj::Unedit();
    return Run();
}

bool TCvsObject::watch() {
    if (Refused(otWatch))
        return false;
    TCustomCvsObj::watch();
    return Run();
}

bool TCvsObject::Watchers() {
    if (Refused(otWatchers))
        return false;
    TCustomCvsObj::Watchers();
    return Run();
}

bool TCvsObject::Export_cmd(bool Interactive) {
    if (Refused(otExport))
        return false;
    TCustomCvsObj::Export_cmd(Interactive);
    return Run();
}

bool TCvsObject::RLog() {
    if (Refused(otRlog))
        return false;
    Operation = otRlog;
    return Run();
}

// --- the working copy -------------------------------------------------------------------------

bool TCvsObject::CheckOut(bool Interactive) {
    if (Refused(otCheckOut))
        return false;
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
    if (Refused(otUpdate))
        return false;
    TCustomCvsObj::Update();
    const bool done = Run([this] {
        MessageProc("Update project %S directory(%s) from  repository %s ",
                    {Modulename(), Get_CurrentProcDirectory(), CVSROOT()});
    });
    ShowResult("CVS update", "CVS update  \"" + Modulename() + "\"");
    return done;
}

bool TCvsObject::Commit(bool Interactive) {
    if (Refused(otCommit))
        return false;
    TCustomCvsObj::Commit(Interactive);
    if (Interactive && !Commit_Prepare(*this))
        return false;
    Fire(OnCommit);
    const bool done = Run([this] {
        MessageProc("Commit  project from  directory(%s) into repository %s ",
                    {WorkingDirectory(), CVSROOT()});
    });
    if (Interactive)
        ShowResult("CVS commit", "CVS commit  \"" + Modulename() + "\"");
    return done;
}

bool TCvsObject::Import(bool Interactive) {
    if (Refused(otImport))
        return false;
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

bool TCvsObject::AddByModes() {
    const TKept kept(AddMode_);
    // What is kept for later has no success.
    const bool isKept = ConnectionType != cnLocal && !ServerOnline();
    std::set<TKeywordMode> modes;
    for (const TFileItem& item : FileItems)
        modes.insert(item.KeywordMode);
    bool done = true;
    for (const TKeywordMode mode : modes) {
        AddMode_ = mode;
        done = Run() && done;
        if (!done && !isKept)
            break;
    }
    return done;
}

bool TCvsObject::Add() {
    if (Refused(otAdd))
        return false;
    TCustomCvsObj::Add();
    // A server knows nothing of the files in a folder that the same command makes.
    const bool isServed = ConnectionType != cnLocal && ServerOnline() && !CVSROOT().empty();
    if (StrictQuoting && isServed && !FileItems.Empty() && !AddNewFolders())
        return false;
    if (StrictQuoting && !FileItems.Empty())
        return AddByModes();
    return RunFileOperation("No files in FileList ");
}

bool TCvsObject::Remove() {
    if (Refused(otRemove))
        return false;
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
    Fire(event);
    const bool done = Run();
    if (Interactive)
        ShowResult(what, what + " " + TagName);
    return done;
}

bool TCvsObject::Create_Rtag(bool Interactive) {
    if (Refused(otRtag))
        return false;
    TCustomCvsObj::Create_Rtag(Interactive);
    return RunLabel(Interactive, sh_CrBranch_Form, &TagBranch, OnCreateBranch, "CVS create branch");
}

bool TCvsObject::Create_Tag(bool Interactive) {
    if (Refused(otTag))
        return false;
    TCustomCvsObj::Create_Tag(Interactive);
    return RunLabel(Interactive, sh_CrLabel_Form, nullptr, OnCreateLabel, "CVS create label");
}

bool TCvsObject::Del_Rtag(bool Interactive) {
    if (Refused(otRtag))
        return false;
    TCustomCvsObj::Del_Rtag(Interactive);
    return RunLabel(Interactive, sh_DelBranch_Form, &TagDelete, OnDeleteBranch,
                    "CVS delete branch");
}

bool TCvsObject::Del_Tag(bool Interactive) {
    if (Refused(otTag))
        return false;
    TCustomCvsObj::Del_Tag(Interactive);
    return RunLabel(Interactive, sh_DelLabel_Form, &TagDelete, OnDeleteLabel, "CVS delete label");
}

// --- the repository ---------------------------------------------------------------------------

bool TCvsObject::CreateLocalRepository() {
    if (Refused(otCreateLRep))
        return false;
    TCustomCvsObj::CreateLocalRepository();
    return Init_Prepare(*this) && CreateLocalRepositoryAccepted();
}

bool TCvsObject::CreateLocalRepositoryAccepted() {
    if (Refused(otCreateLRep))
        return false;
    TCustomCvsObj::CreateLocalRepository();
    const bool done = Run([this] { MessageProc("Creating new repository (%s)", {CVSROOT()}); });
    if (!CVSROOT().empty())
        ShowResult("CVS init", "CVS init " + CVSROOT());
    return done;
}

bool TCvsObject::StatusBrowser() {
    if (Refused(otStatus))
        return false;
    Load_WorkDirTree();
    if (IsVCSStoredFlag)
        LoadInfoOfFolder();
    return Sh_StatusBrowser(*this);
}

bool TCvsObject::Preferences() {
    return !Refused("preferences") && CVSProperty_Frm(*this);
}

bool TCvsObject::UpdateSpecial() {
    if (Refused(otUpdate))
        return false;
    TCustomCvsObj::Update();
    MergeSpec.Date1 = MergeSpec.Date2 = framework::Now();
    return Update_Prepare(*this) && UpdateSpecialAccepted();
}

bool TCvsObject::UpdateSpecialAccepted() {
    if (Refused(otUpdate))
        return false;
    TCustomCvsObj::Update();
    Fire(OnUpdate);
    return Update();
}

bool TCvsObject::Login(bool Interactive) {
    if (Refused(otLogin))
        return false;
    TCustomCvsObj::Login(Interactive);
    if (Interactive && !Login_Prepare(*this))
        return false;
    if (ConnectionType != cnPServer) {
        MessageProc("Loging in is required for pserver  authentication only");
        return false;
    }
    Fire(OnLogin);
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
    if (Refused(otLogout))
        return false;
    TCustomCvsObj::Logout(Interactive);
    if (Interactive && !Logout_Prepare(*this))
        return false;
    if (ConnectionType != cnPServer) {
        MessageProc("Logout is required for pserver  authentication only");
        return false;
    }
    Fire(OnLogout);
    const bool done = Run();
    if (Interactive)
        ShowResult("CVS logout", "CVS logout " + CVSROOT());
    return done;
}

}  // namespace tandrel
