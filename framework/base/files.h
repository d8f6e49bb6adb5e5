#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "framework/api.h"
#include "framework/base/datetime.h"
#include "framework/base/handle.h"

namespace framework {

class TPatience;

FRAMEWORK_API bool FileExists(const std::string& path);       ///< True for a file, not a folder.
FRAMEWORK_API bool DirectoryExists(const std::string& path);  ///< True for a folder.
/// True for a link or junction. False for what is not there, and for entries that a service keeps
/// for the user, such as the files of a cloud: they are ordinary.
FRAMEWORK_API bool IsLink(const std::string& path);
/// Deletes a file; raises EInOutError when it cannot. One that is held for a moment is waited for.
FRAMEWORK_API void EraseFile(const std::string& path);
/// One of many: their waits share their time.
FRAMEWORK_API void EraseFile(const std::string& path, TPatience& patience);
/// Makes a folder and the folders above it; raises EInOutError when one cannot be made.
FRAMEWORK_API void ForceDirectories(const std::string& path);

/// The size of a file in bytes; raises EInOutError.
FRAMEWORK_API std::uint64_t FileSize(const std::string& path);
/// Reads a file, byte for byte; raises EInOutError.
FRAMEWORK_API std::string ReadFileBytes(const std::string& path);
/// Makes these bytes a file, in a folder that exists; raises EInOutError.
FRAMEWORK_API void WriteFileBytes(const std::string& path, std::string_view bytes);

/// Attributes of a search. Hidden and system files, volume names and folders are listed only when
/// they are asked for, all others always.
inline constexpr int faReadOnly = 0x01;
inline constexpr int faHidden = 0x02;
inline constexpr int faSysFile = 0x04;
inline constexpr int faVolumeID = 0x08;
inline constexpr int faDirectory = 0x10;
inline constexpr int faArchive = 0x20;
inline constexpr int faAnyFile = 0x3F;

/// One entry of a folder.
struct TSearchRec {
    std::string Name;  ///< With "?" for what this process cannot name, see NameFromWide.
    int Attr = 0;      ///< The attributes above and, from bit 6 on, the system's further ones.
    std::int64_t Size = 0;
    TDateTime LastWriteTime = 0;  ///< UTC.
    bool Link = false;            ///< See IsLink.
    bool IsDirectory() const { return (Attr & faDirectory) != 0; }
    /// A link or junction: what lies behind it is somewhere else.
    bool IsLink() const { return Link; }
};

/// Lists the entries of a folder that match a mask, "." and ".." included.
class FRAMEWORK_API TFileSearch {
public:
    /// @param mask a folder joined with a pattern, such as C:\A\*.*; a folder that is not there
    /// has no entries. @param attributes the attributes to list besides ordinary files.
    /// Raises EInOutError, as Next does, when the folder is there but cannot be listed, and for one
    /// whose path is unusable (IsUnusable).
    TFileSearch(const std::string& mask, int attributes);
    /// Fetches the next entry; false when there is none left.
    bool Next(TSearchRec& entry);

private:
    void Take(TSearchRec& entry) const;
    /// Raises the error unless it means that there are no more entries.
    void CheckEnd(unsigned long code) const;

    std::string Mask_;
    FindHandle Search_;
    WIN32_FIND_DATAW Found_{};
    bool Pending_ = false;
    int Attributes_;
};

}  // namespace framework
