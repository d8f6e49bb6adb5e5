// The menu: one table with all that can be done, and when.

#include <algorithm>
#include <string_view>

#include "framework/ui/dialogs.h"
#include "hosting/Programs.h"
#include "workbench/MainForm.h"
#include "workbench/Pictures.h"

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
    NeedsSelection = 8 | NeedsProject,  ///< Files or folders below the project are chosen.
    NeedsFile = 16 | NeedsSelection,    ///< One file is.
    NeedsServer = 32 | NeedsProject,    ///< The repository is one of a password server.
    NeedsDistance = 64 | NeedsProject,  ///< It is not on this machine, or counts as off-line.
    NeedsCommand = 128,                 ///< A command runs. All others need that none does.
    NeedsStoredSelection = NeedsStored | NeedsSelection,
    NeedsStoredFile = NeedsStored | NeedsFile
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
    int Picture = -1;           ///< On the tool bar; -1 when it is not there.
    const wchar_t* Hint = L"";  ///< There.
};

const std::vector<TMainForm::TMenuCommand>& TMainForm::Commands() {
    using TOperation = std::function<bool(TCvsObject&)>;
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
        {"&File", "&Refresh", NeedsProject, {VK_F5}, &F::Refresh, RefreshPicture, L"Refresh (F5)"},
        {"&File", "Show &whole output", Nothing, none, &F::ShowWholeOutput},
        {"&File", "-"},
        {"&File",
         "&Stop the command",
         NeedsCommand,
         {VK_ESCAPE},
         &F::StopCommand,
         StopPicture,
         L"Stop the command (Esc)"},
        {"&File", "-"},
        {"&File", "E&xit", Nothing, none, [](F& form) { form.CloseQuery(); }},

        {"&Repository", "&Create...", Nothing, none, &F::CreateRepository},
        {"&Repository", "&Place project...", NeedsUnstored, none, project(&C::PlaceProject)},
        {"&Repository", "P&ull project...", Nothing, none, &F::PullProject},
        {"&Repository", "Pull a &module...", NeedsProject, none, &F::PullModule},
        {"&Repository", "&Import...", NeedsProject, none, &F::Import},
        {"&Repository", "Check &out", NeedsProject, none, &F::CheckOut},
        {"&Repository", "&Export...", NeedsProject, none, &F::Export},
        {"&Repository", "&Take out of version control", NeedsStored, none, &F::TakeOut},
        {"&Repository", "-"},
        {"&Repository", "&Log in...", NeedsServer, none,
         project([](C& cvs) { return cvs.Login(true); })},
        {"&Repository", "Lo&g out...", NeedsServer, none,
         project([](C& cvs) { return cvs.Logout(true); })},
        {"&Repository", "&Server is on-line", NeedsDistance, none, &F::ToggleOnline},
        {"&Repository", "-"},
        {"&Repository", "Optio&ns...", NeedsProject, none, &F::AskForOptions},
        {"&Repository", "P&references...", NeedsProject, none, &F::AskForPreferences},

        {"&Working copy",
         "&Status browser...",
         NeedsProject,
         {'B', true},
         project(&C::StatusBrowser)},
        {"&Working copy", "&Update...", NeedsStored, {'U', true}, project(&C::UpdateSpecial)},
        {"&Working copy",
         "Update &now",
         NeedsStored,
         {'U', true, true},
         &F::UpdateProject,
         UpdatePicture,
         L"Update the project now (Ctrl+Shift+U)"},
        {"&Working copy",
         "&Commit...",
         NeedsStored,
         {'K', true},
         [](F& form) { form.CommitFiles({}); }},
        {"&Working copy", "&Release...", NeedsStored, none, project(&C::Release)},
        {"&Working copy", "-"},
        {"&Working copy", "Lab&els and branches...", NeedsStored, none,
         [](F& form) { form.Views().ShowLabels(); }},
        {"&Working copy", "Create &label...", NeedsStored, none,
         project([](C& cvs) { return cvs.Create_Tag(true); })},
        {"&Working copy", "&Delete label...", NeedsStored, none,
         project([](C& cvs) { return cvs.Del_Tag(true); })},
        {"&Working copy", "Create &branch...", NeedsStored, none,
         project([](C& cvs) { return cvs.Create_Rtag(true); })},
        {"&Working copy", "Delete branc&h...", NeedsStored, none,
         project([](C& cvs) { return cvs.Del_Rtag(true); })},
        {"&Working copy", "-"},
        {"&Working copy",
         "Commi&ts of the project",
         NeedsStored,
         {'L', true, true},
         [](F& form) { form.Views().ShowHistory({}); }},
        {"&Working copy", "Lo&g", NeedsStored, none, project(&C::Log)},
        {"&Working copy", "Log of the &module", NeedsStored, none, project(&C::RLog)},
        {"&Working copy", "Ch&anges", NeedsStored, none, project(&C::Diff)},
        {"&Working copy", "Changes of the m&odule...", NeedsStored, none, &F::CompareModule},
        {"&Working copy", "Histor&y", NeedsStored, none, project(&C::History)},

        {"&Selection", "O&pen", NeedsSelection, {VK_RETURN}, &F::OpenSelection},
        {"&Selection",
         "S&elect all",
         NeedsProject,
         {'A', true},
         [](F& form) { form.List_->SelectAll(); }},
        {"&Selection", "-"},
        {"&Selection",
         "&Add",
         NeedsStoredSelection,
         {VK_INSERT},
         &F::AddSelection,
         AddPicture,
         L"Add to version control (Ins)"},
        {"&Selection", "&Remove", NeedsStoredSelection, none,
         [](F& form) { form.RemoveSelection(false); }},
        {"&Selection",
         "Remove and &delete",
         NeedsStoredSelection,
         {VK_DELETE},
         [](F& form) { form.RemoveSelection(true); },
         RemovePicture,
         L"Remove and delete (Del)"},
        {"&Selection", "&Move...", NeedsStoredFile, {VK_F2}, &F::AskForNewName},
        {"&Selection", "&Ignore", NeedsSelection, none, &F::IgnoreSelection},
        {"&Selection", "-"},
        {"&Selection", "&Update", NeedsStoredSelection, none, &F::UpdateSelection},
        {"&Selection", "Re&vert...", NeedsStoredSelection, none, &F::RevertSelection},
        {"&Selection", "&Commit...", NeedsStoredSelection, none,
         [](F& form) { form.CommitFiles(form.Selection()); }, CommitPicture,
         L"Commit what is chosen, or the project"},
        {"&Selection",
         "C&ompare",
         NeedsStored,
         {'D', true},
         &F::CompareSelection,
         ComparePicture,
         L"Compare with the repository (Ctrl+D)"},
        {"&Selection", "Compare &with...", NeedsStored, {'D', true, true}, &F::CompareWith},
        {"&Selection", "Compare as te&xt...", NeedsStoredSelection, none, &F::CompareAsText},
        {"&Selection", "&Get a revision...", NeedsStoredFile, {'G', true}, &F::GetRevision},
        {"&Selection", "&Status", NeedsStoredSelection, none, file(&C::Status)},
        {"&Selection",
         "&History",
         NeedsStored,
         {'L', true},
         [](F& form) { form.Views().ShowHistory(form.Selection()); },
         LogPicture,
         L"History (Ctrl+L)"},
        {"&Selection", "&Log", NeedsStoredSelection, none, file(&C::Log)},
        {"&Selection", "A&nnotate", NeedsStoredSelection, {'T', true}, &F::AnnotateSelection},
        {"&Selection", "Set &keyword mode", NeedsStoredSelection, none, file(&C::Admin)},

        {"E&diting", "&Edit", NeedsStoredSelection, none, file(&C::Edit)},
        {"E&diting", "&Unedit", NeedsStoredSelection, none, file(&C::Unedit)},
        {"E&diting", "Edito&rs", NeedsStoredSelection, none, file(&C::Editors)},
        {"E&diting", "&Watch", NeedsStoredSelection, none, file(&C::watch)},
        {"E&diting", "Watc&hers", NeedsStoredSelection, none, file(&C::Watchers)},

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
            RecentMenu_ = &menu->Add("Recent pro&jects");
    }
    ShowTools();
}

void TMainForm::ShowRecent() {
    RecentMenu_->Clear();
    for (const std::string& folder : Settings_.RecentProjects())
        RecentMenu_->Add(folder).OnClick = [this, folder](TObject*) { OpenProject(folder); };
    RecentMenu_->SetEnabled(!RecentMenu_->Items().empty());
}

void TMainForm::BuildToolBar() {
    // The order in which they are needed on a usual day.
    for (const int picture : {UpdatePicture, CommitPicture, AddPicture, RemovePicture,
                              ComparePicture, LogPicture, RefreshPicture, StopPicture}) {
        const auto command = std::ranges::find(Commands(), picture, &TMenuCommand::Picture);
        auto& button = Make<TToolButton>("", *ToolBar_, picture, command->Hint);
        button.OnClick = [this, &what = *command](TObject*) {
            // Where nothing is chosen all of it is meant.
            if (what.Picture == CommitPicture && Selection().empty())
                CommitFiles({});
            else
                Run(what);
        };
        Buttons_.push_back({&button, &*command});
    }
}

void TMainForm::BuildPopups() {
    const auto fill = [this](TPopupMenu& popup, const char* menu,
                             std::initializer_list<std::string_view> without) {
        for (std::size_t i = 0; i < Commands().size(); ++i) {
            const TMenuCommand& command = Commands()[i];
            if (std::string_view(command.Menu) != menu ||
                std::ranges::find(without, command.Caption) != without.end())
                continue;
            TMenuItem& item = popup.Add(command.Caption, command.Shortcut);
            if (command.Action)
                item.OnClick = [this, &command](TObject*) { Run(command); };
            PopupItems_.push_back({&item, &command});
        }
    };
    auto& files = Make<TPopupMenu>("FilesMenu");
    fill(files, "&Selection", {});
    List_->SetPopupMenu(&files);
    auto& folders = Make<TPopupMenu>("FoldersMenu");
    fill(folders, "&Selection", {"S&elect all", "&Move..."});
    Tree_->SetPopupMenu(&folders);
    auto& output = Make<TPopupMenu>("OutputMenu");
    const auto add = [&](const char* caption, std::function<void()> action) {
        output.Add(caption).OnClick = [action](TObject*) { action(); };
    };
    add("&Copy", [this] { Output_->Copy(); });
    add("Select &all", [this] { Output_->SelectAll(); });
    add("&Find...", [this] { AskForText(); });
    add("Find &next", [this] { FindNext(); });
    output.AddSeparator();
    add("C&lear", [this] { Pane_->Clear(); });
    add("Show &whole output", [this] { ShowWholeOutput(); });
    Output_->SetPopupMenu(&output);
}

bool TMainForm::CanRun(const TMenuCommand& command) const {
    const unsigned needs = command.Needs;
    if (Has(needs, NeedsCommand) != Busy_)
        return false;
    if (Has(needs, NeedsProject) && !Current_)
        return false;
    if (Has(needs, NeedsStored) && !Current_->Stored())
        return false;
    if (Has(needs, NeedsUnstored) && Current_->Stored())
        return false;
    if (Has(needs, NeedsServer) && Current_->Cvs().ConnectionType != cnPServer)
        return false;
    if (Has(needs, NeedsDistance) && Current_->Online() &&
        Current_->Cvs().ConnectionType == cnLocal)
        return false;
    if (Has(needs, NeedsFile)) {
        const auto rows = Rows_->Selection();
        return rows.size() == 1 && !rows.front()->IsDirectory;
    }
    return !Has(needs, NeedsSelection) || !Selection().empty();
}

void TMainForm::EnableMenu() {
    for (std::size_t i = 0; i < Items_.size(); ++i) {
        const TMenuCommand& command = Commands()[i];
        Items_[i]->SetEnabled(!command.Action || CanRun(command));
        if (std::string_view(command.Caption) == "&Server is on-line")
            Items_[i]->SetChecked(Current_ && Current_->Online());
    }
    for (const auto& [item, command] : PopupItems_)
        item->SetEnabled(!command->Action || CanRun(*command));
    for (const auto& [button, command] : Buttons_)
        button->SetEnabled(command->Picture == CommitPicture
                               ? !Busy_ && Current_ && Current_->Stored()
                               : CanRun(*command));
}

void TMainForm::Run(const TMenuCommand& command) {
    if (!CanRun(command))
        return;
    command.Action(*this);
    EnableMenu();
}

}  // namespace workbench
