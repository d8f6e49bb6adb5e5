#pragma once

#include <functional>

#include "forms/Layout.h"
#include "framework/base/datetime.h"
#include "framework/ui/pickers.h"

namespace tandrel {

/// A row of controls for a date and a time of the day, whose hour two arrows step.
class TDateTimeFields {
public:
    /// The components' names; without a name no "Scan" button is made.
    struct TNames {
        const char* Picker;
        const char* Time;
        const char* UpDown;
        const char* HourTimer;
        const char* Scan = nullptr;
    };
    /// @param seconds the time is edited with its seconds.
    void Add(TFormRows& rows, const TNames& names, bool seconds);

    /// Shows a value, local time, and sets the arrows to its hour; zero, "no date", as today from
    /// midnight.
    void Load(framework::TDateTime value);
    /// Shows the date and the time of a value, and leaves the arrows.
    void Show(framework::TDateTime value);
    /// The date in whole days.
    framework::TDateTime Date() const { return Picker_->Date(); }
    /// The date and the time. Raises EConvertError when the time is none.
    framework::TDateTime Value() const;
    /// As Value; `before` when the time is none.
    framework::TDateTime ValueOr(framework::TDateTime before) const;
    /// Whether the user can change the date and the time, which show all the same.
    void SetEnabled(bool enabled);

    /// The "Scan" button was pressed.
    std::function<void()> OnScan;

private:
    TField<framework::TDateTimePicker> Picker_;
    TField<framework::TMaskEdit> Time_;
    framework::TUpDown* UpDown_ = nullptr;
    framework::TButton* Scan_ = nullptr;
    bool Seconds_ = false;
};

}  // namespace tandrel
