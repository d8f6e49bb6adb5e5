#pragma once

#include <windows.h>

#include "framework/api.h"

namespace framework {

/// The calls through which files are read, written, copied, moved and listed. They are the system's
/// own; tests put others in their place to see what happens when a disk is full, a file is held
/// open or a folder is kept by somebody else.
struct TFileFunctions {
    decltype(&::ReadFile) Read = &::ReadFile;  ///< Of what children write.
    decltype(&::WriteFile) Write = &::WriteFile;
    decltype(&::CopyFileA) Copy = &::CopyFileA;
    decltype(&::MoveFileExA) Move = &::MoveFileExA;
    decltype(&::FindFirstFileW) FindFirst = &::FindFirstFileW;
    decltype(&::FindNextFileW) FindNext = &::FindNextFileW;
};

/// The functions in use, for the whole process.
FRAMEWORK_API TFileFunctions& FileFunctions();

}  // namespace framework
