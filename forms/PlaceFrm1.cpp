#include "forms/PlaceFrm1.h"

#include "core/Cvs_files.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/Filter_frm.h"
#include "forms/Frames.h"
#include "forms/Msg_frm.h"
#include "forms/Pref_Frm.h"

namespace tandrel {

using namespace framework;

TPlace_Frm1::TPlace_Frm1() : TFolderStep("Place project into CVS") {
    TFormRows rows(*this, 400, 90);
    rows.Heading("Select working directory ");
    AddFolder(rows, "Target directory");
    CheckBox2_ = &rows.Check("CheckBox2", "Create copy of working directory");
    CheckEmptyLabel_ = &rows.Warning("CheckEmptyLabel");
    AddButtons(rows);
}

std::string TPlace_Frm1::LoadedFolder() const {
    return CvsObject->WorkingDirectory();
}

void TPlace_Frm1::LoadFormData() {
    CheckBox2_->SetChecked(CvsObject->KeepProjectCopy);
    TFolderStep::LoadFormData();
}

void TPlace_Frm1::CheckFolder() {
    const std::string folder = Edit3_->Text();
    const bool exists = IsFolderEmpty(folder);
    CheckEmptyLabel_->SetText(folder.empty() || exists ? "" : "Directory is empty");
    SetValid(!folder.empty() && exists);
}

void TPlace_Frm1::SaveFormData() {
    CvsObject->Set_WorkingDirectory(Edit3_->Text());
    CvsObject->WizardDataAccepted = true;
    CvsObject->KeepProjectCopy = CheckBox2_->Checked();
}

bool PlaceProject_Prepare(TCvsObject& CvsObject) {
    return Show_Frames("Place project into CVS",
                       {NewForm<TPlace_Frm1>, NewForm<TPreferences_Form>, NewForm<TMessage_Frm>,
                        NewForm<TFilter_Form>},
                       CvsObject);
}

}  // namespace tandrel
