#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "framework/api.h"
#include "framework/base/handle.h"
#include "framework/ui/control.h"

namespace framework {

class TButton;
class TMainMenu;

/// How a modal form ended; zero while it is open.
using TModalResult = int;
inline constexpr TModalResult mrNone = 0;
inline constexpr TModalResult mrOk = IDOK;
inline constexpr TModalResult mrCancel = IDCANCEL;

/// What a form's frame offers.
enum class TFormBorder {
    Dialog,    ///< Fixed size, no buttons but Close.
    Sizeable,  ///< A dialog that can be made larger.
    Main       ///< A program's window: sizeable, with all buttons.
};

/// A top-level window with a dialog's keyboard: Tab moves on, Enter presses the default button,
/// Escape the cancel button. Its design units are pixels at 96 dpi.
///
/// The window exists, hidden, from construction on. Controls are its components; make them with
/// Make<TControl...>(name, parent, ...).
class FRAMEWORK_API TForm : public TControl {
public:
    explicit TForm(const std::string& caption, TFormBorder border = TFormBorder::Dialog);
    ~TForm() override;

    /// Design units to pixels at the system's resolution.
    int Scale(int units) const { return ::MulDiv(units, Dpi_, 96); }
    /// Sets the size of the inner area, in pixels, and centres the form on the screen.
    void SetClientSize(int width, int height);
    /// The same with the size of the whole form.
    void SetSize(int width, int height);

    /// The least size of the inner area that the user can give a sizeable form, in pixels.
    void SetMinClientSize(int width, int height) { MinClientSize_ = {width, height}; }
    /// The part of the screen that windows may use, where the form is centred.
    static RECT WorkArea();

    /// Makes the form a part of another one: without frame, a child of that control, hidden until
    /// it is shown. Its owner stays the same.
    void HostIn(TControl& parent);
    /// Whether HostIn was called.
    bool Hosted() const { return Parent() != nullptr; }

    void SetVisible(bool visible) override;
    void Show() { SetVisible(true); }
    /// Keeps the form above all windows that are not.
    void SetStayOnTop(bool stayOnTop);
    /// Greys the Close item of the window menu, and with it the title bar's close box.
    void DisableClose();

    /// Shows the form, with all other windows of the thread disabled, until it gets a modal result,
    /// which is returned. Closing the form is mrCancel. The form is hidden afterwards.
    TModalResult ShowModal();
    TModalResult ModalResult = mrNone;

    /// Makes Enter press that button from now on; none for no button.
    void SetDefaultButton(TButton* button);
    /// The control that gets the focus when the form is active the next time and can be used: one
    /// that stands on the form, anything else changes nothing. Whoever takes the focus from a form
    /// tells here who had it.
    void RememberFocus(HWND focus);
    /// Sees the keys pressed in the form and in forms hosted by it before the control that has the
    /// focus does, the hosted form first; true when it used the key up.
    std::function<bool(WPARAM key)> OnKeyPreview;

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool HandleKey(WPARAM key) override;
    /// The form was shown, or its page of a frame. The place to set the focus.
    virtual void Shown() {}
    /// The user wants to close the form. A modal form ends, another one is hidden.
    virtual void CloseQuery();
    /// The user logs off or shuts the machine down: whether that suits. No place for dialogs.
    virtual bool QueryEndSession() { return true; }
    /// It happens now, whatever was answered: what is to be kept has to be kept before this
    /// returns.
    virtual void EndSession() {}

private:
    friend class TApplication;
    friend class TButton;
    friend class TMainMenu;
    bool PreviewKey(const MSG& message);
    SIZE WithFrame(SIZE inner) const;
    void RestoreFocus();
    TModalResult RunModal();
    TButton* ButtonOf(WORD id) const;
    // Gives one button the look of the default one, of all that stand on the form or on forms that
    // it hosts: the one that has the focus, or else the default button.
    void MarkDefaultButton(HWND focus);

    int Dpi_;
    GdiObject Font_;
    HWND LastFocus_ = nullptr;
    TButton* DefaultButton_ = nullptr;  // the button that Enter presses, or none
    TButton* CancelButton_ = nullptr;   // the button that Escape presses, or none
    TMainMenu* Menu_ = nullptr;         // the menu bar, or none
    bool Modal_ = false;
    SIZE MinClientSize_{};
};

}  // namespace framework
