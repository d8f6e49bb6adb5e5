#include "forms/DateTimeFields.h"

#include <algorithm>
#include <cmath>

#include "core/Cvs_datetext.h"
#include "core/TimeEdits.h"
#include "framework/base/exceptions.h"
#include "framework/base/system_time.h"

namespace tandrel {

using namespace framework;

void TDateTimeFields::Add(TFormRows& rows, const TNames& names, bool seconds) {
    Seconds_ = seconds;
    Picker_ = rows.ShortField<TDateTimePicker>(names.Picker, "Date", 0, 100);
    Time_ = rows.ShortField<TMaskEdit>(names.Time, "Time", 110, seconds ? 62 : 44,
                                       seconds ? "!90:00:00;1;_" : "!90:00;1;_");
    UpDown_ = &rows.Behind<TUpDown>(names.UpDown, 16, 0, 23);
    UpDown_->SetAccessibleName("Hour");
    if (names.Scan) {
        Scan_ = &rows.Behind<TButton>(names.Scan, TFormRows::ScanWidth, "Scan");
        Scan_->OnClick = [this](TObject*) {
            if (OnScan)
                OnScan();
        };
    }
    auto& timer = MakeDelay(rows.Form(), names.HourTimer, 50, [this] {
        (Seconds_ ? SetTime2 : SetTime)(UpDown_->Position(), *Time_);
    });
    UpDown_->OnClick = [&timer](TObject*) { timer.Restart(); };
    rows.EndRow();
}

void TDateTimeFields::Show(TDateTime value) {
    Picker_->SetDate(value);
    Time_->SetText(Seconds_ ? LTimeToStr2(value) : LTimeToStr(value));
}

void TDateTimeFields::Load(TDateTime value) {
    // "No date" is not one that a calendar shows: today, from midnight.
    Show(value == 0 ? std::floor(Now()) : value);
    const double time = value - std::floor(value);
    UpDown_->SetPosition(std::min(23, static_cast<int>(std::lround(time * 24))));
}

TDateTime TDateTimeFields::Value() const {
    return Date() + StrToTime(Time_->Text());
}

TDateTime TDateTimeFields::ValueOr(TDateTime before) const {
    try {
        return Value();
    } catch (const EConvertError&) {
        return before;
    }
}

void TDateTimeFields::SetEnabled(bool enabled) {
    Picker_.SetEnabled(enabled);
    Time_.Label->SetEnabled(enabled);
    SetEditable(*Time_, enabled);
    UpDown_->SetEnabled(enabled);
    if (Scan_)
        Scan_->SetEnabled(enabled);
}

}  // namespace tandrel
