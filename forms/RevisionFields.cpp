#include "forms/RevisionFields.h"

#include "cvs/Cvstempl.h"

namespace tandrel {

using namespace framework;

void TRevisionFields::Add(TFormRows& rows, const TNames& names, const std::string& label,
                          bool seconds) {
    Edit_ = rows.Field<TEdit>(names.Edit, label, TFormRows::ScanWidth + 4);
    Edit_->SetMaxLength(static_cast<int>(LongestRevision));
    Scan_ = &rows.Beside(names.Scan, "Scan", TFormRows::ScanWidth);
    rows.SetIndent(16);
    UseDate_ = &rows.Check(names.UseDate, "Date");
    Date.Add(rows, names.Date, seconds);
    rows.SetIndent(0);
    const auto changed = [this](TObject*) {
        if (OnChange)
            OnChange();
    };
    Edit_->OnChange = changed;
    UseDate_->OnClick = changed;
    Scan_->OnClick = [this](TObject*) {
        if (OnScan)
            OnScan();
    };
}

bool TRevisionFields::ScanTag(TCvsObject& cvs) {
    const std::string name = cvs.Get_CVSProjectTag(tsoAll);
    if (name.empty())
        return false;
    Edit_->SetText(name);
    return true;
}

void TRevisionFields::SetRevisionEnabled(bool enabled) {
    Edit_.Label->SetEnabled(enabled);
    SetEditable(*Edit_, enabled);
    Scan_->SetEnabled(enabled);
}

void TRevisionFields::Load(std::string_view revision, bool useDate, TDateTime date) {
    Edit_->SetText(std::string(revision));
    UseDate_->SetChecked(useDate);
    Date.Load(date);
}

}  // namespace tandrel
