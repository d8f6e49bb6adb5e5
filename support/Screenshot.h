#pragma once

#include <windows.h>

#include <string>

namespace support {

/// Writes a picture of a window, frame and all, as a PNG file; folders above it are made. The
/// window has to be visible; what of it is not painted yet is painted first. Raises
/// framework::EOSError or framework::EInOutError.
void SaveScreenshot(HWND window, const std::string& path);

}  // namespace support
