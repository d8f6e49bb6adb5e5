#pragma once

#include <windows.h>

#include "framework/api.h"

namespace framework {

/// Loads a library of the system, and it stays. Only the system's folder is looked into: a library
/// of that name beside the program, in the current folder or on the path is somebody else's. None,
/// with the system's last error, when there is no such library.
/// @param library a name without a folder.
FRAMEWORK_API HMODULE LoadSystemLibrary(const wchar_t* library);

/// A function of a system library that is loaded when it is first asked for, and stays: for what
/// few programs ever call. None when there is no such library or function.
/// @tparam Function its type, for example decltype(::SHGetFileInfoW).
template <class Function>
Function* ImportFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadSystemLibrary(library);
    if (!module)
        return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

}  // namespace framework
