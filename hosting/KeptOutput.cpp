#include "hosting/KeptOutput.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"

namespace hosting {

using namespace framework;
using tandrel::SlashSep;

void TKeptOutput::Begin() {
    File_.Reset();
    IsBegun_ = true;
}

void TKeptOutput::End() {
    File_.Reset();
    IsBegun_ = false;
}

void TKeptOutput::Add(const std::string& text) {
    try {
        if (std::exchange(IsBegun_, false))
            Open();
    } catch (const EInOutError&) {
        // The command is what matters, not the copy of what it says.
        return;
    }
    DWORD written = 0;
    if (File_ &&
        !::WriteFile(File_.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        File_.Reset();
}

void TKeptOutput::Open() {
    ForceDirectories(Folder_);
    DeleteOldest();
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), "%04u%02u%02u-%02u%02u%02u-%03u.txt", now.wYear,
                  now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    Path_ = SlashSep(Folder_, name.data());
    File_.Reset(::CreateFileA(Path_.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_DELETE,
                              nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void TKeptOutput::DeleteOldest() const {
    std::vector<std::string> names;
    TFileSearch search(SlashSep(Folder_, "*.txt"), faArchive);
    for (TSearchRec entry; search.Next(entry);)
        names.push_back(entry.Name);
    // Their names are their times.
    std::ranges::sort(names);
    // Nobody waits for one that is held: there is always a next time.
    for (std::size_t i = 0; i + MostKept <= names.size(); ++i)
        ::DeleteFileA(SlashSep(Folder_, names[i]).c_str());
}

}  // namespace hosting
