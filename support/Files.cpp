#include "support/Files.h"

#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/paths.h"

namespace support {
namespace {

framework::FileHandle Open(const std::string& path, DWORD access, DWORD disposition) {
    framework::FileHandle file(::CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr,
                                             disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw framework::EInOutError(::GetLastError(), path);
    return file;
}

}  // namespace

void WriteBytes(const std::string& path, std::string_view bytes) {
    framework::ForceDirectories(framework::ExtractFileDir(path));
    const auto file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    if (!::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        throw framework::EInOutError(::GetLastError(), path);
}

std::string ReadBytes(const std::string& path) {
    const auto file = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::string bytes(::GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        throw framework::EInOutError(::GetLastError(), path);
    bytes.resize(read);
    return bytes;
}

void DeleteFolder(const std::string& path) {
    framework::TFileSearch search(path + "\\*.*", framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..") continue;
        const std::string name = path + "\\" + entry.Name;
        if (entry.IsDirectory() && !entry.IsLink()) {
            DeleteFolder(name);
        } else {
            ::SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (!::DeleteFileA(name.c_str())) ::RemoveDirectoryA(name.c_str());
        }
    }
    search = framework::TFileSearch("", 0);  // an open search would keep the folder
    ::RemoveDirectoryA(path.c_str());
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
    if (!Keep_) DeleteFolder(Path_);
}

}  // namespace support
