#include "workbench/DocumentForm.h"

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/ui/dialogs.h"

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
    SetClientSize(Scale(600), Scale(400));
    SetMinClientSize(Scale(200), Scale(100));
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

void TDocumentForm::ShowCaption() {
    SetText(Title_ + (Modified_ ? " *" : "") + (Memo1_->ReadOnly() ? " (read-only)" : ""));
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
