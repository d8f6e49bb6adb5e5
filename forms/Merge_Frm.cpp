#include "forms/Merge_Frm.h"

#include "cvs/Cvstempl.h"

namespace tandrel {

using namespace framework;

TMerge_Form::TMerge_Form() : TValidatedForm("Merge options") {
    TFormRows rows(*this, 420, 130);
    rows.Heading("Select what to merge");
    // The last two mean nothing.
    ComboBox1_ = rows.Field<TComboBox>(
        "ComboBox1", "Merge type", 0,
        std::vector<std::string>{"None", "Only this version label or branch",
                                 "Plus with  this version label or branch", "", ""});
    First_.Add(
        rows,
        {"Edit3", "Button1", "CheckBox1", {"DateTimePicker1", "MaskEdit1", "UpDown1", "Timer2"}},
        "Version label or branch", false);
    Second_.Add(
        rows,
        {"Edit1", "Button2", "CheckBox2", {"DateTimePicker2", "MaskEdit2", "UpDown2", "Timer3"}},
        "Plus ver.label or branch", false);
    AddButtons(rows);

    Timer1_ = &MakeDelay(*this, "Timer1", 300, [this] { Evaluate(); });
    ComboBox1_->OnChange = [this](TObject*) { Timer1_->Restart(); };
    for (TRevisionFields* fields : {&First_, &Second_}) {
        fields->OnChange = [this] { Timer1_->Restart(); };
        fields->OnScan = [this, fields] {
            fields->ScanTag(*CvsObject);
            Evaluate();
        };
    }
}

void TMerge_Form::LoadFormData() {
    ShowButtons(false);
    const TMergeSpec& spec = CvsObject->MergeSpec;
    ComboBox1_->SetItemIndex(GetMergeTypeIndex(spec.Kind));
    First_.Load(spec.Rev1, spec.UseDate1, spec.Date1);
    Second_.Load(spec.Rev2, spec.UseDate2, spec.Date2);
    Evaluate();
}

void TMerge_Form::Evaluate() {
    Timer1_->SetEnabled(false);
    const int type = ComboBox1_->ItemIndex();
    const bool first = type == mtThisRev || type == mtPlusRevTag;
    const bool second = type == mtPlusRevTag;
    const auto apply = [](TRevisionFields& fields, bool applies) {
        fields.SetRevisionEnabled(applies);
        fields.SetUseDateEnabled(applies);
        fields.Date.SetEnabled(applies && fields.UsesDate());
    };
    apply(First_, first);
    apply(Second_, second);
    SetValid((!first || First_.HasRevision()) && (!second || Second_.HasRevision()));
}

void TMerge_Form::SaveFormData() {
    TMergeSpec& spec = CvsObject->MergeSpec;
    if (const int type = ComboBox1_->ItemIndex(); type >= 0)
        spec.Kind = static_cast<TMergeType>(type);
    spec.UseDate1 = First_.UsesDate();
    spec.UseDate2 = Second_.UsesDate();
    spec.Rev1 = First_.Revision();
    spec.Rev2 = Second_.Revision();
    spec.Date1 = First_.Date.ValueOr(spec.Date1);
    spec.Date2 = Second_.Date.ValueOr(spec.Date2);
}

}  // namespace tandrel
