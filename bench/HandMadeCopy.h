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
    TWorkingCopy(const std::string& path, const std::string& repository, int folders,
                 int perFolder);

    const std::string Path;
    const int Files;

    /// Writes the client's records, again if need be.
    void WriteRecords() const;
    /// Fills the repository, too: each file's archive is the given one.
    void WriteArchives(const std::string& archive) const;

private:
    std::string Folder(int number) const { return Path + "\\folder" + std::to_string(number); }
    std::string FileName(int folder, int number) const;
    void WriteRecordsOf(const std::string& folder, const std::string& module,
                        const std::string& entries) const;

    const std::string Repository_;
    const int Folders_, PerFolder_;
};

}  // namespace bench
