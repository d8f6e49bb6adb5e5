#include "host/Project.h"

#include "core/CvsExecute.h"
#include "core/Cvs_utils.h"
#include "core/Cvsroot.h"
#include "core/Progress_frm.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "host/ClientProcess.h"
#include "host/PasswordMask.h"

namespace host {

using namespace framework;
using namespace tandrel;

namespace {

// Lists of labels come in pieces of a kilobyte; the default limit cuts them after fifty.
constexpr int LongestOutput = 1000000;

/// Lets a timer tick while it lives.
class TTicking {
public:
    explicit TTicking(TTimer& timer) : Timer_(timer) { Timer_.Restart(); }
    ~TTicking() { Timer_.SetEnabled(false); }
    TTicking(const TTicking&) = delete;
    TTicking& operator=(const TTicking&) = delete;

private:
    TTimer& Timer_;
};

}  // namespace

TProject::TProject(TProjectHost& window, TSettings& settings, const std::string& folder)
    : Window_(window), Settings_(settings), Folder_(folder), OfflineLog_(folder) {
    Cvs_.StrictQuoting = true;
    Cvs_.OutputListLimit = LongestOutput;
    Cvs_.Set_ServerOnline(true);
    CancelWatch_.OnTimer = [this](TObject*) { CancelWatchTick(); };
    BindEvents();
    Load();
    Reload();
}

void TProject::BindEvents() {
    Cvs_.OnMessage = [this](TObject*, const std::string& text) { MessageReceived(text); };
    // Before the files are read, what the editors hold has to be on disk. Abort ends the operation
    // without a word.
    const auto save = [this](TCvsObject&) {
        if (!Window_.SaveDocuments())
            Abort();
    };
    Cvs_.OnCommit = Cvs_.OnUpdate = Cvs_.OnDiff = Cvs_.OnRelease = save;
    Cvs_.OnCreateLabel = Cvs_.OnCreateBranch = save;
    // The client starts in the folder that the user named.
    Cvs_.OnPullProject = [](TCvsObject& cvs) { ForceDirectories(cvs.ProjectRoot()); };
    // The client refuses to delete a label with the option for branches.
    Cvs_.OnDeleteLabel = [](TCvsObject& cvs) { cvs.TagDeleteBranch = false; };
    // And it wants both tags, for which there is no dialog.
    Cvs_.OnPlaceProject = [this, save](TCvsObject& cvs) {
        save(cvs);
        if (cvs.VendorTag.empty())
            cvs.VendorTag = "VENDOR";
        if (cvs.ReleaseTag.empty())
            cvs.ReleaseTag = "START";
        if (!Window_.AskForTags(cvs.VendorTag, cvs.ReleaseTag))
            Abort();
    };
}

void TProject::MessageReceived(const std::string& text) {
    Window_.Tell(MaskPasswords(text));
    // The client has one question. What it says behind it is none.
    if (Cvs_.Operation == otRelease && text.find("re you sure") != std::string::npos)
        Cvs_.AnswerPrompts = false;
    if (Cvs_.Operation == otLogin && text.find("CVS password:") != std::string::npos)
        Cvs_.AnswerPrompts = false;
    // Reading goes on when this has been handled, unless it is not to.
    WatchCancel();
}

void TProject::Load() {
    const std::string key = Settings_.ProjectKey(Folder_);
    Cvs_.LoadPreferences(HostRegistryKey, key);
    Cvs_.ConnectionType =
        ConnTypeFromStr(Settings_.Read(key, "CONNECTION", StrFromConnType(Cvs_.ConnectionType)));
    Cvs_.Set_CVSIGNORE(Settings_.Read(key, "CVSIGNORE", Cvs_.CVSIGNORE()));
    Cvs_.Set_WorkingDirectory(Folder_);
}

void TProject::Save() {
    const std::string root = Cvs_.CVSROOT();
    try {
        Store();
    } catch (const Exception& error) {
        // The user can still work, and close the window.
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
    Cvs_.SetCVSROOT(root);
}

void TProject::Store() {
    const std::string key = Settings_.ProjectKey(Folder_);
    // The root holds the password; what is stored must not.
    if (!Cvs_.Password.empty())
        Cvs_.SetCVSROOT(CompileCVSROOT(Cvs_.ConnectionType, Cvs_.Server, Cvs_.UserName, {},
                                       Cvs_.SpecialPort, Cvs_.Path));
    Cvs_.SavePreferences(HostRegistryKey, key);
    Settings_.Write(key, "CONNECTION", StrFromConnType(Cvs_.ConnectionType));
    Settings_.Write(key, "CVSIGNORE", Cvs_.CVSIGNORE());
}

bool TProject::Running() const {
    return Cvs_.ExecuteClass->Thread != nullptr;
}

void TProject::Connect() {
    // The environment belongs to the whole process: the last project's is still in it.
    Cvs_.SetCVSROOT(Cvs_.CVSROOT());
    Cvs_.Set_CVS_RSH(Cvs_.CVS_RSH());
    Cvs_.Set_CVSIGNORE(Cvs_.CVSIGNORE());
}

void TProject::RepairRoot() {
    const std::string folder = RemoveSlashSep(Cvs_.WorkingDirectory());
    if (SameText(SlashSep(Cvs_.ProjectRoot(), Cvs_.Modulename()), folder))
        return;
    // Checked out under another name: commands that name the module run above its folder.
    const std::string module = Cvs_.Modulename();
    Cvs_.Set_ProjectRoot(ExtractFileDir(folder));
    Cvs_.Set_Modulename(module);
    if (SameText(RemoveSlashSep(Cvs_.WorkingDirectory()), folder))
        return;
    Cvs_.Set_WorkingDirectory(folder);
}

void TProject::Prepare(const std::vector<std::string>& selection) {
    Cvs_.ResetOptions();
    Cvs_.KeywordMode = Options.KeywordMode;
    Cvs_.UseTargetDir = Options.UseTargetDir;
    Cvs_.TargetDir = Options.TargetDir;
    Cvs_.RemoveFromRepository = Options.RemoveFromRepository;
    Cvs_.KeepCvsIgnore = Options.KeepCvsIgnore;
    Cvs_.LocalOnly = Options.LocalOnly;
    // The labels of one file are not those of another.
    Cvs_.LogListA.Clear();
    Cvs_.LogListB.Clear();
    Cvs_.Aborted = false;
    Connect();
    RepairRoot();
    Cvs_.FileItems.Clear();
    // Folders, too, and what is no longer there: most commands pass only files, and one without any
    // is about the whole project. To the client names are alike.
    for (const std::string& path : selection)
        Cvs_.FileItems.AddFile(path, Options.KeywordMode);
}

bool TProject::Operate(const std::function<bool(TCvsObject&)>& operation,
                       const std::vector<std::string>& selection) {
    if (Running())
        return false;
    Prepare(selection);
    const TTicking watching(CancelWatch_);
    const TFileItemsForCall cleared(Cvs_.FileItems);
    const TConnectionType type = Cvs_.ConnectionType;
    const std::string root = Cvs_.CVSROOT();
    bool done = false;
    try {
        done = operation(Cvs_);
    } catch (const EAbort&) {
        // The user did not want to go on.
    } catch (const Exception& error) {
        Window_.Tell(MaskPasswords(error.what()) + "\r\n");
    }
    // Dialogs hand over the type as soon as it is chosen, its root when they are accepted. The one
    // without the other would send the next command to another repository.
    if (!done && Cvs_.CVSROOT() == root)
        Cvs_.ConnectionType = type;
    Cvs_.FileItems.Clear();
    Reload();
    return done;
}

void TProject::WatchCancel() {
    // The progress form's button only leaves a mark.
    const auto& thread = Cvs_.ExecuteClass->Thread;
    if (thread && thread->CancelMark)
        Cvs_.Aborted = true;
}

void TProject::CancelWatchTick() {
    constexpr int Patience = 2;
    WatchCancel();
    if (!Running() || !Cvs_.Aborted) {
        TicksSinceCancel_ = 0;
        return;
    }
    // A client that waits for its server for ever writes nothing, and reading waits with it.
    if (++TicksSinceCancel_ == Patience && EndChildren(Cvs_.CvsExecutable))
        Window_.Tell("The command did not answer and was ended.\r\n");
}

void TProject::Reload() {
    Cvs_.IsVCSStoredFlag = Cvs_.GetIsVCSstored();
    // Placing and pulling leave the object at the folder they made.
    if (!SameText(RemoveSlashSep(Cvs_.WorkingDirectory()), Folder_))
        Cvs_.Set_WorkingDirectory(Folder_);
    Cvs_.Load_WorkDirTree();
}

// --- off-line ---------------------------------------------------------------------------------

void TProject::SetOnline(bool online) {
    if (online == Online())
        return;
    if (!online) {
        OfflineLog_.Begin();
        Cvs_.Set_ServerOnline(false);
        return;
    }
    OfflineLog_.Take();
    Cvs_.Set_ServerOnline(true);
    RunPending();
}

void TProject::RunPending() {
    Prepare({});
    const TTicking watching(CancelWatch_);
    const bool done = OfflineLog_.Run([this](const TKeptCommand& kept) {
        Cvs_.CommandLine = kept.Command;
        Cvs_.Execute(kept.Directory);
        return Cvs_.ExitCode == 0 ||
               !Window_.AskYesNo("The command\r\n" + kept.Command +
                                 "\r\nhas failed. Keep it for later, with all behind it?");
    });
    if (!done)
        Window_.Tell("Commands are still waiting for the server.\r\n");
    Reload();
}

}  // namespace host
