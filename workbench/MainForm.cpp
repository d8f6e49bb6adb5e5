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
#include "framework/ui/labels.h"
#include "hosting/Programs.h"
#include "workbench/InputForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using namespace tandrel;

namespace {

constexpr const char* Title = "Tandrel";

TWorkDirItem* ItemOf(TObject* data) {
    return dynamic_cast<TWorkDirItem*>(data);
}

std::optional<COLORREF> ColourOf(TObject* data) {
    if (dynamic_cast<const TMissingFile*>(data))
        return RGB(160, 96, 0);
    const TWorkDirItem& item = *ItemOf(data);
    if (!item.Included)
        return RGB(128, 128, 128);
    if (!item.InRepository)
        return RGB(0, 128, 0);
    return item.Changed && !item.IsDirectory ? std::optional(RGB(192, 0, 0)) : std::nullopt;
}

void AddMissingRow(TListRows& rows, TMissingFile& file) {
    rows.Add({.Caption = file.Name,
              .SubItems = {file.Removed ? "Removed" : "Missing", file.Revision, file.TimeStamp},
              .ImageIndex = -1,
              .Data = &file});
}

}  // namespace

TMainForm::TMainForm(TSettings& settings, const TPackageRegistry& packages)
    : TForm(Title, TFormBorder::Main),
      Settings_(settings),
      Packages_(packages),
      Tools_(*this, settings),
      WholeOutput_(settings.DataFolder("Output")),
      Recovery_(settings.DataFolder("Recovered")) {
    Application().SetMainWindow(Handle());
    AddControls();
    BindTools();
    BuildMenu();
    ShowProject();
    Tell(Recovery_.Notice());
}

TMainForm::~TMainForm() {
    for (TDocumentForm* document : Documents_)
        document->Free();
    // What shows the model goes before it, the menu before the window, the projects before what
    // they tell to.
    ClearViews();
    Projects_.clear();
    FreeComponents();
}

void TMainForm::AddControls() {
    auto& top = Make<TPanel>("Top", *this);
    auto& label = Make<TLabel>("", top, "Project");
    ProjectList_ = &Make<TComboBox>("Projects", top);
    SetClientSize(Scale(760), Scale(560));
    SetMinClientSize(Scale(420), Scale(300));
    top.SetBounds(0, 0, Scale(760), Scale(30));
    label.SetBounds(Scale(6), Scale(8), label.Width(), label.Height());
    ProjectList_->SetBounds(Scale(54), Scale(4), Scale(700), Scale(21));
    ProjectList_->SetAnchors(akLeft | akTop | akRight);
    ProjectList_->OnChange = [this](TObject*) {
        TurnTo(static_cast<std::size_t>(ProjectList_->ItemIndex()));
    };
    top.SetAlign(TAlign::Top);

    auto& files = Make<TPanel>("Files", *this);
    files.SetBounds(0, 0, 0, Scale(330));
    files.SetAlign(TAlign::Top);
    Make<TSplitter>("Splitter1", *this, files, TAlign::Top, 80);
    Output_ = &Make<TRichEdit>("Output", *this);
    Output_->SetReadOnly(true);
    Pane_.emplace(*Output_);
    Output_->SetAlign(TAlign::Client);

    Tree_ = &Make<TTreeView>("Tree", files);
    Tree_->SetBounds(0, 0, Scale(220), 0);
    Tree_->SetAlign(TAlign::Left);
    Make<TSplitter>("Splitter2", files, *Tree_, TAlign::Left, 80);
    List_ = &Make<TListView>("List", files);
    List_->SetAlign(TAlign::Client);
    for (const auto& [caption, width] :
         {std::pair{"Filename", 150}, {"Status", 140}, {"Revision", 70}, {"TimeStamp", 150}})
        List_->AddColumn(caption, width);
    if (const HIMAGELIST icons = ShellSmallImageList()) {
        Tree_->SetImages(icons);
        List_->SetImages(icons);
    }
    Tree_->OnChange = [this](TObject*) { ShowList(); };
    Tree_->OnExpanding = [this](TTreeViewNode& node) { return Expand(node); };
    Tree_->OnDeletion = [](TTreeViewNode& node) {
        TWorkDirItem* const item = ItemOf(node.Data());
        if (item && item->TreeNode == &node)
            item->TreeNode = nullptr;
    };
    List_->OnRowColor = [](const TListRow& row) { return ColourOf(row.Data); };
    List_->OnSelectItem = [this](TObject*) { EnableMenu(); };
    List_->OnDblClick = [this](TObject*) { OpenSelection(); };
}

// --- projects ---------------------------------------------------------------------------------

void TMainForm::OpenProject(const std::string& folder) {
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
        TellWhatWaits(*Current_);
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

void TMainForm::TurnTo(std::size_t index) {
    // The files shown are those of the project before: they go first.
    ClearViews();
    Current_ = index < Projects_.size() ? Projects_[index].get() : nullptr;
    ShowProject();
}

void TMainForm::CloseProject() {
    if (!Current_ || Current_->Running() || !SaveDocuments())
        return;
    Current_->Save();
    ClearViews();
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
}

void TMainForm::ClearList() {
    List_->Rows().Clear();
    Missing_.clear();
}

void TMainForm::ClearViews() {
    // Clearing the tree moves its selection, which would fill the list again.
    Showing_ = false;
    ClearList();
    Tree_->Clear();
}

void TMainForm::ShowFiles() {
    Showing_ = true;
    if (Current_) {
        const TTreeUpdate update(*Tree_);
        Tree_->Clear();
        TTreeViewNode& top = Tree_->Root().AddChild(ExtractFileName(Current_->Folder()));
        const TComForCall com;
        const int folder = GetShellImage(Current_->Folder(), false, false);
        top.SetImages(folder, folder, 0);
        for (TWorkDirItem& item : Current_->Cvs().WorkDirTree) {
            if (!item.IsDirectory)
                continue;
            TTreeViewNode& node = top.AddChild(item.Name);
            node.SetData(&item);
            node.SetImages(item.ImageIndex, item.ImageIndex, 0);
            node.SetHasChildren(true);
        }
    }
    if (Current_)
        Tree_->Root().Children().front()->SetExpanded(true);
    ShowList();
}

bool TMainForm::Expand(TTreeViewNode& node) {
    TWorkDirItem* const item = ItemOf(node.Data());
    if (!item)
        return true;
    const TTreeUpdate update(*Tree_);
    bool allow = true;
    item->OnExpanding(node, allow);
    return allow;
}

void TMainForm::AddRows(const std::string& folder, TWorkDirTree& items) {
    for (TWorkDirItem& entry : items)
        AddLwItems(List_->Rows(), entry);
    Missing_ = FindMissingFiles(folder, items);
    for (const auto& file : Missing_)
        AddMissingRow(List_->Rows(), *file);
}

void TMainForm::ShowList() {
    TTreeViewNode* const node = Tree_->Selected();
    TWorkDirItem* const item = node ? ItemOf(node->Data()) : nullptr;
    {
        const TListUpdate update(List_->Rows());
        ClearList();
        if (!Showing_)
            return;
        if (item && !item->IsDirectory)
            AddLwItems(List_->Rows(), *item);
        else if (item)
            AddRows(SlashSep(item->Directory, item->Name), *item->Children);
        else if (Current_)
            AddRows(Current_->Folder(), Current_->Cvs().WorkDirTree);
    }
    EnableMenu();
}

std::optional<TMainForm::TSelected> TMainForm::Selected() const {
    const TListRow* const row = List_->Selected();
    if (row)
        if (const auto* file = dynamic_cast<const TMissingFile*>(row->Data))
            return TSelected{SlashSep(file->Directory, file->Name), false};
    const TTreeViewNode* const node = Tree_->Selected();
    const TWorkDirItem* const item = row    ? ItemOf(row->Data)
                                     : node ? ItemOf(node->Data())
                                            : nullptr;
    if (!item)
        return {};
    return TSelected{SlashSep(item->Directory, item->Name), item->IsDirectory};
}

std::vector<std::string> TMainForm::Selection() const {
    const auto selected = Selected();
    return selected ? std::vector{selected->Path} : std::vector<std::string>{};
}

// --- documents --------------------------------------------------------------------------------

void TMainForm::ForgetClosedDocuments() {
    std::erase_if(Documents_, [](TDocumentForm* document) {
        if (document->Visible())
            return false;
        document->Free();
        return true;
    });
}

TDocumentForm* TMainForm::FindDocument(const std::string& path) const {
    for (TDocumentForm* document : Documents_)
        if (SameText(document->Path(), path))
            return document;
    return nullptr;
}

void TMainForm::OpenDocument(const std::string& path) {
    ForgetClosedDocuments();
    TDocumentForm* document = FindDocument(path);
    if (!document) {
        document = &Application().CreateForm<TDocumentForm>(path);
        Documents_.push_back(document);
    }
    document->Reload();
    document->Show();
    ::SetForegroundWindow(document->Handle());
}

void TMainForm::ReloadDocuments() {
    ForgetClosedDocuments();
    for (TDocumentForm* document : Documents_) {
        try {
            document->Reload();
        } catch (const EInOutError& error) {
            // Another program holds the file.
            Tell(std::string(error.what()) + "\r\n");
        }
    }
}

bool TMainForm::SaveDocuments() {
    if (Busy_ && std::exchange(AskedToSave_, true))
        return true;
    ForgetClosedDocuments();
    for (TDocumentForm* document : Documents_)
        if (document->Modified() && AskYesNo("Save the changes to " + document->Text() + "?") &&
            !document->Save())
            return false;
    return true;
}

// --- what projects ask ------------------------------------------------------------------------

void TMainForm::Tell(const std::string& text) {
    WholeOutput_.Add(text);
    Pane_->Add(text);
    if (!Busy_)
        Pane_->Flush();
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
    ForgetClosedDocuments();
    for (TDocumentForm* document : Documents_) {
        document->Close();
        if (document->Visible())
            return;
    }
    for (const auto& project : Projects_)
        project->Save();
    Application().Terminate();
}

bool TMainForm::QueryEndSession() {
    const bool unsaved = std::any_of(Documents_.begin(), Documents_.end(),
                                     [](const auto* document) { return document->Modified(); });
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
    Recovery_.Write(UnsavedTexts());
}

std::vector<TUnsavedText> TMainForm::UnsavedTexts() const {
    std::vector<TUnsavedText> texts;
    for (const TDocumentForm* document : Documents_)
        if (document->Modified())
            texts.push_back(document->Unsaved());
    return texts;
}

void TMainForm::CloseIfPending() {
    // Once: the user may then choose to stay.
    if (std::exchange(ClosePending_, false))
        CloseQuery();
}

}  // namespace workbench
