#pragma once

#include <windows.h>

#include "framework/api.h"

namespace framework {

/// The calls through which files are opened, read, written, copied, moved, deleted and listed. They
/// are the system's own; tests put others in their place to see what happens when a disk is full, a
/// file is held open or a folder is kept by somebody else, and need not wait as long as users do.
struct TFileFunctions {
    decltype(&::CreateFileA) Open = &::CreateFileA;  ///< For writing.
    decltype(&::ReadFile) Read = &::ReadFile;        ///< Of what children write.
    decltype(&::WriteFile) Write = &::WriteFile;
    decltype(&::CopyFileA) Copy = &::CopyFileA;
    decltype(&::MoveFileExA) Move = &::MoveFileExA;
    decltype(&::DeleteFileA) Delete = &::DeleteFileA;
    decltype(&::RemoveDirectoryA) RemoveFolder = &::RemoveDirectoryA;
    decltype(&::GetFileAttributesA) Attributes = &::GetFileAttributesA;  ///< After a failure.
    decltype(&::FindFirstFileW) FindFirst = &::FindFirstFileW;
    decltype(&::FindNextFileW) FindNext = &::FindNextFileW;
    decltype(&::CreateFileA) Probe = &::CreateFileA;    ///< After a failure: is there a right?
    decltype(&::GetTickCount) Ticks = &::GetTickCount;  ///< The clock while others hold a file.
    decltype(&::Sleep) Sleep = &::Sleep;
};

/// The functions in use, for the whole process.
FRAMEWORK_API TFileFunctions& FileFunctions();

}  // namespace framework
