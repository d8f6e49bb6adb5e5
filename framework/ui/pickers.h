#pragma once

#include "framework/api.h"
#include "framework/base/datetime.h"
#include "framework/ui/control.h"

namespace framework {

/// A date in the user's short form, with a calendar to drop down.
class FRAMEWORK_API TDateTimePicker : public TControl {
public:
    explicit TDateTimePicker(TControl& parent);

    /// The date in whole days.
    TDateTime Date() const;
    /// Shows the date of a value; one that the system's calendar does not reach changes nothing.
    void SetDate(TDateTime value);

    /// The user has chosen a date.
    TNotifyEvent OnChange;

protected:
    LRESULT Notify(NMHDR& header) override;
};

/// Two small arrows that step a number.
class FRAMEWORK_API TUpDown : public TControl {
public:
    TUpDown(TControl& parent, int least, int greatest);

    int Position() const;
    void SetPosition(int position);

    /// The user has pressed an arrow; the position is the new one.
    TNotifyEvent OnClick;

protected:
    void Scrolled(WPARAM what) override;
};

}  // namespace framework
