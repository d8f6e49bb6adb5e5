#include "framework/ui/task_windows.h"

#include "framework/ui/form.h"

namespace framework {
namespace {

struct Collection {
    HWND Exempt;
    TTaskWindowList Windows;
};

BOOL CALLBACK Collect(HWND window, LPARAM parameter) {
    auto& collection = *reinterpret_cast<Collection*>(parameter);
    if (window != collection.Exempt && ::IsWindowVisible(window) && ::IsWindowEnabled(window))
        collection.Windows.push_back(window);
    return TRUE;
}

}  // namespace

TTaskWindowList DisableTaskWindows(HWND exempt) {
    Collection collection{exempt, {}};
    ::EnumThreadWindows(::GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&collection));
    for (HWND window : collection.Windows)
        ::EnableWindow(window, FALSE);
    return collection.Windows;
}

void EnableTaskWindows(const TTaskWindowList& windows) {
    for (HWND window : windows)
        if (::IsWindow(window))
            ::EnableWindow(window, TRUE);
}

TTaskWindowsDisabled::TTaskWindowsDisabled(HWND exempt)
    : Active_(::GetActiveWindow()), Focus_(::GetFocus()), Windows_(DisableTaskWindows(exempt)) {
    if (!Focus_ || (exempt && ::IsChild(exempt, Focus_)))
        return;
    // The user may come back to the form long after the end of the bracket.
    if (auto* form = dynamic_cast<TForm*>(TControl::FromHandle(::GetAncestor(Focus_, GA_ROOT))))
        form->RememberFocus(Focus_);
    // A disabled window leaves the focus to its children, which would still hear the keys.
    ::SetFocus(nullptr);
}

TTaskWindowsDisabled::~TTaskWindowsDisabled() {
    EnableTaskWindows(Windows_);
    // Only within this thread: the user may have gone to another program meanwhile.
    const HWND foreground = ::GetForegroundWindow();
    const bool ours =
        !foreground || ::GetWindowThreadProcessId(foreground, nullptr) == ::GetCurrentThreadId();
    if (!ours || !Active_ || !::IsWindow(Active_) || !::IsWindowEnabled(Active_))
        return;
    ::SetActiveWindow(Active_);
    // A control may have been disabled by a timer; then its form finds another one.
    if (Focus_ && ::IsWindow(Focus_))
        ::SetFocus(::IsWindowEnabled(Focus_) ? Focus_ : Active_);
}

}  // namespace framework
