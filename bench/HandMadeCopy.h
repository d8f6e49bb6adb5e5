#pragma once

#include <string>

namespace bench {

/// Raises framework::Exception when a measurement is of no worth.
void Require(bool holds, const std::string& otherwise);

/// What stands in each file of a working copy.
inline constexpr const char* Text = "int value;\r\n";

/// A working copy as the client would leave it, written by hand: the client takes minutes for one
/// of many files. No file is changed.
class TWorkingCopy {
public:
    /// @param repository what the records refer to. It need not be there.
    /// @param perGroup as many folders stand in a folder of theirs; 0 when all are in the root.
    TWorkingCopy(const std::string& path, const std::string& repository, int folders, int perFolder,
                 int perGroup = 0);

    const std::string Path;
    const int Files;

    /// Writes the client's records, again if need be.
    void WriteRecords() const;
    /// Fills the repository, too: each file's archive is the given one.
    void WriteArchives(const std::string& archive) const;

private:
    /// Where a folder is below the root.
    std::string FolderName(int number) const;
    std::string FileName(int folder, int number) const;
    /// @param folder below the root.
    void WriteRecordsOf(const std::string& folder, const std::string& entries) const;

    const std::string Repository_;
    const int Folders_, PerFolder_, PerGroup_;
};

/// Makes a repository. @return an archive from it, which serves all files: they have the same text.
/// @param seed a folder to use and leave.
std::string MakeRepository(const std::string& repository, const std::string& seed);

}  // namespace bench
