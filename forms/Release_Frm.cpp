#include "forms/Release_Frm.h"

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"

namespace tandrel {

using namespace framework;

TRelease_Form::TRelease_Form() : TForm("CVS release") {
    TFormRows rows(*this, 340, 0);
    rows.Heading("Select release options");
    CheckBox1_ = &rows.Check("CheckBox1", "Delete CVS controls files (export)");
    CheckBox2_ = &rows.Check("CheckBox2", "Delete working  directory");
    rows.SetIndent(16);
    CheckBox3_ = &rows.Check("CheckBox3", "Force delete all files, including non-cvs files");
    CheckBox1_->OnClick = [this](TObject*) { CheckBox1Click(); };
    CheckBox2_->OnClick = [this](TObject*) { CheckBox2Click(); };
    AddOkCancel(rows);
}

void TRelease_Form::CheckBox1Click() {
    if (!CheckBox1_->Checked())
        return;
    CheckBox2_->SetChecked(false);
    CheckBox2Click();
}

void TRelease_Form::CheckBox2Click() {
    const bool checked = CheckBox2_->Checked();
    if (checked)
        CheckBox1_->SetChecked(false);
    else
        CheckBox3_->SetChecked(false);
    CheckBox3_->SetEnabled(checked);
}

void TRelease_Form::LoadFormData(const TCvsObject& cvs) {
    CheckBox1_->SetChecked(cvs.ReleaseExport);
    CheckBox2_->SetChecked(cvs.ReleaseDelete);
    CheckBox3_->SetChecked(cvs.ReleaseForce);
    CheckBox1Click();
    CheckBox2Click();
}

void TRelease_Form::SaveFormData(TCvsObject& cvs) const {
    cvs.ReleaseExport = CheckBox1_->Checked();
    cvs.ReleaseDelete = CheckBox2_->Checked();
    cvs.ReleaseForce = CheckBox3_->Checked();
}

bool sh_Release_Form(TCvsObject& CvsObject) {
    TRelease_Form form;
    form.LoadFormData(CvsObject);
    if (form.ShowModal() != mrOk)
        return false;
    form.SaveFormData(CvsObject);
    return true;
}

}  // namespace tandrel
