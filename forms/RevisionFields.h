#pragma once

#include <functional>
#include <string>

#include "cvs/CvsOptions.h"
#include "forms/DateTimeFields.h"

namespace tandrel {

class TCvsObject;

/// The controls for one revision of a comparison or a merge: a label or branch, and a date.
class TRevisionFields {
public:
    struct TNames {
        const char* Edit;
        const char* Scan;
        const char* UseDate;
        TDateTimeFields::TNames Date;
    };
    /// @param label the caption of the label or branch. @param seconds see TDateTimeFields.
    void Add(TFormRows& rows, const TNames& names, const std::string& label, bool seconds);

    bool HasRevision() const { return !Edit_->Text().empty(); }
    bool UsesDate() const { return UseDate_->Checked(); }

    /// Lets the user choose a symbolic name; false, and nothing has changed, when none was.
    bool ScanTag(TCvsObject& cvs);
    /// Whether the user can change the revision, by typing or by its "Scan" button.
    void SetRevisionEnabled(bool enabled);
    void SetUseDateEnabled(bool enabled) { UseDate_->SetEnabled(enabled); }

    TDateTimeFields Date;
    /// The revision or the check box has changed.
    std::function<void()> OnChange;
    /// The "Scan" button of the revision was pressed.
    std::function<void()> OnScan;

    /// Shows a revision. @param date local time, see TDateTimeFields::Load.
    void Load(std::string_view revision, bool useDate, framework::TDateTime date);
    /// No longer than a revision may be.
    std::string Revision() const { return Edit_->Text().substr(0, LongestRevision); }

private:
    static constexpr std::size_t LongestRevision = 63;

    TField<framework::TEdit> Edit_;
    framework::TButton* Scan_ = nullptr;
    framework::TCheckBox* UseDate_ = nullptr;
};

}  // namespace tandrel
