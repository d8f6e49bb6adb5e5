#include "workbench/DocumentForm.h"

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/ui/dialogs.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

constexpr const char* Filter = "Text files|*.txt;*.c;*.h;*.cpp|All files|*.*";

std::string WithoutReturns(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            result += text[i];
    return result;
}

}  // namespace

TDocumentForm::TDocumentForm(const std::string& caption, const std::string& text)
    : TForm(caption, TFormBorder::Main), Title_(caption) {
    AddControls();
    Load(text);
}

TDocumentForm::TDocumentForm(const std::string& path)
    : TForm(path, TFormBorder::Main), Path_(path), Title_(ExtractFileName(path)) {
    AddControls();
    Load(ReadFileBytes(Path_));
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
        std::string path;
        if (!DialogFunctions().SaveFile(Filter, path))
            return false;
        Path_ = path;
        Title_ = ExtractFileName(path);
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
    return true;
}

void TDocumentForm::MovedTo(const std::string& path) {
    Path_ = path;
    Title_ = ExtractFileName(path);
    ShowCaption();
}

TUnsavedText TDocumentForm::Unsaved() const {
    return {Path_.empty() ? "new document" : ExtractFileName(Path_), Bytes()};
}

void TDocumentForm::Reload() {
    if (Path_.empty() || Modified_ || !FileExists(Path_))
        return;
    const std::string bytes = ReadFileBytes(Path_);
    if (bytes != Bytes())
        Load(bytes);
}

void TDocumentForm::CloseQuery() {
    if (Modified_ && DialogFunctions().AskYesNo(Title_, "Save the changes to " + Title_ + "?") &&
        !Save())
        return;
    SetVisible(false);
}

}  // namespace workbench
