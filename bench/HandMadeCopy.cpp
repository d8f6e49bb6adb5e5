#include "bench/HandMadeCopy.h"

#include <windows.h>

#include <algorithm>
#include <map>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "support/Files.h"
#include "support/Process.h"

namespace bench {
namespace {

constexpr SYSTEMTIME Moment{2004, 11, 5, 5, 12, 0, 0, 0};
constexpr const char* MomentInEntries = "Fri Nov  5 12:00:00 2004";

std::string Name(int number) {
    return "file" + std::to_string(number) + ".c";
}

void WriteFile(const std::string& path) {
    support::WriteBytes(path, Text);
    FILETIME time;
    ::SystemTimeToFileTime(&Moment, &time);
    const framework::FileHandle file(
        ::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!::SetFileTime(file.Get(), nullptr, nullptr, &time))
        framework::RaiseLastOSError();
}

}  // namespace

void Require(bool holds, const std::string& otherwise) {
    if (!holds)
        throw framework::Exception(otherwise);
}

TWorkingCopy::TWorkingCopy(const std::string& path, const std::string& repository, int folders,
                           int perFolder, int perGroup)
    : Path(path),
      Files(folders * perFolder),
      Repository_(repository),
      Folders_(folders),
      PerFolder_(perFolder),
      PerGroup_(perGroup) {
    for (int i = 0; i < folders; ++i) {
        framework::ForceDirectories(Path + FolderName(i));
        for (int j = 0; j < perFolder; ++j)
            WriteFile(FileName(i, j));
    }
    WriteRecords();
}

std::string TWorkingCopy::FolderName(int number) const {
    const std::string group =
        PerGroup_ > 0 ? "\\group" + std::to_string(number / PerGroup_) : std::string();
    return group + "\\folder" + std::to_string(number);
}

std::string TWorkingCopy::FileName(int folder, int number) const {
    return Path + FolderName(folder) + "\\" + Name(number);
}

void TWorkingCopy::WriteRecords() const {
    std::map<std::string, std::string> entriesAbove;
    for (int i = 0; i < Folders_; ++i) {
        std::string entries;
        for (int j = 0; j < PerFolder_; ++j)
            entries += "/" + Name(j) + "/1.1.1.1/" + MomentInEntries + "//\r\n";
        const std::string name = FolderName(i);
        WriteRecordsOf(name, entries);
        const std::size_t last = name.rfind('\\');
        entriesAbove[name.substr(0, last)] += "D/" + name.substr(last + 1) + "////\r\n";
    }
    if (PerGroup_ > 0)
        for (const auto& [group, entries] : std::map(entriesAbove))
            entriesAbove[""] += "D/" + group.substr(1) + "////\r\n";
    for (const auto& [folder, entries] : entriesAbove)
        WriteRecordsOf(folder, entries);
}

void TWorkingCopy::WriteArchives(const std::string& archive) const {
    for (int i = 0; i < Folders_; ++i)
        for (int j = 0; j < PerFolder_; ++j)
            support::WriteBytes(Repository_ + "\\mod" + FolderName(i) + "\\" + Name(j) + ",v",
                                archive);
}

void TWorkingCopy::WriteRecordsOf(const std::string& folder, const std::string& entries) const {
    std::string module = "mod" + folder;
    std::ranges::replace(module, '\\', '/');
    const std::string records = Path + folder + "\\CVS\\";
    support::WriteBytes(records + "Entries", entries);
    support::WriteBytes(records + "Repository", module + "\r\n");
    support::WriteBytes(records + "Root", Repository_ + "\r\n");
}

std::string MakeRepository(const std::string& repository, const std::string& seed) {
    const auto client = [&](const std::string& arguments) {
        const auto result =
            support::RunProcess("cvs -Q -d \":local:" + repository + "\" " + arguments, seed);
        Require(result.ExitCode == 0, result.Output);
    };
    support::WriteBytes(seed + "\\file.c", Text);
    client("init");
    client("import -m first seed VENDOR START");
    return support::ReadBytes(repository + "\\seed\\file.c,v");
}

}  // namespace bench
