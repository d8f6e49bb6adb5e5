#include "workbench/HistoryForm.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "core/Cvs_time.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/system_time.h"
#include "framework/ui/splitter.h"
#include "workbench/ColumnState.h"
#include "workbench/FormState.h"
#include "workbench/LogNames.h"
#include "workbench/TreeCell.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

constexpr int Gap = TFormActions::Gap, ButtonHeight = TFormActions::ButtonHeight, EditHeight = 21;
constexpr int TreeColumn = 1;

/// The beginning of a day here, as UTC.
TDateTime StartOfDay(TDateTime localDay) {
    return SystemTimeToDateTime(tandrel::_LocalTimeToSystemTime(DateTimeToSystemTime(localDay)));
}

}  // namespace

THistoryForm::THistoryForm(TViewHost& host, std::vector<std::string> paths)
    : TForm("History", TFormBorder::Main),
      Host_(host),
      Paths_(std::move(paths)),
      History_(IsOneFile() ? HistoryOfFile({}, Paths_.front())
                           : HistoryOfProject({}, {}, Host_.Folder(), Paths_)) {
    SetMinClientSize(Scale(560), Scale(260));
    RestoreSize(*this, Host_.Settings(), StateKey(), {940, 600});
    SetText("History of " + Subject());
    AddMenus();
    AddBar();
    Status_ = &Make<TStatusBar>("Status", *this, std::vector{0});
    Status_->SetAlign(TAlign::Bottom);
    List_ = &Make<TListView>("List", *this, TListViewStyle{.MultiSelect = true});
    List_->SetAccessibleName(IsOneFile() ? "Revisions" : "Commits");
    for (const TColumn& column : History_->Columns())
        List_->AddColumn(column.Caption, column.Width);
    if (IsOneFile())
        ShowTree();
    List_->SetPopupMenu(Popup_);
    List_->OnSelectItem = [this](TObject*) { ShowChosen(); };
    List_->OnDblClick = [this](TObject*) { Compare(); };
    List_->SetBounds(0, 0, Scale(600),
                     Scale(StoredSize(Host_.Settings(), StateKey() + "ListHeight", 300)));
    List_->SetAlign(TAlign::Top);
    Make<TSplitter>("Splitter1", *this, *List_, TAlign::Top, 60);
    AddLower();
    RestoreColumns(*List_, Host_.Settings(), StateKey());
    RestoreColumns(*Details_, Host_.Settings(), StateKey() + "Details");
    Delay_.OnTimer = [this](TObject*) {
        Delay_.SetEnabled(false);
        ShowRows();
    };
    OnKeyPreview = [this](WPARAM key) { return PreviewKey(key); };
    Actions_.Enable();
}

THistoryForm::~THistoryForm() {
    TSettings& settings = Host_.Settings();
    const auto units = [this](int pixels) { return ::MulDiv(pixels, 96, Scale(96)); };
    if (IsOneFile() && HasUsualTree()) {
        std::vector<int> widths = List_->ColumnWidths();
        widths[TreeColumn] = History_->Columns()[TreeColumn].Width;
        List_->SetColumnWidths(widths);
    }
    StoreSize(*this, settings, StateKey());
    StoreColumns(*List_, settings, StateKey());
    StoreColumns(*Details_, settings, StateKey() + "Details");
    if (!::IsIconic(Handle()) && !::IsZoomed(Handle())) {
        StoreSizeOf(settings, StateKey() + "ListHeight", units(List_->Height()));
        StoreSizeOf(settings, StateKey() + "MessageWidth", units(Message_->Width()));
    }
    // They tell what happens to them until they are gone.
    FreeComponents();
}

bool THistoryForm::IsOneFile() const {
    return Paths_.size() == 1 && !DirectoryExists(Paths_.front());
}

std::string THistoryForm::StateKey() const {
    // Both have columns of their own.
    return IsOneFile() ? "FileHistory" : "ProjectHistory";
}

std::string THistoryForm::Subject() const {
    std::vector<std::string> names;
    for (const std::string& path : Paths_)
        names.push_back(ExtractFileName(path));
    return names.empty() ? ExtractFileName(Host_.Folder()) : FirstOf(names, 3);
}

// --- controls ---------------------------------------------------------------------------------

void THistoryForm::AddMenus() {
    Menu_ = &Make<TMainMenu>("Menu1", *this);
    Popup_ = &Make<TPopupMenu>("ListMenu");
    AddActions();
    Actions_.AddTo(Menu_->Add(IsOneFile() ? "&Revision" : "&Commit"), true);
    Actions_.AddTo(*Popup_, false);
    const auto add = [](TMenuItem& menu, const char* caption, TShortcut keys,
                        std::function<void()> action) {
        menu.Add(caption, keys).OnClick = [action](TObject*) { action(); };
    };
    TMenuItem& view = Menu_->Add("&View");
    add(view, "&Search", {'F', true}, [this] {
        Search_->SetFocus();
        Search_->SelectAll();
    });
    add(view, "Since a &date", {'E', true}, [this] {
        Since_->Click();
        if (Since_->Checked())
            From_->SetFocus();
    });
    view.AddSeparator();
    add(view, "&Refresh", {VK_F5}, [this] { Load(); });
    add(view, "&Close", {'W', true}, [this] { CloseQuery(); });
}

void THistoryForm::AddBar() {
    auto& bar = Make<TPanel>("Bar", *this);
    bar.SetBounds(0, 0, Scale(900), Scale(2 * ButtonHeight + 3 * Gap));
    Actions_.AddButtons(*this, bar, Scale(Gap), Scale(Gap));
    const int top = Scale(ButtonHeight + 2 * Gap);
    auto& label = Make<TLabel>("SearchLabel", bar, "Search");
    label.SetBounds(Scale(Gap), top + Scale(3), label.Width(), label.Height());
    Search_ = &Make<TEdit>("Search", bar);
    Search_->SetAccessibleName(IsOneFile() ? "Search messages, authors and labels"
                                           : "Search messages, authors, labels and files");
    int left = Scale(2 * Gap) + label.Width();
    Search_->SetBounds(left, top, Scale(260), Scale(EditHeight));
    Search_->OnChange = [this](TObject*) { Delay_.Restart(); };
    left += Scale(260 + 3 * Gap);
    Since_ = &Make<TCheckBox>("Since", bar, "Since");
    const int width = Since_->TextSize("Since").cx + Scale(24);
    Since_->SetBounds(left, top + Scale(2), width, Scale(17));
    left += width;
    From_ = &Make<TDateTimePicker>("From", bar);
    From_->SetAccessibleName("The first day to be shown");
    From_->SetBounds(left, top, Scale(110), Scale(EditHeight));
    From_->SetDate(Now() - 30);
    From_->SetEnabled(false);
    From_->OnChange = [this](TObject*) { Delay_.Restart(); };
    Since_->OnClick = [this](TObject*) {
        From_->SetEnabled(Since_->Checked());
        ShowRows();
    };
    bar.SetAlign(TAlign::Top);
}

void THistoryForm::AddLower() {
    auto& lower = Make<TPanel>("Lower", *this);
    Message_ = &Make<TMemo>("Message", lower);
    Message_->SetAccessibleName("Message");
    Message_->SetReadOnly(true);
    Message_->SetFixedPitch();
    Message_->SetBounds(
        0, 0,
        Scale(StoredSize(Host_.Settings(), StateKey() + "MessageWidth", IsOneFile() ? 560 : 480)),
        0);
    Message_->SetAlign(TAlign::Left);
    Make<TSplitter>("Splitter2", lower, *Message_, TAlign::Left, 80);
    Details_ = &Make<TListView>("Details", lower, TListViewStyle{.MultiSelect = true});
    Details_->SetAccessibleName(IsOneFile() ? "Labels of the revision" : "Files of the commit");
    for (const TColumn& column : History_->DetailColumns())
        Details_->AddColumn(column.Caption, column.Width);
    Details_->SetAlign(TAlign::Client);
    if (!IsOneFile()) {
        Details_->SetPopupMenu(Popup_);
        Details_->OnSelectItem = [this](TObject*) { Actions_.Enable(); };
        Details_->OnDblClick = [this](TObject*) { Compare(); };
    }
    lower.SetAlign(TAlign::Client);
}

void THistoryForm::ShowTree() {
    // In front of the numbers, though no first column can be drawn.
    std::vector<int> order = {TreeColumn, 0};
    for (int i = TreeColumn + 1; i < static_cast<int>(History_->Columns().size()); ++i)
        order.push_back(i);
    List_->SetColumnOrder(order);
    List_->SetDrawnColumn(TreeColumn, [this](const TListCell& cell) {
        const TRevisionTree& tree = *History_->Tree();
        if (cell.Row < static_cast<int>(tree.Rows.size()))
            DrawTreeCell(cell, tree.Rows[static_cast<std::size_t>(cell.Row)],
                         History_->IsRemoval(cell.Row), Scale(96));
    });
}

bool THistoryForm::PreviewKey(WPARAM key) {
    if (key != VK_RETURN || ::GetKeyState(VK_CONTROL) < 0)
        return false;
    if (Search_->Focused()) {
        // Whoever has typed what he looks for wants to see it.
        Delay_.SetEnabled(false);
        ShowRows();
        List_->SetFocus();
        return true;
    }
    if (!List_->Focused() && !Details_->Focused())
        return false;
    Compare();
    return true;
}

// --- what is shown ----------------------------------------------------------------------------

bool THistoryForm::Load() {
    std::optional<TFetched> fetched;
    std::vector<TFileLog> logs;
    std::vector<std::string> paths;
    std::vector<std::string> files, folders;
    std::ranges::partition_copy(Paths_, std::back_inserter(folders), std::back_inserter(files),
                                [](const std::string& path) { return DirectoryExists(path); });
    Host_.Query([&](TQueries& queries) {
        // A file may also lie in one of the folders.
        std::set<std::string> known;
        const auto add = [&](std::optional<TFetched> answer) {
            fetched = std::move(answer);
            for (TFileLog& log : ParseLog(fetched ? fetched->Text : std::string())) {
                if (!known.insert(log.Repository).second)
                    continue;
                paths.push_back(IsOneFile() ? Paths_.front() : queries.PathOf(log.Repository));
                logs.push_back(std::move(log));
            }
        };
        if (!folders.empty() || files.empty())
            add(queries.FolderLog(folders));
        if (!files.empty() && (fetched || folders.empty()))
            add(queries.Log(files));
    });
    if (!fetched || logs.empty()) {
        ShowStatus("The client could not tell the history: see the output");
        return false;
    }
    Remark_ = fetched->Remark();
    History_ = IsOneFile()
                   ? HistoryOfFile(std::move(logs.front()), Paths_.front())
                   : HistoryOfProject(std::move(logs), std::move(paths), Host_.Folder(), Paths_);
    ShowRows();
    WidenTree();
    return true;
}

void THistoryForm::WidenTree() {
    // As wide as this file's tree, unless the user has said how wide it is to be.
    constexpr int Widest = 160;
    if (!IsOneFile() || !HasUsualTree())
        return;
    std::vector<int> widths = List_->ColumnWidths();
    widths[TreeColumn] = std::clamp(TreeWidth(History_->Tree()->Lanes),
                                    History_->Columns()[TreeColumn].Width, Widest);
    List_->SetColumnWidths(widths);
    TreeWidth_ = List_->ColumnWidths()[TreeColumn];
}

bool THistoryForm::HasUsualTree() const {
    const int width = List_->ColumnWidths()[TreeColumn];
    return width == TreeWidth_ || width == History_->Columns()[TreeColumn].Width;
}

TCommitFilter THistoryForm::FilterOf() const {
    return {Search_->Text(), Since_->Checked() ? StartOfDay(From_->Date()) : 0};
}

void THistoryForm::ShowRows() {
    std::set<std::string> keys;
    for (const int row : List_->SelectedIndices())
        keys.insert(Keys_[static_cast<std::size_t>(row)]);
    History_->Filter(FilterOf());
    std::vector<TListRow> rows = History_->Rows();
    Keys_.clear();
    std::vector<int> selected;
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        Keys_.push_back(History_->Key(row));
        if (keys.contains(Keys_.back()))
            selected.push_back(row);
    }
    if (selected.empty() && !rows.empty())
        selected.push_back(0);
    List_->Replace(std::move(rows), selected);
    // A row that stays the same may have other lines beside it.
    ::InvalidateRect(List_->Handle(), nullptr, FALSE);
    ShowChosen();
    ShowStatus();
}

void THistoryForm::ShowChosen() {
    const std::vector<int> rows = List_->SelectedIndices();
    std::string message;
    std::vector<TListRow> details;
    if (!rows.empty()) {
        message = History_->Message(rows.front());
        details = History_->Details(rows.front());
    }
    Message_->SetText(message);
    Details_->Replace(std::move(details), {});
    Actions_.Enable();
}

void THistoryForm::ShowStatus(const std::string& text) {
    if (!text.empty())
        return Status_->SetPartText(0, text);
    const std::string all = std::to_string(History_->Count()) + " " + History_->Kind();
    const auto shown = static_cast<std::size_t>(List_->Count());
    std::string status = shown == History_->Count() ? all : std::to_string(shown) + " of " + all;
    if (!Remark_.empty())
        status += "  (" + Remark_ + ")";
    Status_->SetPartText(0, status);
}

TChosen THistoryForm::Chosen() const {
    return {List_->SelectedIndices(),
            IsOneFile() ? std::vector<int>() : Details_->SelectedIndices()};
}

}  // namespace workbench
