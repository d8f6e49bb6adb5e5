#include "forms/InitFrm.h"

#include "core/Cvs_files.h"
#include "core/Cvsroot.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/ConnectionTypes.h"
#include "forms/Frames.h"

namespace tandrel {

using namespace framework;

TCrRepos_Frm::TCrRepos_Frm() : TValidatedForm("Create CVS repository") {
    TFormRows rows(*this, 420, 90);
    ComboBox1_ = rows.Field<TComboBox>("ComboBox1", "Connect type", 0, ConnectionTypeItems);
    Edit3_ = rows.Field<TEdit>("Edit3", "Server Path", TFormRows::DotsWidth + 4);
    Dots_ = &rows.Beside("Button1", "...", TFormRows::DotsWidth);
    Edit1_ = rows.Field<TEdit>("Edit1", "Server", 0);
    Edit2_ = rows.Field<TEdit>("Edit2", "Username", 0);
    CheckEmptyLabel_ = &rows.Warning("CheckEmptyLabel");
    Label1_ = &rows.Line("Label1", " \n ");
    Label1_->SetText("");
    AddButtons(rows);

    Timer1_ = &MakeDelay(*this, "Timer1", 500, [this] {
        CheckIsEmptyDir();
        SetCVSRoot();
    });
    Timer2_ = &MakeDelay(*this, "Timer2", 500, [this] { SetCVSRoot(); });
    ComboBox1_->OnChange = [this](TObject*) { ConnectTypeChange(); };
    Edit3_->OnChange = [this](TObject*) { Timer1_->Restart(); };
    Edit1_->OnChange = Edit2_->OnChange = [this](TObject*) { Timer2_->Restart(); };
    Dots_->OnClick = [this](TObject*) {
        if (AskForDirectory(*Edit3_))
            CheckIsEmptyDir();
    };
}

void TCrRepos_Frm::LoadFormData() {
    ShowButtons(false);
    Edit1_->SetText(CvsObject->Server);
    Edit2_->SetText(CvsObject->UserName);
    Edit3_->SetText(CvsObject->Path);
    ComboBox1_->SetItemIndex(CvsObject->ConnectionType);
    // The root twice, until the first preview takes its place.
    Label1_->SetText(CvsObject->CVSROOT() + CvsObject->CVSROOT());
    ConnectTypeChange();
}

void TCrRepos_Frm::ConnectTypeChange() {
    const bool local = ComboBox1_->ItemIndex() == cnLocal;
    for (const auto* field : {&Edit1_, &Edit2_}) {
        field->SetEnabled(!local);
        (*field)->SetColor(local ? COLOR_BTNFACE : COLOR_WINDOW);
    }
    Dots_->SetEnabled(local);
    CheckIsEmptyDir();
    Timer2_->Restart();
}

void TCrRepos_Frm::CheckIsEmptyDir() {
    const std::string path = Edit3_->Text();
    const bool exists = !path.empty() && IsFolderEmpty(path);
    CheckEmptyLabel_->SetText(exists ? "Directory is not empty" : "");
    SetValid(!path.empty() && !exists);
}

std::string TCrRepos_Frm::ComposedRoot() const {
    return CompileCVSROOT(CvsObject->ConnectionType, Edit1_->Text(), Edit2_->Text(), {}, {},
                          Edit3_->Text());
}

void TCrRepos_Frm::SetCVSRoot() {
    CvsObject->ConnectionType = static_cast<TConnectionType>(ComboBox1_->ItemIndex());
    Label1_->SetText("CVSROOT= " + ComposedRoot());
}

void TCrRepos_Frm::SaveFormData() {
    CvsObject->Server = Edit1_->Text();
    CvsObject->UserName = Edit2_->Text();
    CvsObject->Path = Edit3_->Text();
    CvsObject->ConnectionType = static_cast<TConnectionType>(ComboBox1_->ItemIndex());
    CvsObject->SetCVSROOT(ComposedRoot());
}

bool Init_Prepare(TCvsObject& CvsObject) {
    return Show_Frames("Create CVS repository", {NewForm<TCrRepos_Frm>}, CvsObject);
}

}  // namespace tandrel
