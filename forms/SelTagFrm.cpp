#include "forms/SelTagFrm.h"

#include <memory>

#include "core/Cvs_datetext.h"
#include "core/Cvs_time.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"

namespace tandrel {

using namespace framework;

namespace {

// The one selection that is open, or none.
std::unique_ptr<TSelect_TagFrm> Select_TagFrm;

/// Opens the selection for one call.
class TSelection {
public:
    explicit TSelection(TCvsObject& cvs) { Select_TagFrm = std::make_unique<TSelect_TagFrm>(cvs); }
    /// Whether one can be opened; tells when not.
    static bool IsFree(TCvsObject& cvs) {
        if (Select_TagFrm)
            cvs.MessageProc("%s failed,reason the selection is already open ",
                            {Select_TagFrm->Text()});
        return !Select_TagFrm;
    }
    ~TSelection() { Select_TagFrm.reset(); }
    TSelection(const TSelection&) = delete;
    TSelection& operator=(const TSelection&) = delete;

    TSelect_TagFrm* operator->() const { return Select_TagFrm.get(); }
    /// The row that the user chose, or none.
    const TListRow* Choose() const {
        return Select_TagFrm->ShowModal() == mrOk ? Select_TagFrm->Selected() : nullptr;
    }
};

}  // namespace

TSelect_TagFrm::TSelect_TagFrm(TCvsObject& cvs)
    : TForm("Select version label or branch", TFormBorder::Sizeable), Cvs_(cvs) {
    TFormRows rows(*this, 370, 0);
    ListView1_ = &rows.Block<TListView>("ListView1", 240);
    ListView1_->SetImages(Images_.Get());
    auto& refresh = Make<TButton>("BitBtn3", *this, "Refresch(F5)");
    rows.Place(refresh, TFormRows::Margin, rows.Top() + TFormRows::Gap, 90,
               TFormRows::ButtonHeight);
    const TOkCancel buttons = AddOkCancel(rows);
    Ok_ = &buttons.Ok;
    Ok_->SetEnabled(false);
    ListView1_->SetAnchors(akLeft | akTop | akRight | akBottom);
    refresh.SetAnchors(akLeft | akBottom);
    SetMinClientSize(Scale(300), Scale(180));

    Timer1_ = &MakeDelay(*this, "Timer1", 200,
                         [this] { Ok_->SetEnabled(ListView1_->Selected() != nullptr); });
    ListView1_->OnChange = ListView1_->OnClick = [this](TObject*) { Timer1_->Restart(); };
    ListView1_->OnDblClick = [this](TObject*) {
        if (ListView1_->Selected())
            ModalResult = mrOk;
    };
    refresh.OnClick = [this](TObject*) { Refresh(); };
    OnKeyPreview = [this](WPARAM key) {
        if (key != VK_F5)
            return false;
        Refresh();
        return true;
    };
}

void TSelect_TagFrm::LoadTag(TTagShowOption option) {
    Option_ = option;
    ListView1_->SetAccessibleName("Labels and branches");
    ListView1_->AddColumn("Label/Branch", 170);
    ListView1_->AddColumn("Description", 150);
    Fill();
}

void TSelect_TagFrm::LoadRevData() {
    Dates_ = true;
    SetText("Select revisions date");
    ListView1_->SetAccessibleName("Revisions");
    ListView1_->AddColumn("Date", 170);
    ListView1_->AddColumn("Revision", 150);
    Fill();
}

void TSelect_TagFrm::Refresh() {
    if (Dates_)
        Cvs_.ParseLogInfoForRevDate();
    else
        Cvs_.ParseLogInfo();
    Fill();
}

void TSelect_TagFrm::Fill() {
    const TListUpdate update(ListView1_->Rows());
    ListView1_->Rows().Clear();
    if (Dates_)
        FillDates();
    else
        FillTags();
}

void TSelect_TagFrm::FillTags() {
    for (TLogClass& tag : Cvs_.LogListA) {
        if (Option_ != tsoAll && tag.IsLabel != (Option_ == tsoTag))
            continue;
        ListView1_->Rows().Add({.Caption = tag.Name,
                                .SubItems = {tag.IsLabel ? "Version Label(Revision)" : "Branch"},
                                .ImageIndex = tag.IsLabel ? LabelImage : BranchImage,
                                .Data = &tag});
    }
}

void TSelect_TagFrm::FillDates() {
    for (TLogClass& date : Cvs_.LogListB)
        ListView1_->Rows().Add({.Caption = date.Name,
                                .SubItems = {date.Value},
                                .ImageIndex = RevisionImage,
                                .Data = &date});
}

void Get_ProjectTag(TCvsObject& CvsObject, TTagShowOption Option, std::string& Name) {
    if (!TSelection::IsFree(CvsObject))
        return;
    const TSelection selection(CvsObject);
    selection->LoadTag(Option);
    if (const TListRow* row = selection.Choose())
        Name = row->Caption;
}

TDateTime Get_FileRevDate(TCvsObject& CvsObject) {
    if (!TSelection::IsFree(CvsObject))
        return 0;
    const TSelection selection(CvsObject);
    selection->LoadRevData();
    const TListRow* row = selection.Choose();
    const TDateTime date = row ? CustomStrToDateTime2(row->Caption) : 0;
    // No date is none in every time zone.
    return date == 0 ? 0 : UTCToLocalTime(date);
}

}  // namespace tandrel
