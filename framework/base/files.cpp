#include "framework/base/files.h"

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/names.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"
#include "framework/base/system_time.h"
#include "framework/base/text.h"

namespace framework {

namespace {

/// Entries with one of these are listed only when they are asked for.
constexpr int AskedForOnly = faHidden | faSysFile | faVolumeID | faDirectory;

/// True for the answers of the system that mean: there is nothing to list.
bool MeansNothingThere(DWORD code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_NO_MORE_FILES:
        case ERROR_INVALID_NAME:
        case ERROR_DIRECTORY:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_NOT_READY:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool FileExists(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool DirectoryExists(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

namespace {

/// Whether the entry stands for something that is somewhere else. The system keeps other entries,
/// too, in a way of its own (in a cloud, compressed); they are where they seem to be. What does not
/// tell its kind may be anything.
bool IsLinkEntry(const WIN32_FIND_DATAW& entry) {
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return false;
    const DWORD tag = entry.dwReserved0;
    return tag == 0 || IsReparseTagNameSurrogate(tag);
}

}  // namespace

bool IsLink(const std::string& path) {
    // A name that ends in a separator is that of what lies behind the link.
    const std::size_t last = FindLastNotOf(path, "\\/");
    if (last == std::string::npos || IsPattern(path))
        return false;
    WIN32_FIND_DATAW entry{};
    const FindHandle search(
        FileFunctions().FindFirst(ToWide(path.substr(0, last + 1)).c_str(), &entry));
    if (search)
        return IsLinkEntry(entry);
    // The folder above may be closed to listing.
    entry = {};
    entry.dwFileAttributes = ::GetFileAttributesA(path.c_str());
    return entry.dwFileAttributes != INVALID_FILE_ATTRIBUTES && IsLinkEntry(entry);
}

void EraseFile(const std::string& path) {
    TPatience patience;
    EraseFile(path, patience);
}

void EraseFile(const std::string& path, TPatience& patience) {
    if (!patience.Delete(path))
        throw EInOutError(::GetLastError(), path);
}

std::uint64_t FileSize(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data))
        throw EInOutError(::GetLastError(), path);
    return static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

std::string ReadFileBytes(const std::string& path) {
    const FileHandle file(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        throw EInOutError(::GetLastError(), path);
    std::string bytes(::GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        throw EInOutError(::GetLastError(), path);
    bytes.resize(read);
    return bytes;
}

void WriteFileBytes(const std::string& path, std::string_view bytes) {
    const FileHandle file = TPatience().Open(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    if (!file)
        throw EInOutError(::GetLastError(), path);
    DWORD written = 0;
    if (!::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        throw EInOutError(::GetLastError(), path);
}

void ForceDirectories(const std::string& path) {
    if (path.empty())
        throw EInOutError(ERROR_PATH_NOT_FOUND, path);
    if (DirectoryExists(path))
        return;
    const std::string above = ExtractFileDir(path);
    if (!above.empty() && above != path)
        ForceDirectories(above);
    if (::CreateDirectoryA(path.c_str(), nullptr))
        return;
    // Somebody else may have been faster; a path that ends in a separator was made just now.
    const DWORD code = ::GetLastError();
    if (!DirectoryExists(path))
        throw EInOutError(code, path);
}

TFileSearch::TFileSearch(const std::string& mask, int attributes)
    : Mask_(mask), Attributes_(attributes) {
    // A listing may have named it so. The system takes the folder for one that is not there, and
    // its entries would seem to be none.
    if (IsUnusable(ExtractFilePath(mask)))
        throw EInOutError(ERROR_INVALID_NAME, mask);
    Search_.Reset(FileFunctions().FindFirst(ToWide(mask).c_str(), &Found_));
    Pending_ = static_cast<bool>(Search_);
    if (!Pending_)
        CheckEnd(::GetLastError());
}

bool TFileSearch::Next(TSearchRec& entry) {
    const int refused = AskedForOnly & ~Attributes_;
    while (Pending_) {
        const bool listed = (static_cast<int>(Found_.dwFileAttributes) & refused) == 0;
        if (listed)
            Take(entry);
        Pending_ = FileFunctions().FindNext(Search_.Get(), &Found_) != FALSE;
        if (!Pending_)
            CheckEnd(::GetLastError());
        if (listed)
            return true;
    }
    return false;
}

void TFileSearch::Take(TSearchRec& entry) const {
    entry.Name = NameFromWide(Found_.cFileName);
    entry.Attr = static_cast<int>(Found_.dwFileAttributes);
    entry.Size = static_cast<std::int64_t>(
        (static_cast<std::uint64_t>(Found_.nFileSizeHigh) << 32) | Found_.nFileSizeLow);
    entry.Link = IsLinkEntry(Found_);
    entry.LastWriteTime = FileTimeToDateTime(Found_.ftLastWriteTime);
}

void TFileSearch::CheckEnd(unsigned long code) const {
    if (!MeansNothingThere(code))
        throw EInOutError(code, Mask_);
}

}  // namespace framework
