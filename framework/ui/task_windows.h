#pragma once

#include <windows.h>

#include <vector>

#include "framework/api.h"

namespace framework {

/// The windows that DisableTaskWindows disabled.
using TTaskWindowList = std::vector<HWND>;

/// Disables every visible, enabled top-level window of the calling thread but `exempt` (none for
/// all) and returns those it disabled.
FRAMEWORK_API TTaskWindowList DisableTaskWindows(HWND exempt);
/// Enables the windows of the list that still exist.
FRAMEWORK_API void EnableTaskWindows(const TTaskWindowList& windows);

/// The bracket of the two: all windows of the thread are disabled while it lives. It takes the
/// keyboard away from them, too, and in the end gives it back, with the activation, to the window
/// that had it.
class FRAMEWORK_API TTaskWindowsDisabled {
public:
    explicit TTaskWindowsDisabled(HWND exempt = nullptr);
    ~TTaskWindowsDisabled();
    TTaskWindowsDisabled(const TTaskWindowsDisabled&) = delete;
    TTaskWindowsDisabled& operator=(const TTaskWindowsDisabled&) = delete;

private:
    HWND Active_;
    HWND Focus_;
    TTaskWindowList Windows_;
};

}  // namespace framework
