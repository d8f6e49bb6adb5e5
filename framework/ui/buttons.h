#pragma once

#include <string>

#include "framework/api.h"
#include "framework/ui/control.h"
#include "framework/ui/form.h"

namespace framework {

/// What the keyboard does with a button.
enum class TButtonRole {
    Plain,
    Default,  ///< Enter presses it while no other button has the focus.
    Cancel,   ///< Escape presses it.
    DefaultAndCancel
};

/// A push button.
class FRAMEWORK_API TButton : public TControl {
public:
    TButton(TControl& parent, const std::string& caption, TButtonRole role = TButtonRole::Plain);
    ~TButton() override;

    /// Does what pressing the button does: the form ends with ModalResult if that is not mrNone,
    /// and OnClick is called. A disabled button does nothing.
    void Click();

    TModalResult ModalResult = mrNone;
    TNotifyEvent OnClick;

protected:
    void Notification(WORD code) override;

private:
    TForm& Form_;
};

}  // namespace framework
