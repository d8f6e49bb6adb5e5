#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "framework/base/text.h"

/// A folder of its own below the system's folder for temporary files, deleted at the end with
/// everything in it. The names are given in the process's code page.
class TempFolder {
public:
    TempFolder() {
        static int Count = 0;
        char temp[1024] = {};
        ::GetTempPathA(sizeof(temp), temp);
        Path_ = std::string(temp) + "TandrelTest" + std::to_string(::GetCurrentProcessId()) + "_" +
                std::to_string(++Count);
        ::CreateDirectoryA(Path_.c_str(), nullptr);
    }
    ~TempFolder() {
        std::error_code ignored;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(framework::ToWide(Path_), ignored))
            ::SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
        std::filesystem::remove_all(framework::ToWide(Path_), ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return Path_; }
    /// The full name of something in the folder.
    std::string operator/(std::string_view name) const { return Path_ + "\\" + std::string(name); }

    std::string MakeFolder(std::string_view name) const {
        ::CreateDirectoryA((*this / name).c_str(), nullptr);
        return *this / name;
    }
    std::string MakeFile(std::string_view name, std::string_view bytes = "text") const {
        std::ofstream(*this / name, std::ios::binary).write(bytes.data(), std::ssize(bytes));
        return *this / name;
    }

private:
    std::string Path_;
};

/// All bytes of a file; empty when it cannot be read.
inline std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
