#include "forms/Pref_Frm.h"

#include "core/Cvs_utils.h"
#include "core/Cvsroot.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/ConnectionTypes.h"
#include "framework/base/files.h"

namespace tandrel {

using namespace framework;

namespace {

constexpr int FormWidth = 420;

}  // namespace

TPreferences_Form::TPreferences_Form() : TValidatedForm("CVS preferences") {
    TFormRows rows(*this, FormWidth, 110);
    AddConnectionFields(rows);
    AddProjectFields(rows);
    AddButtons(rows);
    Timer1_ = &MakeDelay(*this, "Timer1", 500, [this] { Timer1Timer(); });
    Timer2_ = &MakeDelay(*this, "Timer2", 500, [this] { Timer2Timer(); });
}

void TPreferences_Form::AddConnectionFields(TFormRows& rows) {
    ComboBox1_ = rows.Field<TComboBox>("ComboBox1", "Connect type", 0, ConnectionTypeItems);
    Edit3_ = rows.Field<TEdit>("Edit3", "Server Path", TFormRows::DotsWidth + 4);
    PathDots_ = &rows.Beside("Button1", "...", TFormRows::DotsWidth);
    Edit1_ = rows.Field<TEdit>("Edit1", "Server", 0);
    Edit2_ = rows.Field<TEdit>("Edit2", "Username", 0);
    Edit8_ = rows.Field<TEdit>("Edit8", "Special Port", 0);
    Edit4_ = rows.Field<TEdit>("Edit4", "CVSROOT", 0);
    SetEditable(*Edit4_, false);
    CheckEmptyLabel_ = &rows.Warning("CheckEmptyLabel");
    PathDots_->OnClick = [this](TObject*) {
        if (AskForDirectory(*Edit3_))
            CheckCVSDir(Edit3_->Text());
    };
}

void TPreferences_Form::AddProjectFields(TFormRows& rows) {
    Edit5_ = rows.Field<TEdit>("Edit5", "Project name", 0);
    Edit6_ = rows.Field<TEdit>("Edit6", "Path to RSH server", TFormRows::DotsWidth + 4);
    RshDots_ = &rows.Beside("Button2", "...", TFormRows::DotsWidth);
    Edit7_ = rows.Field<TEdit>("Edit7", "List of file patterns that CVS ignore", 0);
    CheckBox1_ = &rows.Check("CheckBox1", "Prune(delete empty  directory)");
    RshDots_->OnClick = [this](TObject*) { AskForDirectory(*Edit6_); };
}

void TPreferences_Form::HideProjectFields() {
    AsksForProject_ = false;
    for (const auto* field : {&Edit5_, &Edit6_, &Edit7_}) {
        field->Label->SetVisible(false);
        (*field)->SetVisible(false);
    }
    RshDots_->SetVisible(false);
    CheckBox1_->SetVisible(false);
    ShowButtons(false);
}

TConnectForm::TConnectForm() {
    HideProjectFields();
    SetFormHeight(250);
}

void TPreferences_Form::LoadFormData() {
    Load();
    ShowButtons(false);
}

void TPreferences_Form::LoadFormData2() {
    Load();
    ShowButtons(true);
}

void TPreferences_Form::Load() {
    const TCvsObject& cvs = *CvsObject;
    Edit1_->SetText(cvs.Server);
    Edit2_->SetText(cvs.UserName);
    Edit3_->SetText(cvs.Path);
    Edit4_->SetText(cvs.CVSROOT());
    LoadedName_ = cvs.Modulename();
    Edit5_->SetText(LoadedName_);
    Edit6_->SetText(cvs.CVS_RSH());
    Edit7_->SetText(cvs.CVSIGNORE());
    Edit8_->SetText(cvs.SpecialPort);
    CheckBox1_->SetChecked(cvs.PruneEmptyDirs);
    Edit6_.Label->SetEnabled(false);
    RshDots_->SetEnabled(false);
    Edit6_->SetReadOnly(true);
    ComboBox1_->SetItemIndex(cvs.ConnectionType);
    Timer1Timer();
    BindEvents();
    CheckCVSDir(Edit3_->Text());
}

void TPreferences_Form::BindEvents() {
    ComboBox1_->OnChange = [this](TObject*) { Timer1_->Restart(); };
    for (const auto* field : {&Edit1_, &Edit2_, &Edit3_, &Edit5_, &Edit8_})
        (*field)->OnChange = [this](TObject*) { Timer2_->Restart(); };
}

TConnectionType TPreferences_Form::ConnectionType() const {
    return static_cast<TConnectionType>(ComboBox1_->ItemIndex());
}

void TPreferences_Form::Timer1Timer() {
    const TConnectionType type = ConnectionType();
    const auto paint = [](const TField<TEdit>& field, bool applies) {
        field->SetColor(applies ? COLOR_WINDOW : COLOR_BTNFACE);
    };
    paint(Edit1_, type != cnLocal);
    paint(Edit2_, type != cnLocal);
    paint(Edit8_, type == cnPServer);
    paint(Edit6_, type == cnSSH);
    CvsObject->ConnectionType = type;
    Timer2Timer();
}

void TPreferences_Form::Timer2Timer() {
    ShowRoot();
    CheckCVSDir(Edit3_->Text());
}

void TPreferences_Form::ShowRoot() {
    Edit4_->SetText(CompileCVSROOT(ConnectionType(), Edit1_->Text(), Edit2_->Text(),
                                   CvsObject->Password, Edit8_->Text(), Edit3_->Text()));
}

void TPreferences_Form::CheckCVSDir(const std::string& path) {
    const bool noRoot = !PropertyMode_ && ConnectionType() == cnLocal && !path.empty() &&
                        !DirectoryExists(SlashSep(path, "CVSROOT"));
    CheckEmptyLabel_->SetText(noRoot ? "no CVSROOT found" : "");
    const bool noName = AsksForProject_ && Edit5_->Text().empty();
    SetValid(!noRoot && !noName);
}

void TPreferences_Form::SaveModulename() {
    if (!AsksForProject_)
        return;
    // The setter moves the object to another folder. A name that the user left alone must not take
    // it away from the one that it is to work in.
    const std::string name = Edit5_->Text();
    // "Ok" may be quicker than the delay that disables it.
    if (AsksForProject_ && name.empty())
        return;
    // One who goes back to the name that was loaded has not left it alone.
    NameChanged_ = NameChanged_ || name != LoadedName_;
    if ((NameChanged_ || SavesShownName_) && name != CvsObject->Modulename())
        CvsObject->Set_Modulename(name);
}

void TPreferences_Form::SaveFormData() {
    TCvsObject& cvs = *CvsObject;
    ShowRoot();
    cvs.PruneEmptyDirs = CheckBox1_->Checked();
    cvs.Server = Edit1_->Text();
    cvs.UserName = Edit2_->Text();
    cvs.Path = Edit3_->Text();
    cvs.SetCVSROOT(Edit4_->Text());
    SaveModulename();
    cvs.Set_CVS_RSH(Edit6_->Text());
    cvs.Set_CVSIGNORE(Edit7_->Text());
    cvs.SpecialPort = Edit8_->Text();
    cvs.ConnectionType = ConnectionType();
}

void TPreferences_Form::OnNextForm() {
    SaveFormData();
}

bool CVSProperty_Frm(TCvsObject& CvsObject) {
    TPreferences_Form form;
    form.CvsObject = &CvsObject;
    form.SetPropertyMode();
    form.LoadFormData2();
    if (form.ShowModal() != mrOk)
        return false;
    form.SaveFormData();
    return true;
}

}  // namespace tandrel
