#include "forms/Psw_frm.h"

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/Frames.h"
#include "forms/Pref_Frm.h"

namespace tandrel {

using namespace framework;

TPassword_Form::TPassword_Form() : TValidatedForm("CVS login") {
    TFormRows rows(*this, 380, 80);
    rows.Heading("Enter password ");
    Edit3_ = rows.Field<TEdit>("Edit3", "Password", 0);
    Edit3_->SetPasswordChar('*');
    AddButtons(rows);
    auto& timer = MakeDelay(*this, "Timer1", 300, [this] { Evaluate(); });
    Edit3_->OnChange = [&timer](TObject*) { timer.Restart(); };
}

void TPassword_Form::LoadFormData() {
    ShowButtons(false);
    Edit3_->SetText(CvsObject->Password);
    Evaluate();
}

void TPassword_Form::Evaluate() {
    SetValid(!Edit3_->Text().empty());
}

void TPassword_Form::SaveFormData() {
    CvsObject->Password = Edit3_->Text();
}

void TPassword_Form::OnNextForm() {
    SaveFormData();
}

bool Login_Prepare(TCvsObject& CvsObject) {
    return Show_Frames("CVS login ", {NewForm<TPassword_Form>, NewForm<TConnectForm>}, CvsObject);
}

bool Logout_Prepare(TCvsObject& CvsObject) {
    return Show_Frames("CVS logout", {NewForm<TConnectForm>}, CvsObject);
}

}  // namespace tandrel
