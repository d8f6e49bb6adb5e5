#include "forms/CrLabelFrm.h"

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"

namespace tandrel {

using namespace framework;

TCrLabel_Form::TCrLabel_Form(TCvsObject& cvs, const TVariant& variant)
    : TForm(variant.Caption), Cvs_(cvs), Variant_(variant) {
    TFormRows rows(*this, 360, 80);
    Edit1_ = rows.Field<TEdit>("Edit1", "Label name", 0);
    rows.Line("Label2", "Existing version labels");
    ListView1_ = &rows.Block<TListView>("ListView1", 140);
    ListView1_->AddColumn("Name", 150);
    ListView1_->SetImages(Images_.Get());
    auto& scan = Make<TButton>("Button1", *this, "Scan");
    rows.Place(scan, TFormRows::Margin, rows.Top(), TFormRows::ButtonWidth,
               TFormRows::ButtonHeight);
    rows.Skip(TFormRows::ButtonHeight + TFormRows::Gap);
    CheckBox1_ = &rows.Check("CheckBox1", "Forces reassignment of the label name");
    CheckBox1_->SetVisible(!variant.Deletes);
    CheckBox2_ = &rows.Check("CheckBox2", variant.EvenIfModified);
    Ok_ = &AddOkCancel(rows).Ok;

    Timer1_ =
        &MakeDelay(*this, "Timer1", 300, [this] { Ok_->SetEnabled(!Edit1_->Text().empty()); });
    Timer2_ = &MakeDelay(*this, "Timer2", 300, [this] { TakeSelected(); });
    Edit1_->OnChange = [this](TObject*) { Timer1_->Restart(); };
    scan.OnClick = [this](TObject*) {
        Cvs_.ParseLogInfo();
        Fill();
    };
    if (!variant.Deletes)
        return;
    SetEditable(*Edit1_, false);
    // The keyboard chooses a row, too.
    ListView1_->OnClick = ListView1_->OnSelectItem = [this](TObject*) { Timer2_->Restart(); };
}

void TCrLabel_Form::LoadFormData() {
    if (Cvs_.LogListA.Empty())
        Cvs_.ParseLogInfo();
    Fill();
    Edit1_->SetText(Cvs_.TagName);
    CheckBox1_->SetChecked(Cvs_.TagForceMove);
    CheckBox2_->SetChecked(!Cvs_.TagCheckUncommitted);
    Ok_->SetEnabled(!Cvs_.TagName.empty());
}

void TCrLabel_Form::Fill() {
    const TListUpdate update(ListView1_->Rows());
    ListView1_->Rows().Clear();
    for (TLogClass& tag : Cvs_.LogListA)
        if (tag.IsLabel == Variant_.Labels)
            ListView1_->Rows().Add({.Caption = tag.Name,
                                    .SubItems = {},
                                    .ImageIndex = tag.IsLabel ? LabelImage : BranchImage,
                                    .Data = &tag});
}

void TCrLabel_Form::TakeSelected() {
    if (const TListRow* row = ListView1_->Selected())
        Edit1_->SetText(row->Caption);
}

void TCrLabel_Form::SaveFormData() {
    // Whoever presses "Ok" before the timer ticks means the row, not the name of the one before.
    if (Timer2_->Enabled())
        TakeSelected();
    Cvs_.TagName = Edit1_->Text();
    Cvs_.TagForceMove = CheckBox1_->Checked();
    Cvs_.TagCheckUncommitted = !CheckBox2_->Checked();
}

namespace {

constexpr const char* CreateAnyway = "Create label even if files are modified in  workspace";
constexpr const char* DeleteAnyway = "Delete label even if files are modified in  workspace ";

bool Run(TCvsObject& cvs, const TCrLabel_Form::TVariant& variant) {
    TCrLabel_Form form(cvs, variant);
    form.LoadFormData();
    if (form.ShowModal() != mrOk)
        return false;
    form.SaveFormData();
    return true;
}

}  // namespace

bool sh_CrLabel_Form(TCvsObject& CvsObject) {
    return Run(CvsObject, {"Create Version Label", true, false, CreateAnyway});
}

bool sh_CrBranch_Form(TCvsObject& CvsObject) {
    return Run(CvsObject, {"Create Branch", false, false, CreateAnyway});
}

bool sh_DelLabel_Form(TCvsObject& CvsObject) {
    return Run(CvsObject, {"Delete Version Label", true, true, DeleteAnyway});
}

bool sh_DelBranch_Form(TCvsObject& CvsObject) {
    return Run(CvsObject, {"Delete Branch", false, true, DeleteAnyway});
}

}  // namespace tandrel
