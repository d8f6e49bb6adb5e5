#include "hosting/Project.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "core/CvsExecute.h"
#include "core/Cvs_utils.h"
#include "core/Progress_frm.h"
#include "cvs/CommandBuilder.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"
#include "hosting/KeptCommand.h"
#include "hosting/PasswordMask.h"
#include "hosting/Programs.h"
#include "hosting/Ticking.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

namespace {

// Lists of labels come in pieces of a kilobyte; the default limit cuts them after fifty.
constexpr int LongestOutput = 16384;

/// A selection in parts that a command line takes, with room for what else is in it.
std::vector<std::vector<std::string>> PartsOf(const std::vector<std::string>& selection) {
    constexpr std::size_t Most = 24000, BesidesName = 3;  // bytes
    std::vector<std::vector<std::string>> parts(1);
    std::size_t size = 0;
    for (const std::string& path : selection) {
        size += path.size() + BesidesName;
        if (size > Most && !parts.back().empty()) {
            parts.emplace_back();
            size = path.size() + BesidesName;
        }
        parts.back().push_back(path);
    }
    return parts;
}

}  // namespace

TProject::TProject(TProjectHost& window, TSettings& settings, const std::string& folder)
    : Window_(window),
      Settings_(settings),
      Folder_(folder),
      OfflineLog_(folder, settings.ProjectFile("Waiting", folder)) {
    Cvs_.StrictQuoting = Cvs_.KeepIgnorePatterns = Cvs_.ReadAllEntries = true;
    Cvs_.OutputListLimit = LongestOutput;
    CancelWatch_.OnTimer = [this](TObject*) { CancelWatchTick(); };
    BindEvents();
    if (const std::string client = FindClient(Settings_); !client.empty())
        Cvs_.CvsExecutable = AsCommand(client);
    else
        Cvs_.CvsExecutable.clear();
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
    Cvs_.OnUpdate = Cvs_.OnDiff = save;
    Cvs_.OnCommit = [this, save](TCvsObject& cvs) {
        save(cvs);
        BeforeCommit();
    };
    Cvs_.OnRelease = [this, save](TCvsObject& cvs) {
        save(cvs);
        // The client wants the folder; one that was checked out under another name has a neighbour
        // called like its module.
        cvs.Set_ProjectRoot(ExtractFileDir(Folder_));
        cvs.Set_Modulename(ExtractFileName(Folder_));
    };
    Cvs_.OnCreateLabel = Cvs_.OnCreateBranch = save;
    // Dialogs compose the root with the password. The client asks for it when it wants it.
    // And they may have chosen another way to the server.
    const auto withoutPassword = [this](TCvsObject& cvs) {
        TakeRootFromDialog(cvs);
        if (!FindPrograms())
            Abort();
    };
    Cvs_.OnLogin = Cvs_.OnLogout = withoutPassword;
    Cvs_.OnPullProject = [this, withoutPassword](TCvsObject& cvs) {
        withoutPassword(cvs);
        // The client starts in the folder that the user named.
        MakeFolder(RemoveSlashSep(cvs.ProjectRoot()));
    };
    // The client refuses to delete a label with the option for branches.
    Cvs_.OnDeleteLabel = [](TCvsObject& cvs) { cvs.TagDeleteBranch = false; };
    Cvs_.OnPlaceProject = [this, save, withoutPassword](TCvsObject& cvs) {
        save(cvs);
        withoutPassword(cvs);
        BeforePlacing();
    };
}

void TProject::MakeFolder(const std::string& folder) {
    for (std::string above = folder; !above.empty() && !DirectoryExists(above);
         above = ExtractFileDir(above))
        MadeFolders_.push_back(above);
    ForceDirectories(folder);
}

void TProject::BeforePlacing() {
    // A name that also occurs earlier in the path parts it at the wrong place: another folder may
    // have come out.
    const std::string folder = RemoveSlashSep(Cvs_.WorkingDirectory());
    if (!SameText(folder, Folder_) &&
        !Window_.AskYesNo("The folder\r\n" + folder + "\r\nis about to be placed, not\r\n" +
                          Folder_ + "\r\nGo on?"))
        Abort();
    RepairRoot();
    // The client wants both tags, for which there is no dialog.
    if (Cvs_.VendorTag.empty())
        Cvs_.VendorTag = "VENDOR";
    if (Cvs_.ReleaseTag.empty())
        Cvs_.ReleaseTag = "START";
    if (!Window_.AskForTags(Cvs_.VendorTag, Cvs_.ReleaseTag))
        Abort();
    PlaceWhatIsTicked();
}

void TProject::MessageReceived(const std::string& text) {
    if (!Capturing_)
        if (const std::string shown = Pieces_.Next(text, KnownPassword()); !shown.empty()) {
            Summary_.Add(shown);
            Window_.Tell(shown);
        }
    const TStringList* const captured = Cvs_.OutputList;
    if (captured && captured->Count() == Cvs_.OutputListLimit + 1)
        Window_.Tell("The answer is too long: only its first part is used.\r\n");
    // The client has one question. What it says behind it is none.
    if (Cvs_.Operation == otRelease && text.find("re you sure") != std::string::npos)
        Cvs_.AnswerPrompts = false;
    if (Cvs_.Operation == otLogin && text.find("CVS password:") != std::string::npos)
        Cvs_.AnswerPrompts = false;
    if (Running() && !std::exchange(HasLooked_, true))
        Tree_.Look(Cvs_.CvsExecutable);
    // Reading goes on when this has been handled, unless it is not to.
    WatchCancel();
}

const std::string& TProject::KnownPassword() const {
    return Cvs_.Password.empty() ? Password_ : Cvs_.Password;
}

void TProject::ForgetPassword() {
    // Once it has logged in the client has it. Dialogs would show it, and put it into the
    // environment of whatever is started next.
    Cvs_.SetCVSROOT(RootWithoutPassword(Cvs_));
    if (!Cvs_.Password.empty())
        Password_ = std::exchange(Cvs_.Password, {});
}

void TProject::TellRest() {
    if (const std::string rest = Pieces_.Rest(KnownPassword()); !rest.empty()) {
        Summary_.Add(rest);
        Window_.Tell(rest);
    }
}

// --- trust ------------------------------------------------------------------------------------

void TProject::Examine() {
    Roots_ = {};
    Trusted_ = !Stored();
    if (Trusted_)
        return;
    Roots_ = ReadRoots(Folder_);
    Trusted_ = Settings_.Read(Settings_.ProjectKey(Folder_), "TRUSTED", "") == Roots_.Print();
    if (!Trusted_)
        Window_.Tell("The files in " + Folder_ + " belong to the repository " + Roots_.Root +
                     "\r\n");
    if (Roots_.FilesWithPassword.empty() ||
        !Window_.AskYesNo("The records of\r\n" + Folder_ +
                          "\r\nhold a password that everybody can read who can read the folder. "
                          "Take it out? The client then asks for it once, at Log in."))
        return;
    try {
        CutPasswords(Roots_);
    } catch (const EInOutError& error) {
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
}

bool TProject::MayRun() {
    if (Trusted_ || !Stored())
        return true;
    const std::string question = QuestionAbout(Folder_, Roots_);
    if (!question.empty() && !Window_.AskRisk(question))
        return false;
    Trust(Folder_);
    Trusted_ = true;
    return true;
}

void TProject::Trust(const std::string& folder) {
    try {
        Settings_.Write(Settings_.ProjectKey(folder), "TRUSTED", ReadRoots(folder).Print());
    } catch (const ERegistryError&) {
        // The user is asked again.
    }
}

bool TProject::FindPrograms() {
    if (Cvs_.CvsExecutable.empty()) {
        const std::string client = Window_.AskForClient();
        if (client.empty())
            return false;
        Cvs_.CvsExecutable = AsCommand(client);
    }
    if (Cvs_.ConnectionType != cnSSH)
        return true;
    // Left to the client it would also be looked for in the working copy.
    const std::string shell = FindRemoteShell(Cvs_.CVS_RSH());
    if (shell.empty()) {
        Window_.Tell(
            "There is no program to reach the server with: neither ssh nor rsh is in the "
            "PATH. Choose one in Repository > Options.\r\n");
        return false;
    }
    Cvs_.SetEnvVariable("CVS_RSH", shell);
    return true;
}

// --- state ------------------------------------------------------------------------------------

void TProject::Load() {
    const TProjectState state = TProjectState::Load(Settings_, Settings_.ProjectKey(Folder_));
    state.PutInto(Cvs_);
    if (state.Online) {
        // Before the folder is known: a log that lies there is none of ours.
        Cvs_.Set_ServerOnline(true);
        return;
    }
    try {
        OfflineLog_.Continue();
    } catch (const EInOutError& error) {
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
}

void TProject::Save() {
    try {
        TProjectState::Of(Cvs_).Store(Settings_, Settings_.ProjectKey(Folder_));
    } catch (const Exception& error) {
        // The user can still work, and close the window.
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
}

bool TProject::Running() const {
    return Cvs_.ExecuteClass->Thread != nullptr;
}

void TProject::RepairRoot() {
    const std::string folder = RemoveSlashSep(Cvs_.WorkingDirectory());
    if (SameText(SlashSep(Cvs_.ProjectRoot(), Cvs_.Modulename()), folder) &&
        Cvs_.WorkingDirectory() == folder)
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
    Tree_.Forget();
    HasLooked_ = false;
    TicksSinceCancel_ = 0;
    Options.PutInto(Cvs_, selection);
    TProcessState::PutInto(Cvs_);
    RepairRoot();
}

void TProject::ReturnToFolder() {
    // Placing, pulling and making a repository leave the object at what they made.
    Cvs_.Set_WorkingDirectory(Folder_);
    if (!Cvs_.IsVCSStoredFlag)
        return;
    // The connection of a working copy is what its records say. What they leave open must not come
    // from somewhere else.
    Cvs_.Server.clear();
    Cvs_.UserName.clear();
    Cvs_.SpecialPort.clear();
    Cvs_.Path.clear();
    Cvs_.SetCVSROOT({});
    Cvs_.Set_WorkingDirectory(Folder_);
}

void TProject::Reload() {
    ReturnToFolder();
    Examine();
    Cvs_.Load_WorkDirTree();
}

void TProject::Refresh() {
    const bool wasStored = Stored();
    ReturnToFolder();
    if (Stored() != wasStored)
        Examine();
    const TMessageEvent told = std::exchange(Cvs_.OnMessage, nullptr);
    Cvs_.Load_WorkDirTree();
    Cvs_.OnMessage = told;
}

// --- operations -------------------------------------------------------------------------------

bool TProject::Operate(const std::function<bool(TCvsObject&)>& operation,
                       const std::vector<std::string>& selection) {
    if (Running())
        return false;
    BeginCommand();
    Succeeded_ = false;
    if (!MayRun())
        return false;
    const bool wasStored = Stored();
    const std::vector<std::string> first = PartsOf(selection).front();
    Prepare(first);
    if (!FindPrograms())
        return false;
    Cvs_.ModelCurrent = false;
    KeepOffline();
    const TTicking watching(CancelWatch_);
    const TFlagForCall deleting(Cvs_.DeleteLocalFiles, false);
    const TConnectionType type = Cvs_.ConnectionType;
    const std::string root = Cvs_.CVSROOT();
    bool done = false;
    try {
        done = RunParts(operation, selection);
    } catch (const EAbort&) {
        // The user did not want to go on.
    } catch (const Exception& error) {
        Window_.Tell(MaskPasswords(error.what(), KnownPassword()) + "\r\n");
    }
    TellRest();
    // What was made for a command that then failed, unless something is in it.
    if (!done)
        for (const std::string& folder : MadeFolders_)
            ::RemoveDirectoryA(folder.c_str());
    // Placing has changed the variable.
    Cvs_.Set_CVSIGNORE(Cvs_.CVSIGNORE());
    // Dialogs hand over the type as soon as it is chosen, its root when they are accepted. The one
    // without the other would send the next command to another repository.
    if (!done && Cvs_.CVSROOT() == root)
        Cvs_.ConnectionType = type;
    std::string folder = RemoveSlashSep(Cvs_.WorkingDirectory());
    std::ranges::replace(folder, '/', '\\');
    const bool isHere = SameText(folder, Folder_);
    ForgetPassword();
    const bool modelIsOfFolder = Cvs_.ModelCurrent && isHere;
    // What the user has placed or pulled is known.
    if (done && Cvs_.GetIsVCSstored() && (Cvs_.WizardDataAccepted || (isHere && !wasStored)))
        Trust(folder);
    ReturnToFolder();
    if (Stored() != wasStored)
        Examine();
    KeepOffline();
    if (!modelIsOfFolder)
        Cvs_.Load_WorkDirTree();
    Succeeded_ = done;
    return done;
}

bool TProject::RunParts(const std::function<bool(TCvsObject&)>& operation,
                        const std::vector<std::string>& selection) {
    FurtherPart_ = false;
    for (const std::vector<std::string>& part : PartsOf(selection)) {
        // The first one is prepared: the program may have looked at it.
        if (FurtherPart_)
            Prepare(part);
        const TFileItemsForCall cleared(Cvs_.FileItems);
        if (!operation(Cvs_) || Stopped_)
            return false;
        FurtherPart_ = true;
    }
    return true;
}

void TProject::BeginCommand() {
    Summary_ = {};
    Cvs_.CommandLine.clear();
    MadeFolders_.clear();
    Stopped_ = Cvs_.Aborted = false;
    Succeeded_ = true;
    StartedAt_ = ::GetTickCount64();
}

void TProject::Stop() {
    if (!Running())
        return;
    Stopped_ = Cvs_.Aborted = true;
}

std::string TProject::RunningText() const {
    if (!Running())
        return {};
    const ULONGLONG seconds = (::GetTickCount64() - StartedAt_) / 1000;
    return Trim(MaskPasswords(Cvs_.CommandLine, KnownPassword())) + " - " +
           std::to_string(seconds) + " s";
}

std::string TProject::Outcome() const {
    std::string said = Summary_.Text();
    if (Stopped_ || Cvs_.Aborted)
        return said.empty() ? "Stopped" : "Stopped: " + said;
    if (!said.empty())
        return said;
    if (Cvs_.CommandLine.empty())
        return Succeeded_ ? "Done" : "Nothing was done";
    // To the client a difference is no success.
    if (Cvs_.Operation == otDiff || Cvs_.Operation == otRdiff)
        return Succeeded_ ? "There is no difference" : "There are differences";
    return Succeeded_ ? "Done" : "Not done";
}

bool TProject::Move(const std::string& from, const std::string& to) {
    if (FileExists(to) || DirectoryExists(to)) {
        Window_.Tell("There is already " + to + "\r\n");
        return false;
    }
    return Operate([&](TCvsObject& cvs) {
        if (IsKeptAsBinary(from))
            return MoveBinary(from, to);
        const bool isKept = !cvs.ServerOnline() && cvs.ConnectionType != cnLocal;
        const bool done = cvs.MoveFile(from, to, true);
        // A command that is kept has no success, so the package stops behind the first.
        if (!done && isKept && FileExists(to) && !FileExists(from))
            cvs.AddFile(to);
        return done;
    });
}

void TProject::WatchCancel() {
    // The progress form's button only leaves a mark.
    const auto& thread = Cvs_.ExecuteClass->Thread;
    if (Stopped_ || (thread && thread->CancelMark))
        Cvs_.Aborted = true;
}

void TProject::CancelWatchTick() {
    constexpr int Patience = 2;
    Window_.ShowTold();
    WatchCancel();
    if (!Running())
        return;
    Tree_.Look(Cvs_.CvsExecutable);
    if (!Cvs_.Aborted) {
        TicksSinceCancel_ = 0;
        return;
    }
    // A client that waits for its server for ever writes nothing, and reading waits with it. What
    // it has started may hold the pipe when it is gone itself.
    if (++TicksSinceCancel_ >= Patience && Tree_.End(Cvs_.CvsExecutable) &&
        TicksSinceCancel_ == Patience)
        Window_.Tell("The command did not answer and was ended.\r\n");
}

}  // namespace hosting
