#include "framework/ui/task_windows.h"

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
    for (HWND window : collection.Windows) ::EnableWindow(window, FALSE);
    return collection.Windows;
}

void EnableTaskWindows(const TTaskWindowList& windows) {
    for (HWND window : windows)
        if (::IsWindow(window)) ::EnableWindow(window, TRUE);
}

}  // namespace framework
