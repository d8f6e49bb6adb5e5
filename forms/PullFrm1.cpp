#include "forms/PullFrm1.h"

#include "core/Cvs_utils.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/Frames.h"
#include "forms/Pref_Frm.h"
#include "forms/StikyFrm.h"
#include "framework/base/paths.h"

namespace tandrel {

using namespace framework;

TChechOut_Frm1::TChechOut_Frm1() : TFolderStep("Pull project from CVS") {
    TFormRows rows(*this, 400, 90);
    rows.Heading("Select root project directory and type pull operation");
    AddFolder(rows, "Root directory");
    CheckBox1_ = &rows.Check("CheckBox1", "Dont create CVS directories (export only)");
    AddButtons(rows);
}

std::string TChechOut_Frm1::LoadedFolder() const {
    return CvsObject->ProjectRoot();
}

void TChechOut_Frm1::LoadFormData() {
    CheckBox1_->SetChecked(CvsObject->ExportInsteadOfCheckout);
    TFolderStep::LoadFormData();
}

void TChechOut_Frm1::CheckFolder() {
    SetValid(!Edit3_->Text().empty());
}

void TChechOut_Frm1::SaveFormData() {
    const std::string root = Edit3_->Text();
    CvsObject->Set_Modulename(ExtractFileName(RemoveSlashSep(root)));
    CvsObject->Set_ProjectRoot(root);
    CvsObject->WizardDataAccepted = true;
    CvsObject->ExportInsteadOfCheckout = CheckBox1_->Checked();
}

bool PullProject_Prepare(TCvsObject& CvsObject) {
    const auto preferences = []() -> TFrameDetForm& {
        auto& form = Application().CreateForm<TPreferences_Form>();
        form.SetSavesShownName();
        return form;
    };
    return Show_Frames("Pull project from CVS",
                       {NewForm<TChechOut_Frm1>, preferences, NewForm<TStiky_Frm>}, CvsObject);
}

}  // namespace tandrel
