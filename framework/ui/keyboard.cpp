#include "framework/ui/keyboard.h"

#include "framework/ui/edits.h"

namespace framework {

bool CanWalkFrom(HWND control, HWND form) {
    if (!control || !::IsChild(form, control))
        return true;
    for (HWND window = control; window && window != form; window = ::GetParent(window))
        if (!::IsWindowEnabled(window) || !(::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE))
            return false;
    return true;
}

HWND StopBefore(HWND control, HWND container) {
    const HWND form = ::GetAncestor(control, GA_ROOT);
    if (!CanWalkFrom(control, form))
        return nullptr;
    constexpr int Most = 1000;  // of a form that has no other stop
    const TNoContainer plain(control);
    HWND stop = control;
    for (int i = 0; i < Most; ++i) {
        stop = ::GetNextDlgTabItem(form, stop, TRUE);
        if (!stop || stop == control)
            return nullptr;
        if (stop != container && !::IsChild(container, stop))
            return stop;
    }
    return nullptr;
}

void FocusUnasked(HWND control) {
    if (auto* const edit = dynamic_cast<TEdit*>(TControl::FromHandle(control)))
        edit->SelectAll();
    ::SetFocus(control);
}

TNoContainer::TNoContainer(HWND control) : Control_(nullptr) {
    const LONG_PTR style = control ? ::GetWindowLongPtrW(control, GWL_EXSTYLE) : 0;
    if (!(style & WS_EX_CONTROLPARENT))
        return;
    Control_ = control;
    ::SetWindowLongPtrW(Control_, GWL_EXSTYLE, style & ~LONG_PTR{WS_EX_CONTROLPARENT});
}

TNoContainer::~TNoContainer() {
    if (Control_ && ::IsWindow(Control_))
        ::SetWindowLongPtrW(Control_, GWL_EXSTYLE,
                            ::GetWindowLongPtrW(Control_, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
}

}  // namespace framework
