#include "hosting/KeptTexts.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"

namespace hosting {

using namespace framework;
using tandrel::SlashSep;

namespace {

constexpr const char* Ending = ".text";

/// A name for a file. Two keys may have the same: what is in the file says whose it is.
std::string NameOf(const std::string& key) {
    std::uint64_t hash = 14695981039346656037u;
    for (const char letter : key)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211u;
    std::array<char, 20> name{};
    std::snprintf(name.data(), name.size(), "%08lx%08lx", static_cast<unsigned long>(hash >> 32),
                  static_cast<unsigned long>(hash & 0xFFFFFFFF));
    return name.data();
}

/// What stands in front of a text in its file.
std::string HeadOf(const std::string& key) {
    return std::to_string(key.size()) + "\n" + key + "\n";
}

}  // namespace

std::string TKeptTexts::PathOf(const std::string& key) const {
    return SlashSep(Folder_, NameOf(key) + Ending);
}

std::optional<TKeptText> TKeptTexts::Find(const std::string& key) const {
    const std::string path = PathOf(key);
    try {
        TFileSearch search(path, faArchive);
        TSearchRec entry;
        if (!search.Next(entry))
            return std::nullopt;
        std::string bytes = ReadFileBytes(path);
        const std::string head = HeadOf(key);
        if (!bytes.starts_with(head))
            return std::nullopt;
        bytes.erase(0, head.size());
        return TKeptText{std::move(bytes), tandrel::UTCToLocalTime(entry.LastWriteTime)};
    } catch (const Exception&) {
        return std::nullopt;
    }
}

void TKeptTexts::Keep(const std::string& key, const std::string& text) const {
    const std::string bytes = HeadOf(key) + text;
    // One text must not drive out all others.
    if (bytes.size() > Most_ / 4)
        return;
    const std::string path = PathOf(key);
    try {
        ForceDirectories(Folder_);
        MakeRoom(bytes.size());
        // Half a text would be taken for a whole one.
        WriteFileBytes(path + "~", bytes);
        if (!::MoveFileExA((path + "~").c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING))
            ::DeleteFileA((path + "~").c_str());
    } catch (const EInOutError&) {
        ::DeleteFileA((path + "~").c_str());
    }
}

void TKeptTexts::MakeRoom(std::uint64_t bytes) const {
    std::vector<TSearchRec> files;
    TFileSearch search(SlashSep(Folder_, "*.*"), faArchive);
    for (TSearchRec entry; search.Next(entry);) {
        files.push_back(entry);
        bytes += static_cast<std::uint64_t>(entry.Size);
    }
    if (bytes <= Most_)
        return;
    std::ranges::sort(files, {}, &TSearchRec::LastWriteTime);
    for (const TSearchRec& file : files) {
        if (bytes <= Most_)
            return;
        if (::DeleteFileA(SlashSep(Folder_, file.Name).c_str()))
            bytes -= static_cast<std::uint64_t>(file.Size);
    }
}

}  // namespace hosting
