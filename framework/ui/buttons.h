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
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void FocusMoves(HWND focus);

    TForm& Form_;
};

/// A box to check, with its caption beside it. The caption is broken into lines where it has to be;
/// an ampersand is an ampersand.
class FRAMEWORK_API TCheckBox : public TControl {
public:
    TCheckBox(TControl& parent, const std::string& caption);

    bool Checked() const;
    /// Does not call OnClick.
    void SetChecked(bool checked);
    /// Does what pressing the box does: it changes its state and calls OnClick. A disabled box does
    /// nothing.
    void Click();
    std::string Text() const override;
    void SetText(const std::string& text) override;
    /// As SetText, but an ampersand stands before the letter that, with Alt, chooses the box.
    void SetMnemonicText(const std::string& text) { TControl::SetText(text); }

    /// The user has changed the state.
    TNotifyEvent OnClick;

protected:
    void Notification(WORD code) override;
};

/// A frame with a caption around controls that belong together. It is not their parent.
class FRAMEWORK_API TGroupBox : public TControl {
public:
    TGroupBox(TControl& parent, const std::string& caption);
};

}  // namespace framework
