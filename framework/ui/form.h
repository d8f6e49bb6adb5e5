#pragma once

#include <windows.h>

#include <string>

#include "framework/api.h"
#include "framework/base/handle.h"
#include "framework/ui/control.h"

namespace framework {

class TButton;

/// How a modal form ended; zero while it is open.
using TModalResult = int;
inline constexpr TModalResult mrNone = 0;
inline constexpr TModalResult mrOk = IDOK;
inline constexpr TModalResult mrCancel = IDCANCEL;

/// A top-level window with a dialog's border and keyboard: Tab moves on, Enter presses the default
/// button, Escape the cancel button. Its design units are pixels at 96 dpi.
///
/// The window exists, hidden, from construction on. Controls are its components; make them with
/// Make<TControl...>(name, parent, ...).
class FRAMEWORK_API TForm : public TControl {
public:
    explicit TForm(const std::string& caption);
    ~TForm() override;

    /// Design units to pixels at the system's resolution.
    int Scale(int units) const { return ::MulDiv(units, Dpi_, 96); }
    /// Sets the size of the inner area, in pixels, and centres the form on the screen.
    void SetClientSize(int width, int height);

    /// The part of the screen that windows may use, where the form is centred.
    static RECT WorkArea();

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

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    /// The user wants to close the form. A modal form ends, another one is hidden.
    virtual void CloseQuery();

private:
    friend class TButton;
    void Centre();
    void RestoreFocus();
    TModalResult RunModal();
    TButton* ButtonOf(WORD id) const;

    int Dpi_;
    GdiObject Font_;
    HWND LastFocus_ = nullptr;
    TButton* DefaultButton_ = nullptr;  // the button that Enter presses, or none
    TButton* CancelButton_ = nullptr;   // the button that Escape presses, or none
    bool Modal_ = false;
};

}  // namespace framework
