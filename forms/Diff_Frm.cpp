#include "forms/Diff_Frm.h"

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"

namespace tandrel {

using namespace framework;

TDiff_Form::TDiff_Form() : TValidatedForm("CVS diff") {
    TFormRows rows(*this, 430, 130);
    // The last two mean nothing.
    ComboBox1_ = rows.Field<TComboBox>(
        "ComboBox1", "Diff type", 0,
        std::vector<std::string>{"Working copy againts the \"HEAD\" branch",
                                 "Working copy againts the branch or date",
                                 "Two revision/branch/date againts each other", "", ""});
    First_.Add(rows,
               {"Edit3",
                "Button1",
                "CheckBox1",
                {"DateTimePicker1", "MaskEdit1", "UpDown1", "Timer2", "Button3"}},
               "Version label or branch", true);
    Second_.Add(rows,
                {"Edit1",
                 "Button2",
                 "CheckBox2",
                 {"DateTimePicker2", "MaskEdit2", "UpDown2", "Timer3", "Button4"}},
                "Plus ver.label or branch", true);
    AddButtons(rows);

    Timer1_ = &MakeDelay(*this, "Timer1", 300, [this] { UpdateState(); });
    ComboBox1_->OnChange = [this](TObject*) { Timer1_->Restart(); };
    for (TRevisionFields* fields : {&First_, &Second_}) {
        fields->OnChange = [this] { Timer1_->Restart(); };
        fields->OnScan = [this, fields] {
            fields->ScanTag(*CvsObject);
            UpdateState();
        };
        fields->Date.OnScan = [this, fields] {
            const TDateTime date = CvsObject->Get_CVSFileRevDate();
            if (date > 0)
                fields->Date.Show(date);
        };
    }
}

void TDiff_Form::LoadFormData() {
    ShowButtons(false);
    const TRevisionSpec& spec = CvsObject->DiffSpec;
    // The newest revision is no choice here.
    ComboBox1_->SetItemIndex(spec.Kind >= dctMostRecent ? dctHead : spec.Kind);
    First_.Load(spec.Rev1, spec.UseDate1, spec.Date1);
    Second_.Load(spec.Rev2, spec.UseDate2, spec.Date2);
    UpdateState();
}

void TDiff_Form::UpdateState() {
    // An update that was asked for otherwise makes the one that waits needless.
    Timer1_->SetEnabled(false);
    const int kind = ComboBox1_->ItemIndex();
    const bool first = kind == dctRevision || kind == dctTwoRevision;
    const bool second = kind == dctTwoRevision;
    // A date takes the place of the revision.
    const auto apply = [](TRevisionFields& fields, bool applies) {
        const bool date = applies && fields.UsesDate();
        fields.SetRevisionEnabled(applies && !date);
        fields.SetUseDateEnabled(applies);
        fields.Date.SetEnabled(date);
        return !applies || date || fields.HasRevision();
    };
    const bool firstValid = apply(First_, first);
    const bool secondValid = apply(Second_, second);
    SetValid(firstValid && secondValid);
}

void TDiff_Form::SaveFormData() {
    TRevisionSpec& spec = CvsObject->DiffSpec;
    if (const int kind = ComboBox1_->ItemIndex(); kind >= 0)
        spec.Kind = static_cast<TDiffCompareType>(kind);
    spec.UseDate1 = First_.UsesDate();
    spec.UseDate2 = Second_.UsesDate();
    spec.Rev1 = First_.Revision();
    spec.Rev2 = Second_.Revision();
    spec.Date1 = First_.Date.Value();
    spec.Date2 = Second_.Date.Value();
}

bool sh_Diff_Form(TCvsObject& CvsObject) {
    TDiff_Form form;
    form.CvsObject = &CvsObject;
    form.LoadFormData();
    form.ShowButtons(true);
    if (form.ShowModal() != mrOk)
        return false;
    form.SaveFormData();
    return true;
}

}  // namespace tandrel
