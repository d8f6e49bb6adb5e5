#include "workbench/ComparisonForm.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/splitter.h"
#include "hosting/KeptCommand.h"
#include "workbench/FormState.h"
#include "workbench/InputForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using tandrel::SlashSep;

namespace {

constexpr const char* StateKey = "Comparison";
constexpr const char* PatchFilter = "Patches|*.patch;*.diff|All files|*.*";
// More is not put into memory line by line; what differs is shown then.
constexpr std::size_t Context = 3;  // lines around a change
constexpr std::uint64_t MostBytes = 16 << 20;

constexpr COLORREF Red = RGB(255, 60, 60), Green = RGB(40, 180, 60), Blue = RGB(60, 120, 255);

/// How a kind of line looks: colours alone say nothing to many.
struct TLook {
    char Sign;
    COLORREF Color;
};

TLook LookOf(TComparedLine::TKind kind) {
    using enum TComparedLine::TKind;
    switch (kind) {
        case Changed:
            return {'|', Blue};
        case Deleted:
            return {'-', Red};
        case Added:
            return {'+', Green};
        case Same:
        case Gap:
            break;
    }
    return {' ', 0};
}

const char* StateOf(const TFileDifference& file) {
    return file.IsBinary    ? "binary"
           : file.IsWhole   ? "new or removed"
           : file.IsNew     ? "new"
           : file.IsRemoved ? "removed"
                            : "changed";
}

}  // namespace

TVersion VersionOf(const std::string& typed) {
    const std::string text = Trim(typed);
    if (text.empty() || SameText(text, TVersion::WorkingCopy().Text()))
        return TVersion::WorkingCopy();
    if (SameText(text, TVersion::Base().Text()))
        return TVersion::Base();
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, read = 0;
    const auto isWhole = [&] { return static_cast<std::size_t>(read) == text.size(); };
    TDateTime date = 0;
    const bool isDay =
        std::sscanf(text.c_str(), "%4d-%2d-%2d%n", &year, &month, &day, &read) == 3 && isWhole();
    const bool isMoment = !isDay &&
                          std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d%n", &year, &month, &day,
                                      &hour, &minute, &read) == 5 &&
                          isWhole();
    if ((!isDay && !isMoment) || !TryEncodeDate(year, month, day, date) || hour > 23 || minute > 59)
        return TVersion::Of(text);
    SYSTEMTIME local{};
    local.wYear = static_cast<WORD>(year);
    local.wMonth = static_cast<WORD>(month);
    local.wDay = static_cast<WORD>(day);
    local.wHour = static_cast<WORD>(hour);
    local.wMinute = static_cast<WORD>(minute);
    const SYSTEMTIME utc = tandrel::_LocalTimeToSystemTime(local);
    return TVersion::At(EncodeDate(utc.wYear, utc.wMonth, utc.wDay) +
                        EncodeTime(utc.wHour, utc.wMinute, 0, 0));
}

std::optional<TVersionPair> AskForVersions(const TVersionPair& proposed) {
    std::vector<TInput> inputs = {
        {TInput::Text, "Older", proposed.From.Text(), {}},
        {TInput::Text, "Newer", proposed.To.Text(), {}},
        {TInput::Note,
         "",
         "A revision, a label, a branch, a date such as 2026-05-04 or 2026-05-04 10:30, \"last "
         "update\", or for the newer one \"working copy\".",
         {}}};
    if (!AskFor("Compare", inputs))
        return std::nullopt;
    const TVersion from = VersionOf(inputs[0].Value), to = VersionOf(inputs[1].Value);
    // The client compares what it has with what is here, never the other way.
    if (from.Kind == TVersion::TKind::WorkingCopy)
        return to.Kind == TVersion::TKind::WorkingCopy ? TVersionPair{TVersion::Base(), to}
                                                       : TVersionPair{to, from};
    return TVersionPair{from, to};
}

TComparisonForm::TComparisonForm(TViewHost& host, std::vector<std::string> paths, TVersion from,
                                 TVersion to)
    : TForm("Comparison", TFormBorder::Main),
      Host_(host),
      Paths_(std::move(paths)),
      From_(std::move(from)),
      To_(std::move(to)) {
    SetMinClientSize(Scale(420), Scale(200));
    RestoreSize(*this, Host_.Settings(), StateKey, {900, 560});
    AddMenu();
    AddBar();
    Status_ = &Make<TStatusBar>("Status", *this, std::vector{260, 0});
    Status_->SetAlign(TAlign::Bottom);
    Left_ = &Make<TPanel>("Left", *this);
    Left_->SetBounds(0, 0, Scale(200), 0);
    Files_ = &Make<TListView>("FileList", *Left_);
    Files_->SetAccessibleName("Files that differ");
    Files_->AddColumn("File", 130);
    Files_->AddColumn("State", 60);
    Files_->SetAlign(TAlign::Client);
    Files_->OnSelectItem = [this](TObject*) {
        if (Files_->SelectedIndex() < 0)
            return;
        File_ = Files_->SelectedIndex();
        ShowFile();
    };
    Left_->SetAlign(TAlign::Left);
    Make<TSplitter>("Splitter1", *this, *Left_, TAlign::Left, 80);
    AddHeads();
    Lines_ = &Make<TLineView>("Lines", *this, 2);
    Lines_->SetAccessibleName("Both texts");
    Lines_->SetAlign(TAlign::Client);
    Lines_->OnCurrent = [this](TObject*) { ShowStatus(); };
    Lines_->OnActivate = [this](TObject*) { OpenFile(); };
    ShowHeads();
}

TComparisonForm::~TComparisonForm() {
    StoreSize(*this, Host_.Settings(), StateKey);
}

void TComparisonForm::AddMenu() {
    Menu_ = &Make<TMainMenu>("Menu1", *this);
    const auto add = [](TMenuItem& menu, const char* caption, TShortcut keys,
                        std::function<void()> action) -> TMenuItem& {
        TMenuItem& item = menu.Add(caption, keys);
        item.OnClick = [action](TObject*) { action(); };
        return item;
    };
    TMenuItem& file = Menu_->Add("&File");
    add(file, "&Open the file", {'O', true}, [this] { OpenFile(); });
    add(file, "&Save as patch...", {'S', true}, [this] { SavePatch(); });
    add(file, "&History", {'L', true}, [this] {
        if (const TFileDifference* shown = ShownFile(); shown && !PathOf(*shown).empty())
            Host_.ShowHistory({PathOf(*shown)});
    });
    add(file, "&Annotate", {'T', true}, [this] {
        if (const TFileDifference* shown = ShownFile(); shown && !PathOf(*shown).empty())
            Host_.Annotate(PathOf(*shown), To_.Kind == TVersion::TKind::WorkingCopy
                                               ? std::string()
                                               : shown->ToRevision);
    });
    file.AddSeparator();
    add(file, "&Close", {'W', true}, [this] { CloseQuery(); });
    TMenuItem& view = Menu_->Add("&View");
    add(view, "&Next change", {VK_F8}, [this] { TurnToChange(true); });
    add(view, "&Previous change", {VK_F8, false, true}, [this] { TurnToChange(false); });
    add(view, "Next &file", {VK_F8, true}, [this] { TurnToFile(1); });
    add(view, "Previous fi&le", {VK_F8, true, true}, [this] { TurnToFile(-1); });
    view.AddSeparator();
    ChangesOnlyItem_ = &add(view, "Changes &only", {'E', true}, [this] { ChangesOnly_->Click(); });
    IgnoreBlanksItem_ =
        &add(view, "Ignore &blanks", {'B', true}, [this] { IgnoreBlanks_->Click(); });
    view.AddSeparator();
    add(view, "&Versions...", {'D', true}, [this] { ChooseVersions(); });
    add(view, "&Refresh", {VK_F5}, [this] { Load(); });
    view.AddSeparator();
    add(view, "&Copy", {'C', true}, [this] { Lines_->Copy(); });
}

void TComparisonForm::AddBar() {
    auto& bar = Make<TPanel>("Bar", *this);
    bar.SetBounds(0, 0, Scale(600), Scale(31));
    int left = Scale(4);
    const auto button = [&](const char* name, const char* caption, std::function<void()> action) {
        auto& made = Make<TButton>(name, bar, caption);
        const int width = made.TextSize(caption).cx + Scale(20);
        made.SetBounds(left, Scale(4), width, Scale(23));
        made.OnClick = [action](TObject*) { action(); };
        left += width + Scale(4);
    };
    const auto box = [&](const char* name, const char* caption) {
        auto& made = Make<TCheckBox>(name, bar, caption);
        const int width = made.TextSize(caption).cx + Scale(24);
        made.SetBounds(left + Scale(6), Scale(7), width, Scale(17));
        left += width + Scale(12);
        return &made;
    };
    button("Previous", "Previous", [this] { TurnToChange(false); });
    button("Next", "Next", [this] { TurnToChange(true); });
    ChangesOnly_ = box("ChangesOnly", "Changes only");
    ChangesOnly_->OnClick = [this](TObject*) { ShowFile(); };
    IgnoreBlanks_ = box("IgnoreBlanks", "Ignore blanks");
    IgnoreBlanks_->OnClick = [this](TObject*) { Load(); };
    button("Versions", "Versions...", [this] { ChooseVersions(); });
    button("SavePatch", "Save as patch...", [this] { SavePatch(); });
    bar.SetAlign(TAlign::Top);
}

void TComparisonForm::AddHeads() {
    Heads_ = &Make<TPanel>("Heads", *this);
    Heads_->SetBounds(0, 0, Scale(600), Scale(20));
    FromHead_ = &Make<TLabel>("FromHead", *Heads_, "");
    ToHead_ = &Make<TLabel>("ToHead", *Heads_, "");
    Heads_->SetAlign(TAlign::Top);
}

void TComparisonForm::Resized() {
    if (!Lines_)
        return;
    // Above their columns.
    FromHead_->SetBounds(Scale(6), Scale(3), FromHead_->Width(), FromHead_->Height());
    ToHead_->SetBounds(Lines_->ClientSize().cx / 2 + Scale(8), Scale(3), ToHead_->Width(),
                       ToHead_->Height());
}

// --- what is shown ----------------------------------------------------------------------------

bool TComparisonForm::Load() {
    std::optional<TFetched> fetched;
    const bool asked = Host_.Query([&](TQueries& queries) {
        fetched = queries.Comparison(Paths_, From_, To_, IgnoreBlanks_->Checked(), 0);
    });
    if (!asked || !fetched) {
        Status_->SetPartText(1, "The client could not tell what differs: see the output");
        return false;
    }
    Remark_ = fetched->Remark();
    const std::string before = ShownFile() ? ShownFile()->Name : "";
    Comparison_ = ParseComparison(fetched->Text);
    if (!Comparison_.Remarks.empty())
        Remark_ += (Remark_.empty() ? "" : ", ") + Comparison_.Remarks.front();
    const auto at = std::ranges::find(Comparison_.Files, before, &TFileDifference::Name);
    File_ = at == Comparison_.Files.end() ? 0 : static_cast<int>(at - Comparison_.Files.begin());
    ShowFiles();
    ShowFile();
    return true;
}

void TComparisonForm::ShowFiles() {
    const bool several = Comparison_.Files.size() > 1;
    std::vector<TListRow> rows;
    for (const TFileDifference& file : Comparison_.Files)
        rows.push_back({.Caption = file.Name, .SubItems = {StateOf(file)}});
    Files_->Replace(std::move(rows), {File_}, File_);
    Left_->SetVisible(several);
    Find<TSplitter>("Splitter1")->SetVisible(several);
    AlignControls();
}

const TFileDifference* TComparisonForm::ShownFile() const {
    const auto at = static_cast<std::size_t>(File_);
    return File_ >= 0 && at < Comparison_.Files.size() ? &Comparison_.Files[at] : nullptr;
}

std::string TComparisonForm::PathOf(const TFileDifference& file) const {
    std::string name = file.Name;
    std::ranges::replace(name, '/', '\\');
    // What a server says must not lead to other files.
    return IsNameBelow(name) ? SlashSep(Host_.Folder(), name) : std::string();
}

std::vector<std::string> TComparisonForm::NewerLines(const TFileDifference& file, bool& known) {
    known = true;
    if (file.IsRemoved)
        return {};
    const std::string path = PathOf(file);
    if (path.empty() || To_.Kind == TVersion::TKind::WorkingCopy) {
        known = FileExists(path) && FileSize(path) <= MostBytes;
        return known ? LinesOf(ReadFileBytes(path)) : std::vector<std::string>();
    }
    std::optional<TFetched> text;
    const TVersion version = file.ToRevision.empty() ? To_ : TVersion::Of(file.ToRevision);
    Host_.Query([&](TQueries& queries) { text = queries.File(path, version); });
    known = text.has_value();
    return known ? LinesOf(text->Text) : std::vector<std::string>();
}

bool TComparisonForm::ShowWholeFile(TFileDifference& file) {
    const std::string path = PathOf(file);
    if (path.empty())
        return false;
    const bool isWorking = To_.Kind == TVersion::TKind::WorkingCopy;
    std::optional<TFetched> older, newer;
    if (isWorking && FileExists(path) && FileSize(path) <= MostBytes)
        newer = TFetched{ReadFileBytes(path), false, 0};
    if (!newer)
        Host_.Query([&](TQueries& queries) {
            if (!isWorking)
                newer = queries.File(path, To_);
            if (!newer || newer->Text.empty())
                older = queries.File(path, From_);
        });
    const bool isNew = newer && !newer->Text.empty();
    if (!isNew && !older)
        return false;
    ShowWhole(file, LinesOf(isNew ? newer->Text : older->Text), isNew);
    file.IsWhole = false;
    return true;
}

void TComparisonForm::ShowFile() {
    ChangesOnlyItem_->SetChecked(ChangesOnly_->Checked());
    IgnoreBlanksItem_->SetChecked(IgnoreBlanks_->Checked());
    Compared_.clear();
    if (ShownFile() && ShownFile()->IsWhole)
        ShowWholeFile(Comparison_.Files[static_cast<std::size_t>(File_)]);
    if (const TFileDifference* const file = ShownFile(); file && !file->IsBinary) {
        bool known = false;
        std::vector<std::string> newer;
        try {
            newer = NewerLines(*file, known);
        } catch (const EInOutError&) {
            // Another program holds it: what differs can be shown all the same.
            known = false;
        }
        Compared_ = SideBySide(*file, known ? &newer : nullptr);
        if (ChangesOnly_->Checked())
            Compared_ = ChangesOnly(std::move(Compared_), Context);
    }
    Changes_ = ChangesIn(Compared_);
    std::size_t longest = 0;
    int last = 1;
    for (const TComparedLine& line : Compared_) {
        longest = std::max({longest, line.From.size(), line.To.size()});
        last = std::max({last, line.FromNumber, line.ToNumber});
    }
    NumberLetters_ = static_cast<int>(std::to_string(last).size());
    Lines_->SetMarginWidth(NumberLetters_ + 3);
    Lines_->SetLines(static_cast<int>(Compared_.size()), static_cast<int>(longest),
                     [this](int line, int column) { return LineAt(line, column); });
    if (!Changes_.empty())
        Lines_->SetCurrent(Changes_.front());
    ShowHeads();
    ShowStatus();
}

void TComparisonForm::ShowHeads() {
    const TFileDifference* const file = ShownFile();
    const std::string name = file                 ? file->Name
                             : Paths_.size() == 1 ? ExtractFileName(Paths_.front())
                                                  : ExtractFileName(Host_.Folder());
    const auto side = [](const TVersion& version, const std::string& revision) {
        const std::string text = version.Text();
        return revision.empty() || text == revision ? text : text + " (" + revision + ")";
    };
    SetText(name + ": " + From_.Text() + " and " + To_.Text());
    FromHead_->SetText(side(From_, file ? file->FromRevision : ""));
    ToHead_->SetText(side(To_, file ? file->ToRevision : ""));
    Resized();
}

void TComparisonForm::ShowStatus() {
    const TFileDifference* const file = ShownFile();
    std::string text;
    if (!file)
        text = "There is no difference";
    else if (file->IsBinary)
        text = "Binary: there is nothing to be seen of what differs";
    else if (Changes_.empty())
        text = file->IsNew ? "The file is new" : file->IsRemoved ? "The file is removed" : "";
    else {
        const auto at = std::ranges::upper_bound(Changes_, Lines_->Current());
        text = "Change " + std::to_string(std::max<std::ptrdiff_t>(1, at - Changes_.begin())) +
               " of " + std::to_string(Changes_.size());
    }
    Status_->SetPartText(0, text);
    Status_->SetPartText(1, Remark_);
}

TViewLine TComparisonForm::LineAt(int line, int column) const {
    using enum TComparedLine::TKind;
    const TComparedLine& compared = Compared_[static_cast<std::size_t>(line)];
    const bool isFrom = column == 0;
    TViewLine view;
    if (compared.Kind == Gap) {
        view.Margin = std::string(static_cast<std::size_t>(NumberLetters_), '.');
        view.Text = compared.From + (compared.From == "1" ? " line" : " lines");
        view.Back = ::GetSysColor(COLOR_BTNFACE);
        return view;
    }
    const int number = isFrom ? compared.FromNumber : compared.ToNumber;
    const TLook look = LookOf(compared.Kind);
    if (number == 0) {
        // Nothing stands beside what is in the other text alone.
        view.Back = Tint(::GetSysColor(COLOR_BTNSHADOW), 15);
        return view;
    }
    std::array<char, 32> margin{};
    std::snprintf(margin.data(), margin.size(), "%*d %c", NumberLetters_, number, look.Sign);
    view.Margin = margin.data();
    view.Text = isFrom ? compared.From : compared.To;
    if (compared.Kind == Same)
        return view;
    view.Back = Tint(look.Color, compared.Kind == Changed ? 10 : 20);
    view.MarkBack = Tint(look.Color, 35);
    if (compared.Kind == Changed) {
        const TWordDifference words = CompareWords(compared.From, compared.To);
        for (const TWordRange& word : isFrom ? words.From : words.To)
            view.Marks.push_back({word.Start, word.Length});
    }
    return view;
}

// --- what is done -----------------------------------------------------------------------------

void TComparisonForm::TurnToChange(bool next) {
    const int current = Lines_->Current();
    if (next) {
        const auto at = std::ranges::upper_bound(Changes_, current);
        if (at != Changes_.end())
            return Lines_->SetCurrent(*at);
        return TurnToFile(1);
    }
    const auto at = std::ranges::lower_bound(Changes_, current);
    if (at != Changes_.begin())
        return Lines_->SetCurrent(*(at - 1));
    TurnToFile(-1);
}

void TComparisonForm::TurnToFile(int step) {
    const int file = File_ + step;
    if (file < 0 || file >= static_cast<int>(Comparison_.Files.size()))
        return;
    Files_->Select(file);
    // Whoever goes back comes from behind.
    if (step < 0 && !Changes_.empty())
        Lines_->SetCurrent(Changes_.back());
}

void TComparisonForm::ChooseVersions() {
    const std::optional<TVersionPair> versions = AskForVersions({From_, To_});
    if (!versions)
        return;
    From_ = versions->From;
    To_ = versions->To;
    Load();
}

void TComparisonForm::SavePatch() {
    // With the lines around the changes, and those that differ in blanks: without them it would not
    // fit.
    std::optional<TFetched> fetched;
    Host_.Query(
        [&](TQueries& queries) { fetched = queries.Comparison(Paths_, From_, To_, false); });
    if (!fetched || fetched->Text.empty())
        return;
    std::string path = SlashSep(Host_.Folder(), "");
    if (!DialogFunctions().SaveFile(PatchFilter, path))
        return;
    WriteFileBytes(path, PatchOf(fetched->Text));
    Status_->SetPartText(1, "Saved as " + path);
}

void TComparisonForm::OpenFile() {
    const TFileDifference* const file = ShownFile();
    if (file && FileExists(PathOf(*file)))
        Host_.OpenFile(PathOf(*file));
}

}  // namespace workbench
