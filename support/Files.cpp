#include "support/Files.h"

#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"

namespace support {

void WriteBytes(const std::string& path, std::string_view bytes) {
    framework::ForceDirectories(framework::ExtractFileDir(path));
    framework::WriteFileBytes(path, bytes);
}

std::string ReadBytes(const std::string& path) {
    return framework::ReadFileBytes(path);
}

namespace {

/// Also with names that the code page does not have.
void DeleteWide(const std::wstring& path) {
    WIN32_FIND_DATAW entry{};
    framework::FindHandle search(::FindFirstFileW((path + L"\\*").c_str(), &entry));
    for (bool more = static_cast<bool>(search); more;
         more = ::FindNextFileW(search.Get(), &entry) != FALSE) {
        const std::wstring_view found = entry.cFileName;
        if (found == L"." || found == L"..")
            continue;
        const std::wstring name = path + L"\\" + entry.cFileName;
        const DWORD kind =
            entry.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
        if (kind == FILE_ATTRIBUTE_DIRECTORY) {
            DeleteWide(name);
        } else {
            ::SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (!::DeleteFileW(name.c_str()))
                ::RemoveDirectoryW(name.c_str());
        }
    }
    search.Reset();  // an open search would keep the folder
    ::RemoveDirectoryW(path.c_str());
}

}  // namespace

void DeleteFolder(const std::string& path) {
    DeleteWide(framework::ToWide(path));
}

TTempFolder::TTempFolder(const std::string& name, const std::string& parent) {
    char temporary[MAX_PATH];
    ::GetTempPathA(sizeof temporary, temporary);
    static int count = 0;
    Path_ = (parent.empty() ? temporary : parent + "\\") + "tandrel-" + name + "-" +
            std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count);
    DeleteFolder(Path_);
    framework::ForceDirectories(Path_);
}

TTempFolder::~TTempFolder() {
    if (!Keep_)
        DeleteFolder(Path_);
}

}  // namespace support
