#include "workbench/AnnotationForm.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>

#include "core/Cvs_time.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "workbench/FormState.h"
#include "workbench/InputForm.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

constexpr const char* StateKey = "Annotation";
constexpr int NumberLetters = 8, AuthorLetters = 8, DayLetters = 10;
constexpr COLORREF New = RGB(255, 150, 0);

std::string Day(TDateTime date) {
    if (date == 0)
        return {};
    const DateParts parts = DecodeDate(date);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", parts.Year, parts.Month, parts.Day);
    return text.data();
}

std::string NumberText(const TRevisionNumber& number) {
    std::string text;
    for (const int part : number)
        text += (text.empty() ? "" : ".") + std::to_string(part);
    return text;
}

/// The revision that one was made from, by its number; empty for the first.
std::string RevisionBefore(const std::string& revision) {
    std::optional<TRevisionNumber> number = ParseNumber(revision);
    if (!number || number->size() < 2)
        return {};
    if (number->back() > 1) {
        --number->back();
        return NumberText(*number);
    }
    return number->size() > 2 ? NumberText(RootOf(BranchOf(*number))) : std::string();
}

std::string FirstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

}  // namespace

TAnnotationForm::TAnnotationForm(TViewHost& host, std::string file, std::string revision)
    : TForm("Annotation", TFormBorder::Main),
      Host_(host),
      File_(std::move(file)),
      Revision_(std::move(revision)) {
    SetMinClientSize(Scale(300), Scale(160));
    RestoreSize(*this, Host_.Settings(), StateKey, {800, 560});
    AddMenu();
    Status_ = &Make<TStatusBar>("Status", *this, std::vector{0});
    Status_->SetAlign(TAlign::Bottom);
    Lines_ = &Make<TLineView>("Lines", *this);
    Lines_->SetAccessibleName("Lines");
    Lines_->SetAlign(TAlign::Client);
    Lines_->SetMarginWidth(NumberLetters + AuthorLetters + DayLetters + 5);
    Lines_->OnCurrent = [this](TObject*) { ShowStatus(); };
    Lines_->OnActivate = [this](TObject*) { CompareRevision(); };
    Lines_->OnHint = [this](int line, int) {
        return Describe(Annotated_[static_cast<std::size_t>(line)].Revision);
    };
}

TAnnotationForm::~TAnnotationForm() {
    StoreSize(*this, Host_.Settings(), StateKey);
}

void TAnnotationForm::AddMenu() {
    Menu_ = &Make<TMainMenu>("Menu1", *this);
    const auto add = [](TMenuItem& menu, const char* caption, TShortcut keys,
                        std::function<void()> action) -> TMenuItem& {
        TMenuItem& item = menu.Add(caption, keys);
        item.OnClick = [action](TObject*) { action(); };
        return item;
    };
    TMenuItem& file = Menu_->Add("&File");
    add(file, "&Open the file", {'O', true}, [this] {
        if (FileExists(File_))
            Host_.OpenFile(File_);
    });
    add(file, "&History", {'L', true}, [this] { Host_.ShowHistory({File_}); });
    file.AddSeparator();
    add(file, "&Close", {'W', true}, [this] { CloseQuery(); });
    TMenuItem& line = Menu_->Add("&Line");
    add(line, "&What was changed in its revision", {'D', true}, [this] { CompareRevision(); });
    add(line, "As it was &before its revision", {'B', true}, [this] { ShowBefore(); });
    BackItem_ = &add(line, "Back &again", {VK_BACK}, [this] { ShowAgain(); });
    BackItem_->SetEnabled(false);
    line.AddSeparator();
    add(line, "&Find...", {'F', true}, [this] { AskForText(); });
    add(line, "Find &next", {VK_F3}, [this] { FindNext(); });
    line.AddSeparator();
    add(line, "&Copy", {'C', true}, [this] { Lines_->Copy(); });
}

bool TAnnotationForm::Load() {
    return Fetch(Revision_);
}

bool TAnnotationForm::Fetch(const std::string& revision) {
    std::optional<TFetched> text, log;
    Host_.Query([&](TQueries& queries) {
        text = queries.Annotation(File_, revision);
        // Messages and times do not change with the revision.
        if (text && Log_.Revisions.empty())
            log = queries.Log({File_});
    });
    if (!text)
        return false;
    std::vector<TAnnotatedLine> lines = ParseAnnotation(text->Text);
    if (log)
        if (std::vector<TFileLog> logs = ParseLog(log->Text); !logs.empty())
            Log_ = std::move(logs.front());
    Revision_ = revision;
    Remark_ = text->Remark();
    Annotated_ = std::move(lines);
    // The newest revision has most colour.
    std::set<std::pair<TDateTime, TRevisionNumber>> ages;
    std::size_t longest = 0;
    for (const TAnnotatedLine& line : Annotated_) {
        ages.emplace(line.Date, ParseNumber(line.Revision).value_or(TRevisionNumber()));
        longest = std::max(longest, line.Text.size());
    }
    Percent_.clear();
    int rank = 0;
    for (const auto& [date, number] : ages)
        Percent_[NumberText(number)] = 45 * ++rank / static_cast<int>(ages.size());
    Lines_->SetLines(static_cast<int>(Annotated_.size()), static_cast<int>(longest),
                     [this](int line, int) { return LineAt(line); });
    SetText(ExtractFileName(File_) + (Revision_.empty() ? "" : " " + Revision_) +
            ": who wrote its lines");
    ShowStatus();
    return true;
}

const TAnnotatedLine* TAnnotationForm::Current() const {
    const int line = Lines_->Current();
    return line < 0 ? nullptr : &Annotated_[static_cast<std::size_t>(line)];
}

std::string TAnnotationForm::Describe(const std::string& revision) const {
    const auto at = std::ranges::find(Log_.Revisions, revision, &TRevision::Number);
    if (at == Log_.Revisions.end())
        return {};
    std::string message = at->Message;
    std::string text = revision + "  " + at->Author;
    if (at->Date > 0) {
        const TDateTime local = tandrel::UTCToLocalTime(at->Date);
        text += "  " + Day(local) + " " + TimeToStr(local);
    }
    return text + "\n" + message;
}

void TAnnotationForm::ShowStatus() {
    const TAnnotatedLine* const line = Current();
    std::string text =
        line ? "Line " + std::to_string(Lines_->Current() + 1) : "There are no lines";
    if (line)
        if (const auto at = std::ranges::find(Log_.Revisions, line->Revision, &TRevision::Number);
            at != Log_.Revisions.end())
            text += ": " + FirstLine(at->Message);
    Status_->SetPartText(0, Remark_.empty() ? text : text + "  (" + Remark_ + ")");
}

TViewLine TAnnotationForm::LineAt(int line) const {
    const auto at = static_cast<std::size_t>(line);
    const TAnnotatedLine& annotated = Annotated_[at];
    TViewLine view;
    view.Text = annotated.Text;
    // Lines of one revision are seen to belong together.
    const bool isFirst = line == 0 || line == Lines_->TopLine() || line == Lines_->Current() ||
                         Annotated_[at - 1].Revision != annotated.Revision;
    if (isFirst) {
        std::array<char, 80> margin{};
        std::snprintf(margin.data(), margin.size(), "%-*s %-*s %-*s", NumberLetters,
                      annotated.Revision.c_str(), AuthorLetters, annotated.Author.c_str(),
                      DayLetters, Day(annotated.Date).c_str());
        view.Margin = margin.data();
    }
    if (const auto percent = Percent_.find(annotated.Revision); percent != Percent_.end())
        view.Back = Tint(New, percent->second);
    return view;
}

// --- what is done -----------------------------------------------------------------------------

void TAnnotationForm::ShowBefore() {
    const TAnnotatedLine* const line = Current();
    if (!line)
        return;
    const std::string before = RevisionBefore(line->Revision);
    if (before.empty())
        return Status_->SetPartText(0, line->Revision + " is the first revision");
    const TPlace place{Revision_, Lines_->Current()};
    if (!Fetch(before))
        return;
    Before_.push_back(place);
    BackItem_->SetEnabled(true);
    Lines_->SetCurrent(place.Line);
}

void TAnnotationForm::ShowAgain() {
    if (Before_.empty())
        return;
    const TPlace place = Before_.back();
    if (!Fetch(place.Revision))
        return;
    Before_.pop_back();
    BackItem_->SetEnabled(!Before_.empty());
    Lines_->SetCurrent(place.Line);
}

void TAnnotationForm::CompareRevision() {
    const TAnnotatedLine* const line = Current();
    if (!line)
        return;
    const std::string before = RevisionBefore(line->Revision);
    if (before.empty())
        return Status_->SetPartText(0, line->Revision + " is the first revision");
    Host_.Compare({File_}, TVersion::Of(before), TVersion::Of(line->Revision));
}

void TAnnotationForm::AskForText() {
    std::vector<TInput> inputs = {{TInput::Text, "Text", Sought_, {}}};
    if (!AskFor("Find", inputs))
        return;
    Sought_ = inputs[0].Value;
    FindNext();
}

void TAnnotationForm::FindNext() {
    if (Sought_.empty())
        return AskForText();
    const std::string sought = UpperCase(Sought_);
    const int count = Lines_->Count();
    for (int i = 1; i <= count; ++i) {
        const int line = (Lines_->Current() + i) % count;
        if (UpperCase(Annotated_[static_cast<std::size_t>(line)].Text).find(sought) !=
            std::string::npos)
            return Lines_->SetCurrent(line);
    }
    Status_->SetPartText(0, "There is no " + Sought_);
}

}  // namespace workbench
