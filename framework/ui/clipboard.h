#pragma once

#include <windows.h>

#include <string>

#include "framework/api.h"

namespace framework {

/// Puts a text on the clipboard, in the place of what is there. Nothing happens while another
/// program holds it. @param text lines end in CR LF.
FRAMEWORK_API void PutOnClipboard(HWND owner, const std::string& text);
/// The clipboard's text; empty when it has none.
FRAMEWORK_API std::string TextOfClipboard(HWND owner);

}  // namespace framework
