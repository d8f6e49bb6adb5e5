#include "framework/base/import.h"

#include <string>

namespace framework {

namespace {

/// By its full path, for systems that do not know how to look into their own folder alone.
HMODULE LoadFromSystemFolder(const wchar_t* library) {
    std::wstring path(::GetSystemDirectoryW(nullptr, 0), L'\0');
    path.resize(::GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
    if (path.empty())
        return nullptr;
    path.append(L"\\").append(library);
    return ::LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace

HMODULE LoadSystemLibrary(const wchar_t* library) {
    const HMODULE module = ::LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (module || ::GetLastError() != ERROR_INVALID_PARAMETER)
        return module;
    return LoadFromSystemFolder(library);
}

}  // namespace framework
