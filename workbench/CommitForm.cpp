#include "workbench/CommitForm.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/splitter.h"
#include "hosting/RecentMessages.h"
#include "workbench/CommitMessage.h"
#include "workbench/FormState.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using tandrel::SlashSep;

namespace {

constexpr const char* StateKey = "Commit";
constexpr const char* DraftName = "DRAFT";
constexpr const char* Caption = "Commit";

bool IsForCommit(TFileState state) {
    using enum TFileState;
    return state == Changed || state == Added || state == Removed || state == Conflict ||
           state == Missing;
}

/// What nobody has to think about is ticked from the beginning.
bool IsTickedAtFirst(TFileState state) {
    return state != TFileState::Conflict && state != TFileState::Missing;
}

std::string NameIn(const std::string& folder, const std::string& path) {
    return path.substr(std::min(path.size(), folder.size() + 1));
}

}  // namespace

TCommitForm::TCommitForm(TViewHost& host, std::vector<std::string> paths)
    : TForm(std::string(Caption) + " - " + ExtractFileName(host.Folder()), TFormBorder::Main),
      Host_(host),
      Paths_(std::move(paths)) {
    SetMinClientSize(Scale(440), Scale(300));
    RestoreSize(*this, Host_.Settings(), StateKey, {660, 480});
    AddMenu();
    Status_ = &Make<TStatusBar>("Status", *this, std::vector{110, 250, 0});
    Status_->SetAlign(TAlign::Bottom);
    AddFiles();
    AddMessage();
    AddButtons();
    DraftTimer_.OnTimer = [this](TObject*) {
        DraftTimer_.SetEnabled(false);
        StoreDraft();
    };
    ReadTemplate();
    const std::string draft = Host_.Settings().Read(DraftKey(), DraftName, "");
    Message_->SetText(draft.empty() ? Template_ : draft);
    ShowEarlier();
    ShowPlace();
}

TCommitForm::~TCommitForm() {
    // What was closed has been kept, and what was committed is done with.
    if (Visible())
        StoreDraft();
    StoreSize(*this, Host_.Settings(), StateKey);
}

void TCommitForm::AddMenu() {
    Menu_ = &Make<TMainMenu>("Menu1", *this);
    const auto add = [](TMenuItem& menu, const char* caption, TShortcut keys,
                        std::function<void()> action) {
        menu.Add(caption, keys).OnClick = [action](TObject*) { action(); };
    };
    TMenuItem& commit = Menu_->Add("&Commit");
    add(commit, "&Commit", {VK_RETURN, true}, [this] { Commit(); });
    commit.AddSeparator();
    add(commit, "C&lose", {'W', true}, [this] { CloseQuery(); });
    TMenuItem& files = Menu_->Add("&Files");
    add(files, "Com&pare", {'D', true}, [this] { Compare(); });
    add(files, "&Open", {'O', true}, [this] { OpenFiles(); });
    files.AddSeparator();
    add(files, "Tick &all", {}, [this] { TickAll(true); });
    add(files, "Tick &none", {}, [this] { TickAll(false); });
    files.AddSeparator();
    add(files, "Ne&xt file", {VK_F8}, [this] { TurnToFile(1); });
    add(files, "Pre&vious file", {VK_F8, false, true}, [this] { TurnToFile(-1); });
    add(files, "&Refresh", {VK_F5}, [this] { Load(); });
    // Enter in the list means the files, elsewhere a new line or a button.
    OnKeyPreview = [this](WPARAM key) {
        if (key != VK_RETURN || !Files_->Focused() || ::GetKeyState(VK_CONTROL) < 0)
            return false;
        Compare();
        return true;
    };
}

void TCommitForm::AddFiles() {
    // The splitter shares out a panel of its own: the buttons keep their room.
    Work_ = &Make<TPanel>("Work", *this);
    Work_->SetAlign(TAlign::Client);
    Top_ = &Make<TPanel>("Top", *Work_);
    Top_->SetBounds(0, 0, 0, Scale(190));
    Files_ =
        &Make<TListView>("FileList", *Top_, TListViewStyle{.MultiSelect = true, .Ticks = true});
    Files_->SetAccessibleName("Files to commit");
    for (const auto& [caption, width] : {std::pair{"File", 260},
                                         {"State", 70},
                                         {"Revision", 65},
                                         {"Kind", 50},
                                         {"Stays on", 90},
                                         {"Ticked", 60}})
        Files_->AddColumn(caption, width);
    Files_->SetAlign(TAlign::Client);
    Files_->OnTick = [this](TObject*) { ShowTicks(); };
    Files_->OnDblClick = [this](TObject*) { Compare(); };
    Top_->SetAlign(TAlign::Top);
    Make<TSplitter>("Splitter1", *Work_, *Top_, TAlign::Top, 80);
}

void TCommitForm::AddMessage() {
    auto& head = Make<TPanel>("Head", *Work_);
    head.SetBounds(0, 0, ClientSize().cx, Scale(31));
    auto& label = Make<TLabel>("EarlierLabel", head, "Earlier messages");
    label.SetBounds(Scale(6), Scale(8), label.Width(), label.Height());
    Earlier_ = &Make<TComboBox>("Earlier", head);
    const int left = Scale(14) + label.Width();
    Earlier_->SetBounds(left, Scale(4), ClientSize().cx - left - Scale(6), Scale(21));
    Earlier_->SetAnchors(akLeft | akTop | akRight);
    Earlier_->OnChange = [this](TObject*) { TakeEarlier(); };
    head.SetAlign(TAlign::Top);
    Message_ = &Make<TMemo>("Message", *Work_);
    Message_->SetFixedPitch();
    Message_->SetAccessibleName("Message");
    Message_->SetAlign(TAlign::Client);
    Message_->OnChange = [this](TObject*) {
        // What is typed now is kept when it has rested.
        DraftTimer_.SetEnabled(false);
        DraftTimer_.SetEnabled(true);
        ShowPlace();
    };
    Message_->OnClick = [this](TObject*) { ShowPlace(); };
    Message_->OnKeyUp = [this](WPARAM) { ShowPlace(); };
}

void TCommitForm::AddButtons() {
    auto& bar = Make<TPanel>("Buttons", *this);
    bar.SetBounds(0, 0, ClientSize().cx, Scale(31));
    int left = Scale(4);
    const auto button = [&](const char* name, const char* caption, TButtonRole role,
                            std::function<void()> action) {
        auto& made = Make<TButton>(name, bar, caption, role);
        const int width = made.TextSize(caption).cx + Scale(20);
        made.SetBounds(left, Scale(4), width, Scale(23));
        made.OnClick = [action](TObject*) { action(); };
        left += width + Scale(4);
    };
    button("Commit", "Commit", TButtonRole::Plain, [this] { Commit(); });
    button("Compare", "Compare", TButtonRole::Plain, [this] { Compare(); });
    button("TickAll", "Tick all", TButtonRole::Plain, [this] { TickAll(true); });
    button("TickNone", "Tick none", TButtonRole::Plain, [this] { TickAll(false); });
    button("Close", "Close", TButtonRole::Cancel, [this] { CloseQuery(); });
    bar.SetAlign(TAlign::Bottom);
}

// --- the message ------------------------------------------------------------------------------

void TCommitForm::ReadTemplate() {
    constexpr std::uint64_t Most = 64 << 10;
    const std::string path = SlashSep(Host_.Folder(), "CVS\\Template");
    try {
        if (FileExists(path) && FileSize(path) <= Most)
            Template_ = ReadFileBytes(path);
    } catch (const EInOutError&) {
        // A message begins without one, as where there is none.
    }
}

void TCommitForm::ShowEarlier() {
    Messages_ = TRecentMessages(Host_.Settings()).All();
    std::vector<std::string> items = {"(as it was typed)"};
    for (const std::string& message : Messages_)
        items.push_back(SummaryOf(message));
    Earlier_->SetItems(items);
    Earlier_->SetItemIndex(0);
}

void TCommitForm::TakeEarlier() {
    // Whoever looks through them with the arrows still has what he had typed before.
    if (const std::string text = Message_->Text(); text != Chosen_)
        Typed_ = text;
    const int index = Earlier_->ItemIndex();
    if (index <= 0)
        Message_->SetText(Typed_);
    else {
        const std::string& message = Messages_.at(static_cast<std::size_t>(index) - 1);
        const bool nothing = workbench::IsUnfilled(Typed_, Template_);
        Message_->SetText(nothing                  ? message
                          : Typed_.ends_with('\n') ? Typed_ + message
                                                   : Typed_ + "\r\n" + message);
    }
    Chosen_ = Message_->Text();
}

void TCommitForm::ShowPlace() {
    Status_->SetPartText(1, DescribePlace(Message_->Text(), Message_->SelectionStart()));
}

bool TCommitForm::IsUnfilled() const {
    return workbench::IsUnfilled(Message_->Text(), Template_);
}

bool TCommitForm::StoreDraft() {
    try {
        if (IsUnfilled())
            Host_.Settings().Delete(DraftKey(), DraftName);
        else
            Host_.Settings().Write(DraftKey(), DraftName, Message_->Text());
        return true;
    } catch (const ERegistryError&) {
        return false;
    }
}

void TCommitForm::CloseQuery() {
    if (!StoreDraft() &&
        !DialogFunctions().AskRisk(Caption, "The message cannot be kept. Close all the same?"))
        return;
    DraftTimer_.SetEnabled(false);
    TForm::CloseQuery();
}

// --- the files --------------------------------------------------------------------------------

bool TCommitForm::ShowFiles(std::vector<std::string> paths) {
    Paths_ = std::move(paths);
    return Load();
}

bool TCommitForm::Load() {
    /// What a file was before.
    struct TBefore {
        bool Ticked;
        bool Selected;
        TFileState State;
    };
    std::map<std::string, TBefore> before;
    const std::vector<int> selected = Files_->SelectedIndices();
    for (int i = 0; i < Files_->Count(); ++i) {
        const TFileRow& row = RowAt(i);
        before[row.Path()] = {Files_->Row(i).Ticked, std::ranges::binary_search(selected, i),
                              row.State};
    }
    Rows_ = Host_.Files(Paths_);
    std::erase_if(Rows_, [](const TFileRow& row) { return !IsForCommit(row.State); });
    std::ranges::sort(Rows_, {}, &TFileRow::Path);
    std::vector<TListRow> shown;
    std::vector<int> selection;
    for (const TFileRow& row : Rows_) {
        bool ticked = IsTickedAtFirst(row.State);
        if (const auto at = before.find(row.Path()); at != before.end()) {
            // One that has got a conflict since has to be looked at.
            ticked = at->second.Ticked && (ticked || at->second.State == row.State);
            if (at->second.Selected)
                selection.push_back(static_cast<int>(shown.size()));
        }
        shown.push_back({.Caption = NameIn(Host_.Folder(), row.Path()),
                         .SubItems = {StateName(row.State), row.Revision,
                                      row.IsBinary ? "binary" : "text", row.Sticky, ""},
                         .Ticked = ticked});
    }
    Files_->Replace(std::move(shown), selection);
    ShowTicks();
    return !Rows_.empty();
}

void TCommitForm::ShowTicks() {
    // In words, too: boxes alone say nothing to many.
    std::vector<TListRow> rows;
    int ticked = 0;
    for (int i = 0; i < Files_->Count(); ++i) {
        TListRow row = Files_->Row(i);
        row.SubItems.back() = row.Ticked ? "yes" : "no";
        ticked += row.Ticked ? 1 : 0;
        rows.push_back(std::move(row));
    }
    const int count = Files_->Count();
    Files_->Replace(std::move(rows), Files_->SelectedIndices(), Files_->FocusedIndex());
    Status_->SetPartText(0, std::to_string(ticked) + " of " + std::to_string(count) +
                                (count == 1 ? " file" : " files"));
}

std::vector<TFileRow> TCommitForm::Ticked() const {
    std::vector<TFileRow> rows;
    for (int i = 0; i < Files_->Count(); ++i)
        if (Files_->Row(i).Ticked)
            rows.push_back(RowAt(i));
    return rows;
}

std::vector<std::string> TCommitForm::SelectedPaths() const {
    std::vector<std::string> paths;
    for (const int index : Files_->SelectedIndices())
        paths.push_back(RowAt(index).Path());
    return paths;
}

void TCommitForm::TickAll(bool ticked) {
    std::vector<int> indices(Rows_.size());
    std::iota(indices.begin(), indices.end(), 0);
    Files_->SetTicked(indices, ticked);
}

void TCommitForm::TurnToFile(int step) {
    const int current = Files_->FocusedIndex();
    const int next = current < 0 ? 0 : std::clamp(current + step, 0, Files_->Count() - 1);
    if (Rows_.empty())
        return;
    Files_->Select(-1);
    Files_->Select(next);
}

void TCommitForm::Compare() {
    if (const std::vector<std::string> paths = SelectedPaths(); !paths.empty())
        return Host_.Compare(paths, TVersion::Base(), TVersion::WorkingCopy());
    ShowResult("No file is selected");
}

void TCommitForm::OpenFiles() {
    for (const std::string& path : SelectedPaths())
        if (FileExists(path))
            Host_.OpenFile(path);
}

// --- the commit -------------------------------------------------------------------------------

bool TCommitForm::AskAboutMessage() {
    if (!IsUnfilled())
        return true;
    const bool isEmpty = workbench::IsUnfilled(Message_->Text(), {});
    return DialogFunctions().AskRisk(
        Caption, isEmpty ? "The message is empty: the log will say nothing about what has changed. "
                           "Commit all the same?"
                         : "The message is only what its template says. Commit all the same?");
}

bool TCommitForm::AskAboutConflicts(const std::vector<TFileRow>& files) {
    constexpr std::size_t Most = 10;
    std::string names;
    std::size_t count = 0;
    for (const TFileRow& row : files)
        if (row.State == TFileState::Conflict && ++count <= Most)
            names += NameIn(Host_.Folder(), row.Path()) + "\r\n";
    if (count > Most)
        names += "and " + std::to_string(count - Most) + " more\r\n";
    return count == 0 ||
           DialogFunctions().AskRisk(
               Caption, "In these files two texts stand that nobody has put together:\r\n" + names +
                            "Commit them with the marks of the conflicts in them?");
}

void TCommitForm::Commit() {
    ShowResult("");
    // Conflicts that have come since are not ticked any more.
    Load();
    const std::vector<TFileRow> files = Ticked();
    if (files.empty())
        return ShowResult("No file is ticked");
    if (!AskAboutMessage())
        return Message_->SetFocus();
    if (!AskAboutConflicts(files))
        return Files_->SetFocus();
    StoreDraft();
    std::vector<std::string> paths;
    for (const TFileRow& row : files)
        paths.push_back(row.Path());
    const std::string message = MessageToSend(Message_->Text());
    const bool done = Host_.Operate(paths, [&message](tandrel::TCvsObject& cvs) {
        // Each is named: that it lies below another folder does not matter.
        cvs.LocalOnly = false;
        cvs.CommitMessage = message;
        return cvs.Commit(false);
    });
    if (done)
        return Committed();
    Load();
    ShowResult("Not committed: the main window says why");
}

void TCommitForm::Committed() {
    DraftTimer_.SetEnabled(false);
    Host_.Settings().Delete(DraftKey(), DraftName);
    try {
        if (!IsUnfilled())
            TRecentMessages(Host_.Settings()).Remember(Message_->Text());
    } catch (const ERegistryError&) {
        // It is in the log; only the list does without.
    }
    SetVisible(false);
}

}  // namespace workbench
