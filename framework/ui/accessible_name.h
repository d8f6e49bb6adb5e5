#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// Tells programs that read screens aloud what a window is called, in place of what they find out
/// themselves; an empty name takes that back, which has to be done before the window goes. Does
/// nothing where the system has no means for it.
void TellAccessibleName(HWND window, const std::wstring& name);

}  // namespace framework
