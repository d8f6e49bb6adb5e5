#include "bench/HandMadeCopy.h"

#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "support/Files.h"

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
                           int perFolder)
    : Path(path),
      Files(folders * perFolder),
      Repository_(repository),
      Folders_(folders),
      PerFolder_(perFolder) {
    for (int i = 0; i < folders; ++i) {
        framework::ForceDirectories(Folder(i));
        for (int j = 0; j < perFolder; ++j)
            WriteFile(FileName(i, j));
    }
    WriteRecords();
}

std::string TWorkingCopy::FileName(int folder, int number) const {
    return Folder(folder) + "\\" + Name(number);
}

void TWorkingCopy::WriteRecords() const {
    std::string folders;
    for (int i = 0; i < Folders_; ++i) {
        folders += "D/folder" + std::to_string(i) + "////\r\n";
        std::string entries;
        for (int j = 0; j < PerFolder_; ++j)
            entries += "/" + Name(j) + "/1.1.1.1/" + MomentInEntries + "//\r\n";
        WriteRecordsOf(Folder(i), "mod/folder" + std::to_string(i), entries);
    }
    WriteRecordsOf(Path, "mod", folders);
}

void TWorkingCopy::WriteArchives(const std::string& archive) const {
    for (int i = 0; i < Folders_; ++i)
        for (int j = 0; j < PerFolder_; ++j)
            support::WriteBytes(
                Repository_ + "\\mod\\folder" + std::to_string(i) + "\\" + Name(j) + ",v", archive);
}

void TWorkingCopy::WriteRecordsOf(const std::string& folder, const std::string& module,
                                  const std::string& entries) const {
    support::WriteBytes(folder + "\\CVS\\Entries", entries);
    support::WriteBytes(folder + "\\CVS\\Repository", module + "\r\n");
    support::WriteBytes(folder + "\\CVS\\Root", Repository_ + "\r\n");
}

}  // namespace bench
