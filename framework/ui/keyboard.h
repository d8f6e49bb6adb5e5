#pragma once

#include <windows.h>

namespace framework {

/// Whether the system can look for the next control from this one. It walks from control to control
/// until it is back, and never comes back when this one, or one around it below the form, is
/// disabled or hidden.
bool CanWalkFrom(HWND control, HWND form);

/// The control before this one that does not lie in `container`, or none.
HWND StopBefore(HWND control, HWND container);

/// Gives a control the focus that the user has not put there himself. The text of an edit is
/// selected, as in dialogs of the system: what is typed replaces it.
void FocusUnasked(HWND control);

/// Takes the mark of a container off a control while it lives: with it, the system would look for
/// the control itself among its children, and walk for ever.
class TNoContainer {
public:
    explicit TNoContainer(HWND control);
    ~TNoContainer();
    TNoContainer(const TNoContainer&) = delete;
    TNoContainer& operator=(const TNoContainer&) = delete;

private:
    HWND Control_;  // none when there was no mark
};

}  // namespace framework
