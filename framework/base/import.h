#pragma once

#include <windows.h>

namespace framework {

/// A function of a system library that is loaded when it is first asked for, and stays: for what
/// few programs ever call. None when there is no such library or function.
/// @tparam Function its type, for example decltype(::SHGetFileInfoW).
template <class Function>
Function* ImportFunction(const wchar_t* library, const char* name) {
    const HMODULE module = ::LoadLibraryW(library);
    if (!module)
        return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

}  // namespace framework
