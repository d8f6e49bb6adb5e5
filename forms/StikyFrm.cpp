#include "forms/StikyFrm.h"

#include "cvs/Cvstempl.h"

namespace tandrel {

using namespace framework;

TStiky_Frm::TStiky_Frm() : TValidatedForm("Stiky options") {
    constexpr int Room = TFormRows::ScanWidth + 4;
    TFormRows rows(*this, 400, 80);
    rows.Heading("Select CVS branch or date");
    ComboBox1_ = rows.Field<TComboBox>(
        "ComboBox1", "Stiky type", 0,
        std::vector<std::string>{"None", "\"HEAD\" branch", "branch in  the repository",
                                 "version label in the repository", "snapshot from date"});
    Edit3_ = rows.Field<TEdit>("Edit3", "Branch", Room);
    ScanBranch_ = &rows.Beside("Button1", "Scan", TFormRows::ScanWidth);
    Edit6_ = rows.Field<TEdit>("Edit6", "Version label", Room);
    ScanLabel_ = &rows.Beside("Button2", "Scan", TFormRows::ScanWidth);
    Date_.Add(rows, {"DateTimePicker1", "MaskEdit2", "UpDown1", "Timer3"}, false);
    AddButtons(rows);

    Timer1_ = &MakeDelay(*this, "Timer1", 500, [this] { Evaluate(); });
    // Nothing listens to it.
    Make<TTimer>("Timer2", 500u);
    ComboBox1_->OnChange = Edit3_->OnChange =
        Edit6_->OnChange = [this](TObject*) { Timer1_->Restart(); };
    const auto scan = [this](TEdit& edit, TTagShowOption option) {
        const std::string name = CvsObject->Get_CVSProjectTag(option);
        if (!name.empty())
            edit.SetText(name);
    };
    ScanBranch_->OnClick = [this, scan](TObject*) { scan(*Edit3_, tsoBranch); };
    ScanLabel_->OnClick = [this, scan](TObject*) { scan(*Edit6_, tsoTag); };
}

void TStiky_Frm::LoadFormData() {
    ShowButtons(false);
    ComboBox1_->SetItemIndex(GetStikyTypeIndex(CvsObject->StikyType));
    Edit3_->SetText(CvsObject->StikyBranch);
    Edit6_->SetText(CvsObject->StikyTag);
    Date_.Load(CvsObject->StikyDate);
    Evaluate();
}

void TStiky_Frm::Evaluate() {
    Timer1_->SetEnabled(false);
    const int type = ComboBox1_->ItemIndex();
    const auto apply = [](const TField<TEdit>& field, TButton& scan, bool applies) {
        field.Label->SetEnabled(applies);
        SetEditable(*field, applies);
        scan.SetEnabled(applies);
    };
    apply(Edit3_, *ScanBranch_, type == stBranch);
    apply(Edit6_, *ScanLabel_, type == stTag);
    Date_.SetEnabled(type == stDate);
    SetValid(!(type == stBranch && Edit3_->Text().empty()) &&
             !(type == stTag && Edit6_->Text().empty()));
}

void TStiky_Frm::SaveFormData() {
    if (const int type = ComboBox1_->ItemIndex(); type >= 0)
        CvsObject->StikyType = static_cast<TStikyType>(type);
    CvsObject->StikyBranch = Edit3_->Text();
    CvsObject->StikyTag = Edit6_->Text();
    CvsObject->StikyDate = Date_.ValueOr(CvsObject->StikyDate);
}

}  // namespace tandrel
