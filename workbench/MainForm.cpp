#include "workbench/MainForm.h"

#include <algorithm>
#include <utility>

#include "core/ComForCall.h"
#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/image_list.h"
#include "hosting/Programs.h"
#include "workbench/BinaryForm.h"
#include "workbench/FormState.h"
#include "workbench/InputForm.h"
#include "workbench/Pictures.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using namespace tandrel;

namespace {

constexpr const char* Title = "Tandrel";
enum TStatusPart { CountsPart, OutcomePart };

}  // namespace

TMainForm::TMainForm(TSettings& settings, const TPackageRegistry& packages)
    : TForm(Title, TFormBorder::Main),
      Settings_(settings),
      Packages_(packages),
      State_(TWindowState::Load(settings)),
      Tools_(*this, settings),
      WholeOutput_(settings.DataFolder("Output")),
      Recovery_(settings.DataFolder("Recovered")) {
    Application().SetMainWindow(Handle());
    AddControls();
    BindTools();
    BuildMenu();
    BuildToolBar();
    BuildPopups();
    WatchTimer_.OnTimer = [this](TObject*) { WatchTick(); };
    ShowProject();
    TMainForm::Tell(Recovery_.Notice());
}

TMainForm::~TMainForm() {
    // The menu goes before the window, the projects before what they tell to.
    Rows_->OnSelect = nullptr;
    Folders_->OnSelect = nullptr;
    Views_.clear();
    Projects_.clear();
    Current_ = nullptr;
    FreeComponents();
}

void TMainForm::AddControls() {
    const auto orElse = [](int stored, int usual) { return stored > 0 ? stored : usual; };
    SetMinClientSize(Scale(500), Scale(300));
    SetFittingSize(*this, orElse(State_.Width, 900), orElse(State_.Height, 640));
    const SIZE size = ClientSize();

    Pictures_.emplace(Scale(16));
    AddPictures(*Pictures_, true);
    DisabledPictures_.emplace(Scale(16));
    AddPictures(*DisabledPictures_, false);
    ToolBar_ = &Make<TToolBar>("ToolBar", *this, *Pictures_);
    ToolBar_->SetDisabledImages(*DisabledPictures_);
    ToolBar_->SetAccessibleName("Tool bar");
    ToolBar_->SetAlign(TAlign::Top);
    auto& top = Make<TPanel>("Top", *this);
    auto& label = Make<TLabel>("", top, "Project");
    ProjectList_ = &Make<TComboBox>("Projects", top);
    top.SetBounds(0, 0, size.cx, Scale(30));
    label.SetBounds(Scale(6), Scale(8), label.Width(), label.Height());
    ProjectList_->SetBounds(Scale(54), Scale(4), size.cx - Scale(60), Scale(21));
    ProjectList_->SetAnchors(akLeft | akTop | akRight);
    ProjectList_->OnChange = [this](TObject*) {
        TurnTo(static_cast<std::size_t>(ProjectList_->ItemIndex()));
    };
    top.SetAlign(TAlign::Top);

    Status_ = &Make<TStatusBar>("Status", *this, std::vector{200, 0});
    Status_->SetAlign(TAlign::Bottom);
    Status_->OnPartClick = [this](int) {
        if (Current_ && !Busy_)
            Reveal(Current_->FileOf(Current_->Summary().First()));
    };
    Files_ = &Make<TPanel>("Files", *this);
    Files_->SetBounds(0, 0, size.cx, Scale(orElse(State_.FilesHeight, 360)));
    Files_->SetAlign(TAlign::Top);
    Make<TSplitter>("Splitter1", *this, *Files_, TAlign::Top, 80);
    AddFilePane(*Files_);
    AddOutput();
}

void TMainForm::AddFilePane(TControl& files) {
    AddFilter(files);
    Tree_ = &Make<TTreeView>("Tree", files);
    Tree_->SetBounds(0, 0, Scale(State_.TreeWidth > 0 ? State_.TreeWidth : 220), 0);
    Tree_->SetAlign(TAlign::Left);
    Make<TSplitter>("Splitter2", files, *Tree_, TAlign::Left, 80);
    auto& right = Make<TPanel>("Right", files);
    List_ = &Make<TListView>("List", right, TListViewStyle{.MultiSelect = true, .Sortable = true});
    List_->SetAlign(TAlign::Client);
    right.SetAlign(TAlign::Client);
    if (const HIMAGELIST icons = ShellSmallImageList()) {
        Tree_->SetImages(icons);
        List_->SetImages(icons);
    }
    Tree_->SetAccessibleName("Folders");
    List_->SetAccessibleName("Files");
    Folders_.emplace(*Tree_);
    Rows_.emplace(*List_);
    List_->SetColumnWidths(State_.ColumnWidths);
    Rows_->SetView(State_.View);
    Folders_->OnSelect = [this] { ShowRows(); };
    Rows_->OnSelect = [this] {
        ShowCounts();
        EnableMenu();
    };
    List_->OnDblClick = [this](TObject*) { OpenSelection(); };
}

void TMainForm::AddFilter(TControl& parent) {
    auto& bar = Make<TPanel>("FilterBar", parent);
    auto& label = Make<TLabel>("", bar, "Filter");
    Filter_ = &Make<TEdit>("Filter", bar);
    bar.SetBounds(0, 0, Scale(600), Scale(28));
    label.SetBounds(Scale(4), Scale(6), label.Width(), label.Height());
    int left = Scale(8) + label.Width();
    Filter_->SetBounds(left, Scale(3), Scale(120), Scale(21));
    left += Scale(128);
    const auto add = [&](const char* name, const char* caption, bool checked) {
        auto& box = Make<TCheckBox>(name, bar, caption);
        box.SetMnemonicText(caption);
        const int width = box.TextSize(caption).cx + Scale(22);
        box.SetBounds(left, Scale(5), width, Scale(17));
        box.SetChecked(checked);
        box.OnClick = [this](TObject*) { FilterChanged(); };
        left += width + Scale(8);
        return &box;
    };
    ChangedOnly_ = add("ChangedOnly", "Changed only", State_.View.ChangedOnly);
    HideIgnored_ = add("HideIgnored", "Hide ignored", State_.View.HideIgnored);
    WithFolders_ = add("WithFolders", "With folders below", State_.WithFolders);
    Filter_->OnChange = [this](TObject*) { FilterChanged(); };
    bar.SetAlign(TAlign::Top);
}

void TMainForm::AddOutput() {
    Output_ = &Make<TRichEdit>("Output", *this);
    Output_->SetReadOnly(true);
    Output_->SetAccessibleName("Output");
    Output_->SetAlign(TAlign::Client);
    Pane_.emplace(*Output_);
    Pane_->OnFile = [this](const std::string& name) {
        if (Current_)
            Reveal(Current_->FileOf(name));
    };
}

void TMainForm::FilterChanged() {
    TFileView view = Rows_->View();
    view.ChangedOnly = ChangedOnly_->Checked();
    view.HideIgnored = HideIgnored_->Checked();
    view.Filter = Trim(Filter_->Text());
    Rows_->SetView(view);
    if (std::exchange(State_.WithFolders, WithFolders_->Checked()) != State_.WithFolders)
        ShowRows();
    ShowCounts();
}

// --- projects ---------------------------------------------------------------------------------

void TMainForm::OpenProject(const std::string& folder) {
    // What runs has its surroundings from this process.
    if (Busy_)
        return;
    const std::string path = RemoveSlashSep(folder);
    if (!DirectoryExists(path)) {
        Tell("There is no folder " + path + "\r\n");
        Settings_.Forget(path);
        return ShowRecent();
    }
    bool isNew = false;
    auto at = std::find_if(Projects_.begin(), Projects_.end(),
                           [&](const auto& open) { return SameText(open->Folder(), path); });
    if (at == Projects_.end()) {
        Projects_.push_back(std::make_unique<TProject>(*this, Settings_, path));
        at = Projects_.end() - 1;
        isNew = true;
    }
    Settings_.Remember(path);
    TurnTo(static_cast<std::size_t>(at - Projects_.begin()));
    if (isNew)
        return TellWhatWaits(*Current_);
    // Whatever was done to it meanwhile.
    if (Busy_)
        return;
    Current_->Reload();
    ShowFiles();
}

void TMainForm::TellWhatWaits(TProject& project) {
    project.SettleInterrupted();
    const std::vector<TKeptCommand> waiting = project.Waiting();
    if (!project.Online())
        Tell("The server counts as off-line. Additions and removals are kept for later.\r\n");
    if (waiting.empty())
        return;
    constexpr std::size_t MostShown = 10;
    std::string commands;
    for (std::size_t i = 0; i < std::min(waiting.size(), MostShown); ++i)
        commands += "    " + waiting[i].Description() + "\r\n";
    if (waiting.size() > MostShown)
        commands += "    and " + std::to_string(waiting.size() - MostShown) + " more\r\n";
    Tell("For the server of " + project.Folder() + " there wait:\r\n" + commands);
    if (!AskYesNo("For the server there wait:\r\n" + commands +
                  (project.Online() ? "Run them now?" : "Go on-line and run them now?")))
        return;
    if (project.Online())
        RunWaiting();
    else
        ToggleOnline();
}

bool TMainForm::TurnTo(const std::string& folder) {
    const auto at = std::ranges::find_if(
        Projects_, [&](const auto& open) { return SameText(open->Folder(), folder); });
    if (at == Projects_.end())
        return false;
    if (at->get() != Current_)
        TurnTo(static_cast<std::size_t>(at - Projects_.begin()));
    return true;
}

std::vector<TFileRow> TMainForm::FilesIn(const std::string& folder,
                                         const std::vector<std::string>& paths) {
    const auto at = std::ranges::find_if(
        Projects_, [&](const auto& open) { return SameText(open->Folder(), folder); });
    if (Busy_ || at == Projects_.end())
        return {};
    TProject& project = **at;
    project.Refresh();
    if (&project == Current_)
        ShowFiles();
    return RowsIn(paths.empty() ? std::vector{project.Folder()} : paths, project.Folder(),
                  project.Cvs().WorkDirTree);
}

TProjectViews& TMainForm::Views() {
    const std::string folder = Current_->Folder();
    const auto at = std::ranges::find(Views_, folder, &TProjectViews::Folder);
    if (at != Views_.end())
        return **at;
    return *Views_.emplace_back(std::make_unique<TProjectViews>(*this, folder));
}

void TMainForm::TurnTo(std::size_t index) {
    Current_ = index < Projects_.size() ? Projects_[index].get() : nullptr;
    ShowProject();
}

void TMainForm::CloseProject() {
    if (Busy_ || !Current_ || !SaveDocuments())
        return;
    Current_->Save();
    std::erase_if(Views_, [&](const auto& views) { return views->Folder() == Current_->Folder(); });
    std::erase_if(Projects_, [&](const auto& open) { return open.get() == Current_; });
    TurnTo(0);
}

void TMainForm::ShowProject() {
    std::vector<std::string> folders;
    int at = -1;
    for (const auto& project : Projects_) {
        if (project.get() == Current_)
            at = static_cast<int>(folders.size());
        folders.push_back(project->Folder());
    }
    ProjectList_->SetItems(folders);
    ProjectList_->SetItemIndex(at);
    ProjectList_->SetEnabled(!folders.empty());
    SetText(Current_ ? ExtractFileName(Current_->Folder()) + " - " + Title : Title);
    ShowRecent();
    ShowFiles();
    Watch();
}

void TMainForm::ShowFiles() {
    if (!Current_) {
        Folders_->Clear();
        return ShowRows();
    }
    TFolderRow top = FoldersOf(Current_->Folder(), Current_->Cvs().WorkDirTree);
    const TComForCall com;
    top.ImageIndex = GetShellImage(Current_->Folder(), false, false);
    if (!Folders_->Show(std::move(top)))
        ShowRows();
}

void TMainForm::ShowRows() {
    const std::string folder = Folders_->Folder();
    const TWorkDirTree* const items =
        Current_ ? ItemsOf(Current_->Folder(), Current_->Cvs().WorkDirTree, folder) : nullptr;
    if (!items)
        Rows_->Show("", false, {});
    else if (State_.WithFolders)
        Rows_->Show(folder, true, RowsBelow(folder, *items));
    else
        Rows_->Show(folder, false, RowsOf(folder, *items));
    ShowCounts();
    EnableMenu();
}

void TMainForm::ShowCounts() {
    const std::size_t all = Rows_->Count(), shown = Rows_->Shown();
    const std::size_t selected = List_->SelectedIndices().size();
    std::string text =
        shown == all ? std::to_string(all) : std::to_string(shown) + " of " + std::to_string(all);
    text += all == 1 ? " entry" : " entries";
    if (selected > 1)
        text += ", " + std::to_string(selected) + " selected";
    Status_->SetPartText(CountsPart, Current_ ? text : "");
}

void TMainForm::ShowStatus(const std::string& text) {
    Status_->SetPartText(OutcomePart, text);
}

std::vector<std::string> TMainForm::Selection() const {
    std::vector<std::string> paths;
    for (const TFileRow* row : Rows_->Selection())
        paths.push_back(row->Path());
    if (const std::string folder = Folders_->Folder();
        paths.empty() && Current_ && !SameText(folder, Current_->Folder()))
        paths.push_back(folder);
    return paths;
}

void TMainForm::Reveal(const std::string& path) {
    if (path.empty() || !Current_)
        return;
    // What the view hides is to be seen now.
    Filter_->SetText("");
    ChangedOnly_->SetChecked(false);
    if (!State_.WithFolders)
        Folders_->Select(ExtractFileDir(path));
    FilterChanged();
    if (!Rows_->Select(path) && Folders_->Select(ExtractFileDir(path)))
        Rows_->Select(path);
    List_->SetFocus();
}

// --- documents --------------------------------------------------------------------------------

void TMainForm::OpenDocument(const std::string& path) {
    Documents_.Open(path);
}

void TMainForm::OpenText(const std::string& caption, const std::string& text,
                         const std::string& folder) {
    Documents_.OpenNew(caption, text, folder);
}

void TMainForm::ReloadDocuments() {
    Tell(Documents_.Reload());
}

void TMainForm::FileSaved(const std::string& path) {
    // A command that is about to run reads everything anew when it is over.
    if (Busy_ || AskedToSave_ || !Current_ ||
        !SameText(path.substr(0, Current_->Folder().size()), Current_->Folder()))
        return;
    Current_->Refresh();
    ShowFiles();
}

void TMainForm::Watch() {
    Noticed_ = {};
    Watch_.reset();
    if (Current_ && !Busy_)
        Watch_.emplace(Current_->Folder());
    WatchTimer_.SetEnabled(Watch_.has_value());
}

void TMainForm::WatchTick() {
    if (Busy_ || !Visible() || !Watch_ || !Current_ || !DirectoryExists(Current_->Folder()))
        return;
    const TFolderChanges changes = Watch_->Look();
    Noticed_.Roots |= changes.Roots;
    if (std::exchange(Noticed_.Any, changes.Any) && !changes.Any) {
        if (std::exchange(Noticed_.Roots, false))
            Current_->Reload();
        else
            Current_->Refresh();
        ShowFiles();
        ReloadDocuments();
    }
}

bool TMainForm::SaveDocuments() {
    if (Busy_ && std::exchange(AskedToSave_, true))
        return true;
    const bool before = std::exchange(AskedToSave_, true);
    const bool saved = Documents_.Save();
    AskedToSave_ = Busy_ || before;
    return saved;
}

// --- what projects ask ------------------------------------------------------------------------

void TMainForm::Tell(const std::string& text) {
    if (text.empty())
        return;
    WholeOutput_.Add(text);
    Pane_->Add(text);
    if (Busy_)
        LetStop();
    else
        Pane_->Flush();
}

namespace {

BOOL CALLBACK IsNoDialog(HWND window, LPARAM main) {
    return window == reinterpret_cast<HWND>(main) || !::IsWindowVisible(window) ||
           !::IsWindowEnabled(window) ||
           (::GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) != WS_CAPTION;
}

}  // namespace

void TMainForm::LetStop() {
    // What is behind a dialog stays so.
    if (!Busy_ || Enabled() || !Visible() || !Current_ || !Current_->Running() ||
        !::EnumThreadWindows(::GetCurrentThreadId(), IsNoDialog,
                             reinterpret_cast<LPARAM>(Handle())))
        return;
    ::EnableWindow(Handle(), TRUE);
    if (!::GetActiveWindow())
        ::SetActiveWindow(Handle());
    if (!::GetFocus())
        List_->SetFocus();
}

void TMainForm::ShowTold() {
    Pane_->Flush();
    LetStop();
    if (Current_ && Current_->Running())
        ShowStatus(Current_->RunningText());
}

bool TMainForm::AskRisk(const std::string& question) {
    return DialogFunctions().AskRisk(Title, question);
}

std::string TMainForm::AskForClient() {
    std::vector<std::string> looked;
    std::string client = FindClient(Settings_, &looked);
    if (!client.empty())
        return client;
    std::string where;
    for (const std::string& folder : looked)
        where += (where.empty() ? "" : "; ") + folder;
    Tell("There is no CVS client: cvs.exe was looked for in " + where + "\r\n");
    if (!AskYesNo("There is no CVS client (cvs.exe) in the folders of the PATH. Choose one?") ||
        !DialogFunctions().OpenFile("CVS client|cvs*.exe|Programs|*.exe", client))
        return {};
    Settings_.SetClient(client);
    return client;
}

bool TMainForm::AskYesNo(const std::string& question) {
    return DialogFunctions().AskYesNo(Title, question);
}

TAnswer TMainForm::AskYesNoCancel(const std::string& question) {
    return DialogFunctions().AskYesNoCancel(Title, question);
}

bool TMainForm::ChooseBinary(std::vector<TBinaryChoice>& files) {
    return AskForBinary(Current_->Folder(), files);
}

bool TMainForm::AskForTags(std::string& vendor, std::string& release) {
    std::vector<TInput> inputs = {{TInput::Text, "Vendor tag", vendor, {}},
                                  {TInput::Text, "Release tag", release, {}}};
    if (!AskFor("Tags of the project", inputs))
        return false;
    vendor = inputs[0].Value;
    release = inputs[1].Value;
    return true;
}

void TMainForm::CloseQuery() {
    // A running command ends first: what it does must not be torn.
    if (Busy_) {
        ClosePending_ = true;
        return Tell("The window closes when the command has ended.\r\n");
    }
    if (!Documents_.Close())
        return;
    EndSession();
    Recovery_.Forget();
    Application().Terminate();
}

bool TMainForm::QueryEndSession() {
    const bool unsaved = !Documents_.Unsaved().empty();
    ::ShutdownBlockReasonDestroy(Handle());
    if (!Busy_ && !unsaved)
        return true;
    // The user sees the reason, and can go back or go on without us.
    ::ShutdownBlockReasonCreate(
        Handle(), Busy_ ? L"A command is running." : L"There are documents that are not saved.");
    return false;
}

void TMainForm::EndSession() {
    for (const auto& project : Projects_)
        project->Save();
    const auto units = [this](int pixels) { return ::MulDiv(pixels, 96, Scale(96)); };
    if (!::IsZoomed(Handle()) && !::IsIconic(Handle())) {
        State_.Width = units(ClientSize().cx);
        State_.Height = units(ClientSize().cy);
        State_.FilesHeight = units(Files_->Height());
        State_.TreeWidth = units(Tree_->Width());
    }
    State_.ColumnWidths = List_->ColumnWidths();
    State_.View = Rows_->View();
    State_.Store(Settings_);
    Recovery_.Write(Documents_.Unsaved());
}

void TMainForm::CloseIfPending() {
    // Once: the user may then choose to stay.
    if (std::exchange(ClosePending_, false))
        CloseQuery();
}

void TMainForm::Shown() {
    List_->SetFocus();
}

}  // namespace workbench
