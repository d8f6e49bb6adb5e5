#pragma once

#include <windows.h>

#include "framework/api.h"

namespace framework {

/// The calls through which files are written, copied and moved. They are the system's own; tests
/// put others in their place to see what happens when a disk is full or a file is held open.
struct TFileFunctions {
    decltype(&::WriteFile) Write = &::WriteFile;
    decltype(&::CopyFileA) Copy = &::CopyFileA;
    decltype(&::MoveFileExA) Move = &::MoveFileExA;
};

/// The functions in use, for the whole process.
FRAMEWORK_API TFileFunctions& FileFunctions();

}  // namespace framework
