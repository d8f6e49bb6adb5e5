#include "support/Files.h"

#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"

namespace support {

void WriteBytes(const std::string& path, std::string_view bytes) {
    framework::ForceDirectories(framework::ExtractFileDir(path));
    framework::WriteFileBytes(path, bytes);
}

std::string ReadBytes(const std::string& path) {
    return framework::ReadFileBytes(path);
}

void DeleteFolder(const std::string& path) {
    framework::TFileSearch search(path + "\\*.*", framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        const std::string name = path + "\\" + entry.Name;
        if (entry.IsDirectory() && !entry.IsLink()) {
            DeleteFolder(name);
        } else {
            ::SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (!::DeleteFileA(name.c_str()))
                ::RemoveDirectoryA(name.c_str());
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
    if (!Keep_)
        DeleteFolder(Path_);
}

}  // namespace support
