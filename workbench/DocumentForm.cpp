#include "workbench/DocumentForm.h"

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/ui/dialogs.h"
#include "workbench/Conflicts.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using tandrel::SlashSep;

namespace {

constexpr const char* Filter = "Text files|*.txt;*.c;*.h;*.cpp|All files|*.*";

std::string WithoutReturns(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            result += text[i];
    return result;
}

/// Files of one name are told apart by where they are.
std::string TitleOf(const std::string& path) {
    return ExtractFileName(path) + " - " + ExtractFileDir(path);
}

std::string ReadText(const std::string& path) {
    const std::uint64_t size = FileSize(path);
    if (size > TDocumentForm::MostBytes)
        throw Exception(path + " is too large to be shown here: it has " +
                        std::to_string(size >> 20) + " MB.");
    return ReadFileBytes(path);
}

}  // namespace

TDocumentForm::TDocumentForm(const std::string& caption, const std::string& text,
                             const std::string& folder)
    : TForm(caption, TFormBorder::Main), Title_(caption), Folder_(folder) {
    AddControls();
    if (text.size() > MostBytes)
        Title_ += " (first part)";
    Load(text.substr(0, MostBytes));
}

TDocumentForm::TDocumentForm(const std::string& path)
    : TForm(path, TFormBorder::Main), Path_(path), Title_(TitleOf(path)) {
    AddControls();
    Load(ReadText(Path_));
}

void TDocumentForm::AddControls() {
    Memo1_ = &Make<TMemo>("Memo1", *this);
    Memo1_->SetAlign(TAlign::Client);
    Memo1_->SetFixedPitch();
    Memo1_->SetAccessibleName("Text");
    Memo1_->OnChange = [this](TObject*) {
        if (Loading_ || Modified_)
            return;
        Modified_ = true;
        ShowCaption();
    };
    Menu_ = &Make<TMainMenu>("Menu1", *this);
    TMenuItem& file = Menu_->Add("&File");
    file.Add("&Save", {'S', true}).OnClick = [this](TObject*) { Save(); };
    file.AddSeparator();
    file.Add("&Close", {'W', true}).OnClick = [this](TObject*) { CloseQuery(); };
    AddConflictMenu();
    SetClientSize(Scale(600), Scale(400));
    SetMinClientSize(Scale(200), Scale(100));
}

void TDocumentForm::AddConflictMenu() {
    TMenuItem& menu = Menu_->Add("&Conflicts");
    const auto add = [&](const char* caption, TShortcut shortcut, std::function<void()> action) {
        menu.Add(caption, shortcut).OnClick = [action](TObject*) { action(); };
    };
    add("&Next", {VK_F4}, [this] { TurnToConflict(true); });
    add("&Previous", {VK_F4, false, true}, [this] { TurnToConflict(false); });
    menu.AddSeparator();
    add("Take &mine", {'1', true}, [this] { Resolve(true, false); });
    add("Take &theirs", {'2', true}, [this] { Resolve(false, true); });
    add("Take &both", {'3', true}, [this] { Resolve(true, true); });
}

void TDocumentForm::TurnToConflict(bool next) {
    const std::string text = Memo1_->Text();
    const std::size_t at = Memo1_->SelectionStart();
    std::optional<TConflict> found = next ? NextConflict(text, at + 1) : PreviousConflict(text, at);
    // Behind the last comes the first again.
    if (!found)
        found = next ? NextConflict(text, 0) : PreviousConflict(text, text.size());
    if (!found) {
        Memo1_->Select(at, 0);
        return ShowCaption(" - no conflicts");
    }
    Memo1_->Select(found->Start, found->End - found->Start);
    ShowCaption();
}

void TDocumentForm::Resolve(bool mine, bool theirs) {
    if (Memo1_->ReadOnly())
        return;
    const std::string text = Memo1_->Text();
    const std::size_t at = Memo1_->SelectionStart();
    // The one that the user is in, or the next.
    std::optional<TConflict> found = PreviousConflict(text, at + 1);
    if (!found || found->End <= at)
        found = NextConflict(text, at);
    if (!found)
        return TurnToConflict(true);
    Memo1_->Select(found->Start, found->End - found->Start);
    Memo1_->ReplaceSelection((mine ? found->Mine : "") + (theirs ? found->Theirs : ""));
    Memo1_->Select(found->Start, 0);
    const std::string after = Memo1_->Text();
    if (const auto more = NextConflict(after, found->Start))
        Memo1_->Select(more->Start, more->End - more->Start);
    else
        TurnToConflict(true);
}

void TDocumentForm::Load(const std::string& bytes) {
    Loading_ = true;
    OnDisk_ = bytes;
    UnixLines_ = bytes.find('\n') != std::string::npos && bytes.find("\r\n") == std::string::npos;
    Memo1_->SetText(bytes);
    Loading_ = false;
    Modified_ = false;
    // Binary files, mixed line ends: saving would damage them.
    // So would a zero, which ends a text.
    Memo1_->SetReadOnly(Bytes() != bytes || bytes.find('\0') != std::string::npos);
    ShowCaption();
}

std::string TDocumentForm::Bytes() const {
    return UnixLines_ ? WithoutReturns(Memo1_->Text()) : Memo1_->Text();
}

void TDocumentForm::ShowCaption(const std::string& remark) {
    SetText(Title_ + (Modified_ ? " *" : "") + (Memo1_->ReadOnly() ? " (read-only)" : "") + remark);
}

bool TDocumentForm::Save() {
    if (!Modified_)
        return true;
    if (Path_.empty()) {
        std::string path = Folder_.empty() ? "" : SlashSep(Folder_, "");
        if (!DialogFunctions().SaveFile(Filter, path))
            return false;
        Path_ = path;
        Title_ = TitleOf(path);
    } else if (FileExists(Path_) && ReadFileBytes(Path_) != OnDisk_ &&
               !DialogFunctions().AskRisk(
                   Title_, Path_ +
                               "\r\nhas changed on disk since it was opened here. Write this text "
                               "over it?")) {
        return false;
    }
    const std::string bytes = Bytes();
    WriteFileBytes(Path_, bytes);
    OnDisk_ = bytes;
    Modified_ = false;
    ShowCaption();
    if (OnSaved)
        OnSaved(Path_);
    return true;
}

void TDocumentForm::MovedTo(const std::string& path) {
    Path_ = path;
    Title_ = TitleOf(path);
    ShowCaption();
}

TUnsavedText TDocumentForm::Unsaved() const {
    return {Path_.empty() ? "new document" : ExtractFileName(Path_), Bytes()};
}

void TDocumentForm::Reload() {
    if (Path_.empty() || Modified_ || !FileExists(Path_))
        return;
    const std::string bytes = ReadText(Path_);
    if (bytes != Bytes())
        Load(bytes);
}

bool TDocumentForm::AskToSave() {
    if (!Modified_)
        return true;
    switch (DialogFunctions().AskYesNoCancel(
        "Tandrel", "Save the changes to\r\n" + (Path_.empty() ? Title_ : Path_) + "?")) {
        case TAnswer::Yes:
            return Save();
        case TAnswer::No:
            return true;
        case TAnswer::Cancel:
            break;
    }
    return false;
}

void TDocumentForm::CloseQuery() {
    if (AskToSave())
        SetVisible(false);
}

}  // namespace workbench
