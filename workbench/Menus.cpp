// The menu: one table with all that can be done, and when.

#include <algorithm>

#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"
#include "framework/ui/application.h"
#include "framework/ui/dialogs.h"
#include "hosting/PasswordMask.h"
#include "hosting/Programs.h"
#include "workbench/InputForm.h"
#include "workbench/MainForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using namespace tandrel;

namespace {

/// What has to be there for a command.
enum TNeeds : unsigned {
    Nothing = 0,
    NeedsProject = 1,
    NeedsStored = 2 | NeedsProject,     ///< The folder is a working copy.
    NeedsUnstored = 4 | NeedsProject,   ///< It is none.
    NeedsSelection = 8 | NeedsProject,  ///< A file or folder below the project is chosen.
    NeedsServer = 16 | NeedsProject,    ///< The repository is one of a password server.
    NeedsStoredSelection = NeedsStored | NeedsSelection,
    /// A file is chosen. Commands name files only: for a folder they would work on everything.
    NeedsStoredFile = 32 | NeedsStoredSelection
};

bool Has(unsigned needs, unsigned what) {
    return (needs & what) == what;
}

}  // namespace

struct TMainForm::TMenuCommand {
    const char* Menu;
    const char* Caption;  ///< "-" for a separator.
    unsigned Needs = Nothing;
    TShortcut Shortcut = {};
    std::function<void(TMainForm&)> Action = {};
};

namespace {

using TOperation = std::function<bool(TCvsObject&)>;

/// What the user typed for a file: without a drive or server it is meant from the folder on.
std::string FullName(const std::string& typed, const std::string& folder) {
    const bool isFull = typed.starts_with('\\') || typed.find(':') != std::string::npos;
    return typed.empty() || isFull ? typed : SlashSep(folder, typed);
}

/// Adds what an ignore list holds, which would be lost when it is written anew; without its own
/// name and `except`, which come anyway.
void AddIgnored(TFileItems& items, const std::string& list, const std::string& except) {
    if (!FileExists(list))
        return;
    auto file = TTextFile::Reset(list);
    for (std::string line; file.ReadLine(line);) {
        const std::string name = Trim(line);
        if (!name.empty() && !SameText(name, IgnoreFileName) && name != except)
            items.AddExt(name, true, Km_none);
    }
}

}  // namespace

const std::vector<TMainForm::TMenuCommand>& TMainForm::Commands() {
    const auto project = [](TOperation operation) {
        return [operation](TMainForm& form) { form.Operate(operation, false); };
    };
    const auto file = [](TOperation operation) {
        return [operation](TMainForm& form) { form.Operate(operation, true); };
    };
    using C = TCvsObject;
    using F = TMainForm;
    const TShortcut none;
    static const std::vector<TMenuCommand> commands = {
        {"&File", "&Open folder...", Nothing, {'O', true}, &F::AskForFolder},
        {"&File", "&Close project", NeedsProject, none, &F::CloseProject},
        {"&File", "-"},
        {"&File", "&New document", Nothing, {'N', true}, &F::NewDocument},
        {"&File", "Open &file...", Nothing, none, &F::AskForFile},
        {"&File", "&Edit file", NeedsSelection, {'E', true}, &F::OpenSelection},
        {"&File", "&Refresh", NeedsProject, {VK_F5}, &F::Refresh},
        {"&File", "Show &whole output", Nothing, none, &F::ShowWholeOutput},
        {"&File", "-"},
        {"&File", "E&xit", Nothing, none, [](F& form) { form.CloseQuery(); }},

        {"&Repository", "&Create...", NeedsProject, none, project(&C::CreateLocalRepository)},
        {"&Repository", "&Place project...", NeedsUnstored, none, project(&C::PlaceProject)},
        {"&Repository", "P&ull project...", NeedsProject, none, project(&C::PullProject)},
        {"&Repository", "&Import...", NeedsProject, none, &F::Import},
        {"&Repository", "Check &out", NeedsProject, none, &F::CheckOut},
        {"&Repository", "&Export...", NeedsProject, none, &F::Export},
        {"&Repository", "&Take out of version control", NeedsStored, none, &F::TakeOut},
        {"&Repository", "-"},
        {"&Repository", "&Log in...", NeedsServer, none,
         project([](C& cvs) { return cvs.Login(true); })},
        {"&Repository", "Log ou&t...", NeedsServer, none,
         project([](C& cvs) { return cvs.Logout(true); })},
        {"&Repository", "&Server is on-line", NeedsProject, none, &F::ToggleOnline},
        {"&Repository", "-"},
        {"&Repository", "Optio&ns...", NeedsProject, none, &F::AskForOptions},
        {"&Repository", "P&references...", NeedsProject, none, &F::AskForPreferences},

        {"&Working copy",
         "&Status browser...",
         NeedsProject,
         {'B', true},
         project(&C::StatusBrowser)},
        {"&Working copy", "&Update...", NeedsStored, {'U', true}, project(&C::UpdateSpecial)},
        {"&Working copy", "Update &now", NeedsStored, {'U', true, true}, project(&C::Update)},
        {"&Working copy", "&Commit...", NeedsStored, {'K', true}, project([](C& cvs) {
             return cvs.Commit(true);
         })},
        {"&Working copy", "&Release...", NeedsStored, none, project(&C::Release)},
        {"&Working copy", "-"},
        {"&Working copy", "Create &label...", NeedsStored, none,
         project([](C& cvs) { return cvs.Create_Tag(true); })},
        {"&Working copy", "&Delete label...", NeedsStored, none,
         project([](C& cvs) { return cvs.Del_Tag(true); })},
        {"&Working copy", "Create &branch...", NeedsStored, none,
         project([](C& cvs) { return cvs.Create_Rtag(true); })},
        {"&Working copy", "Delete branc&h...", NeedsStored, none,
         project([](C& cvs) { return cvs.Del_Rtag(true); })},
        {"&Working copy", "-"},
        {"&Working copy", "Lo&g", NeedsStored, none, project(&C::Log)},
        {"&Working copy", "Log of the &module", NeedsStored, none, project(&C::RLog)},
        {"&Working copy", "C&hanges", NeedsStored, none, project(&C::Diff)},
        {"&Working copy", "Changes of the m&odule...", NeedsStored, none, &F::CompareModule},
        {"&Working copy", "Histor&y", NeedsStored, none, project(&C::History)},

        {"&Selection", "&Add", NeedsStoredSelection, none, file(&C::Add)},
        {"&Selection", "&Remove", NeedsStoredFile, none, file(&C::Remove)},
        {"&Selection", "Remove and &delete", NeedsStoredFile, none, file([](C& cvs) {
             cvs.DeleteLocalFiles = true;
             return cvs.Remove();
         })},
        {"&Selection", "&Move...", NeedsStoredFile, none, &F::AskForNewName},
        {"&Selection", "&Ignore", NeedsSelection, none, &F::IgnoreSelection},
        {"&Selection", "-"},
        {"&Selection", "&Update", NeedsStoredFile, none, file(&C::Update)},
        {"&Selection", "&Commit...", NeedsStoredFile, none,
         file([](C& cvs) { return cvs.Commit(true); })},
        {"&Selection", "C&ompare...", NeedsStoredFile, {'D', true}, &F::CompareSelection},
        {"&Selection", "&Status", NeedsStoredFile, none, file(&C::Status)},
        {"&Selection", "&Log", NeedsStoredFile, none, file(&C::Log)},
        {"&Selection", "A&nnotate", NeedsStoredFile, none, file(&C::Annotate)},
        {"&Selection", "Set &keyword mode", NeedsStoredFile, none, file(&C::Admin)},
        {"&Selection", "-"},
        {"&Selection", "&Edit", NeedsStoredFile, none, file(&C::Edit)},
        {"&Selection", "Unedi&t", NeedsStoredFile, none, file(&C::Unedit)},
        {"&Selection", "Edi&tors", NeedsStoredFile, none, file(&C::Editors)},
        {"&Selection", "&Watch", NeedsStoredFile, none, file(&C::watch)},
        {"&Selection", "Wat&chers", NeedsStoredFile, none, file(&C::Watchers)},

        {"&Help", "&CVS", NeedsProject, none, project([](C& cvs) {
             cvs.HelpCommand(cvs.Operation);
             return true;
         })},
        {"&Help", "&About", Nothing, none, &F::ShowAbout},
    };
    return commands;
}

void TMainForm::BuildMenu() {
    Menu_ = &Make<TMainMenu>("Menu", *this);
    const char* title = "";
    TMenuItem* menu = nullptr;
    for (const TMenuCommand& command : Commands()) {
        if (std::string_view(title) != command.Menu) {
            if (std::string_view(command.Menu) == "&Help")
                ToolsMenu_ = &Menu_->Add("&Tools");
            title = command.Menu;
            menu = &Menu_->Add(title);
        }
        TMenuItem& item = menu->Add(command.Caption, command.Shortcut);
        if (command.Action)
            item.OnClick = [this, &command](TObject*) { Run(command); };
        Items_.push_back(&item);
        if (std::string_view(command.Caption) == "&Close project")
            RecentMenu_ = &menu->Add("&Recent projects");
    }
    ShowTools();
}

void TMainForm::ShowRecent() {
    RecentMenu_->Clear();
    for (const std::string& folder : Settings_.RecentProjects())
        RecentMenu_->Add(folder).OnClick = [this, folder](TObject*) { OpenProject(folder); };
    RecentMenu_->SetEnabled(!RecentMenu_->Items().empty());
}

bool TMainForm::CanRun(const TMenuCommand& command) const {
    const unsigned needs = command.Needs;
    if (Has(needs, NeedsProject) && !Current_)
        return false;
    if (Has(needs, NeedsStored) && !Current_->Stored())
        return false;
    if (Has(needs, NeedsUnstored) && Current_->Stored())
        return false;
    if (Has(needs, NeedsServer) && Current_->Cvs().ConnectionType != cnPServer)
        return false;
    const auto selected = Selected();
    if (Has(needs, NeedsStoredFile) && (!selected || selected->IsDirectory))
        return false;
    return !Has(needs, NeedsSelection) || selected;
}

void TMainForm::EnableMenu() {
    for (std::size_t i = 0; i < Items_.size(); ++i) {
        const TMenuCommand& command = Commands()[i];
        Items_[i]->SetEnabled(!command.Action || CanRun(command));
        if (std::string_view(command.Caption) == "&Server is on-line")
            Items_[i]->SetChecked(Current_ && Current_->Online());
    }
}

void TMainForm::Run(const TMenuCommand& command) {
    if (!CanRun(command))
        return;
    command.Action(*this);
    EnableMenu();
}

void TMainForm::Busily(const std::function<void(TProject& project)>& action) {
    AskedToSave_ = false;
    // The client reads and writes what the editors show.
    if (Busy_ || !Current_ || !SaveDocuments())
        return;
    AskedToSave_ = true;
    TProject& project = *Current_;
    ClearViews();
    WholeOutput_.Begin();
    {
        const TBusy busy(Busy_);
        try {
            action(project);
        } catch (const Exception& error) {
            // The views have to come back whatever happens.
            Tell(MaskPasswords(error.what()) + "\r\n");
        }
    }
    Pane_->Flush();
    WholeOutput_.End();
    project.Save();
    ReloadDocuments();
    ShowFiles();
    CloseIfPending();
}

void TMainForm::Operate(const std::function<bool(TCvsObject&)>& operation, bool onSelection) {
    const std::vector<std::string> selection =
        onSelection ? Selection() : std::vector<std::string>{};
    Busily([&](TProject& project) { project.Operate(operation, selection); });
}

void TMainForm::RunWaiting() {
    Busily([](TProject& project) { project.RunWaiting(); });
}

void TMainForm::Import() {
    std::string vendor = "VENDOR", release = "START";
    if (!AskForTags(vendor, release))
        return;
    Operate(
        [&](TCvsObject& cvs) {
            cvs.VendorTag = vendor;
            cvs.ReleaseTag = release;
            return cvs.Import(true);
        },
        false);
}

void TMainForm::CheckOut() {
    const std::string folder = Current_->Folder();
    Operate(
        [&](TCvsObject& cvs) {
            // One that was checked out under another name stays there, and its neighbour of the
            // module's name is left alone.
            const std::string module = cvs.Modulename(), name = ExtractFileName(folder);
            if (cvs.IsVCSStoredFlag && !cvs.UseTargetDir && !SameText(module, name)) {
                cvs.UseTargetDir = true;
                cvs.TargetDir = name;
                cvs.Set_ProjectRoot(ExtractFileDir(folder));
                cvs.Set_Modulename(module);
            }
            return cvs.CheckOut(true);
        },
        false);
}

void TMainForm::Export() {
    // The client exports a revision that is named, never just what there is.
    std::vector<TInput> inputs = {{TInput::Text, "Label or branch", "HEAD", {}}};
    if (!AskFor("Export", inputs) || inputs[0].Value.empty())
        return;
    Operate(
        [&](TCvsObject& cvs) {
            cvs.StikyType = stTag;
            cvs.StikyTag = inputs[0].Value;
            return cvs.Export_cmd(true);
        },
        false);
}

void TMainForm::CompareModule() {
    std::vector<TInput> inputs = {{TInput::Text, "From label or branch", "", {}},
                                  {TInput::Text, "To label or branch", "HEAD", {}}};
    if (!AskFor("Changes of the module", inputs))
        return;
    if (inputs[0].Value.empty())
        return Tell("There is nothing to compare with: name a label or branch.\r\n");
    Operate(
        [&](TCvsObject& cvs) {
            cvs.DiffSpec.Kind = inputs[1].Value.empty() ? dctRevision : dctTwoRevision;
            cvs.DiffSpec.Rev1 = inputs[0].Value;
            cvs.DiffSpec.Rev2 = inputs[1].Value;
            return cvs.Rdiff();
        },
        false);
}

void TMainForm::AskForPreferences() {
    if (!Current_->Stored())
        return Operate(
            [this](TCvsObject& cvs) {
                const std::string name = cvs.Modulename();
                const bool done = cvs.Preferences();
                if (cvs.Modulename() != name)
                    Tell("A project is called like its folder, " + name +
                         ". To place it under another name, rename the folder.\r\n");
                return done;
            },
            false);
    // The records of a working copy say where it belongs; to offer that here would change nothing.
    TCvsObject& cvs = Current_->Cvs();
    std::vector<TInput> inputs = {
        {TInput::Note, "", "The records of this working copy say where it belongs:", {}},
        {TInput::Note, "", "    repository  " + MaskPasswords(cvs.CVSROOT()), {}},
        {TInput::Note, "", "    project  " + cvs.Modulename(), {}},
        {TInput::Text, "Patterns to ignore", cvs.CVSIGNORE(), {}},
        {TInput::Flag, "Leave out empty folders", cvs.PruneEmptyDirs ? "1" : "", {}}};
    if (!AskFor("Preferences", inputs))
        return;
    cvs.Set_CVSIGNORE(inputs[3].Value);
    cvs.PruneEmptyDirs = inputs[4].Value == "1";
    Current_->Save();
}

void TMainForm::AskForFolder() {
    std::string folder;
    if (DialogFunctions().SelectDirectory("Open a folder as a project", folder))
        OpenProject(folder);
}

void TMainForm::AskForFile() {
    std::string file;
    if (DialogFunctions().OpenFile("All files|*.*", file))
        OpenDocument(file);
}

void TMainForm::Refresh() {
    ClearViews();
    Current_->Reload();
    ShowFiles();
}

void TMainForm::NewDocument() {
    ForgetClosedDocuments();
    Documents_.push_back(&Application().CreateForm<TDocumentForm>("New document", ""));
    Documents_.back()->Show();
}

void TMainForm::OpenSelection() {
    for (const std::string& path : Selection())
        if (FileExists(path))
            OpenDocument(path);
}

void TMainForm::CompareSelection() {
    const std::vector<std::string> selection = Selection();
    if (selection.empty() || !FileExists(selection.front()))
        return;
    Operate([path = selection.front()](TCvsObject& cvs) { return cvs.DiffFile(true, path); },
            false);
}

void TMainForm::AskForNewName() {
    const std::vector<std::string> selection = Selection();
    if (selection.empty() || !FileExists(selection.front()))
        return;
    const std::string from = selection.front();
    std::vector<TInput> inputs = {{TInput::Text, "New name", from, {}}};
    if (!AskFor("Move " + ExtractFileName(from), inputs))
        return;
    const std::string to = FullName(inputs[0].Value, ExtractFileDir(from));
    Busily([&](TProject& project) { project.Move(from, to); });
    // Saving must not bring the old one back.
    if (TDocumentForm* const document = FindDocument(from);
        document && FileExists(to) && !FileExists(from))
        document->MovedTo(to);
}

void TMainForm::IgnoreSelection() {
    const std::vector<std::string> selection = Selection();
    if (selection.empty())
        return;
    Operate(
        [path = selection.front()](TCvsObject& cvs) {
            // A list is about the names in its own folder. The project returns to its own
            // afterwards.
            cvs.Set_Modulename("");
            cvs.Set_ProjectRoot(ExtractFileDir(path));
            AddIgnored(cvs.FileItems, SlashSep(cvs.WorkingDirectory(), IgnoreFileName),
                       ExtractFileName(path));
            cvs.FileItems.AddIgnore(path);
            cvs.ExploreIgnore();
            return true;
        },
        false);
}

void TMainForm::ToggleOnline() {
    Busily([](TProject& project) { project.SetOnline(!project.Online()); });
}

void TMainForm::AskForOptions() {
    TOperationState& options = Current_->Options;
    TCvsObject& cvs = Current_->Cvs();
    std::vector<std::string> modes(TKeywModeDescr.begin(), TKeywModeDescr.end());
    std::vector<TInput> inputs = {
        {TInput::Choice, "Keywords in files", modes[options.KeywordMode], modes},
        {TInput::Flag,
         "Check out and export into a folder of another name",
         options.UseTargetDir ? "1" : "",
         {}},
        {TInput::Text, "Name of that folder", options.TargetDir, {}},
        {TInput::Flag, "Only this folder, not those below it", options.LocalOnly ? "1" : "", {}},
        {TInput::Flag,
         "Taking out deletes the module from the repository",
         options.RemoveFromRepository ? "1" : "",
         {}},
        {TInput::Flag, "Taking out keeps the ignore lists", options.KeepCvsIgnore ? "1" : "", {}},
        {TInput::Text, "Remote shell (for ssh)", cvs.CVS_RSH(), {}}};
    if (!AskFor("Options", inputs))
        return;
    const auto mode = std::find(modes.begin(), modes.end(), inputs[0].Value) - modes.begin();
    options.KeywordMode = static_cast<TKeywordMode>(mode);
    options.UseTargetDir = inputs[1].Value == "1";
    options.TargetDir = inputs[2].Value;
    options.LocalOnly = inputs[3].Value == "1";
    options.RemoveFromRepository = inputs[4].Value == "1";
    options.KeepCvsIgnore = inputs[5].Value == "1";
    cvs.Set_CVS_RSH(inputs[6].Value);
    Current_->Save();
}

void TMainForm::TakeOut() {
    TCvsObject& cvs = Current_->Cvs();
    bool& alsoThere = Current_->Options.RemoveFromRepository;
    if (alsoThere && cvs.ConnectionType == cnLocal) {
        // The records say which folder that is, and they may come from anybody.
        const std::string folder = ModuleFolder(cvs.CVSROOT(), cvs.Modulename());
        if (folder.empty())
            Tell("Nothing is deleted from the repository: " +
                 SlashSep(cvs.CVSROOT(), cvs.Modulename()) +
                 " is not the folder of a project with nothing else in it.\r\n");
        else if (!AskRisk("The folder\r\n" + folder +
                          "\r\nin the repository will be deleted, with the history of all its "
                          "files. Delete it?"))
            return;
        alsoThere = !folder.empty();
    }
    if (AskRisk("The client's records will be deleted from\r\n" + Current_->Folder() +
                "\r\nIt will be an ordinary folder then. Go on?"))
        Operate(&TCvsObject::RemoveProjectFrom, false);
    // For this time only.
    alsoThere = false;
}

void TMainForm::ShowWholeOutput() {
    if (FileExists(WholeOutput_.Path()))
        ::WinExec((PreviewViewer() + WholeOutput_.Path()).c_str(), SW_SHOWNORMAL);
}

void TMainForm::ShowAbout() {
    std::string text;
    for (const TPackageInfo& package : Packages_.Packages())
        text += package.Name + " " + package.Version + "\r\n";
    const std::string client = FindClient(Settings_);
    Tell(text + "CVS client " + (client.empty() ? "not found" : client) + "\r\n");
}

}  // namespace workbench
