#include "framework/base/patience.h"

#include <algorithm>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"

namespace framework {

namespace {

/// What is deleted but still held does not even tell its attributes.
bool IsDeletedButHeld(const std::string& path) {
    return FileFunctions().Attributes(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
           ::GetLastError() == ERROR_ACCESS_DENIED;
}

/// Whether this process lacks a right. Whoever has it and still gets no handle is kept by another
/// program.
bool LacksRight(const std::string& path, DWORD right) {
    const FileHandle probe(FileFunctions().Probe(
        path.c_str(), right, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    return !probe && ::GetLastError() == ERROR_ACCESS_DENIED;
}

/// Whether something that refused to go will do so whenever it is asked.
/// @param kinds the attributes with which it never goes.
bool IsProtected(const std::string& path, DWORD attributes, DWORD kinds) {
    return (attributes & kinds) != 0 || LacksRight(path, DELETE);
}

bool MayGo(const std::string& path, DWORD kinds) {
    const DWORD attributes = FileFunctions().Attributes(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES || !IsProtected(path, attributes, kinds);
}

constexpr DWORD KeepsAFile = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;

bool MayMove(const std::string& from, const std::string& to) {
    const DWORD source = FileFunctions().Attributes(from.c_str());
    // A name is no part of what it names: a write protection does not keep it.
    if (source != INVALID_FILE_ATTRIBUTES && IsProtected(from, source, 0))
        return false;
    const DWORD target = FileFunctions().Attributes(to.c_str());
    if (target != INVALID_FILE_ATTRIBUTES)
        return !IsProtected(to, target, KeepsAFile);
    const bool isFolder =
        source != INVALID_FILE_ATTRIBUTES && (source & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return !LacksRight(ExtractFileDir(to), isFolder ? FILE_ADD_SUBDIRECTORY : FILE_ADD_FILE);
}

bool IsEmptySoon(const std::string& path) {
    try {
        TFileSearch search(path + "\\*.*", faAnyFile);
        for (TSearchRec entry; search.Next(entry);)
            if (entry.Name != "." && entry.Name != ".." &&
                (entry.IsLink() || !IsGoing(path + "\\" + entry.Name)))
                return false;
        return true;
    } catch (const EInOutError&) {
        return false;
    }
}

}  // namespace

bool TPatience::Try(const std::function<bool()>& call,
                    const std::function<bool(DWORD code)>& passes) {
    constexpr DWORD First = 10, Last = 250;
    const TFileFunctions& system = FileFunctions();
    const DWORD begun = system.Ticks();
    for (DWORD pause = First;; pause = std::min(2 * pause, Last)) {
        if (call())
            return true;
        const DWORD code = ::GetLastError();
        const DWORD waited = system.Ticks() - begun;
        if (waited >= Left_ || !(code == ERROR_SHARING_VIOLATION || passes(code))) {
            Left_ -= std::min(Left_, waited);
            ::SetLastError(code);
            return false;
        }
        system.Sleep(std::min(pause, Left_ - waited));
    }
}

bool TPatience::TryUntilGone(const std::function<bool()>& call,
                             const std::function<bool(DWORD code)>& passes) {
    bool isFirst = true;
    return Try(
        [&] {
            const bool wasThere = std::exchange(isFirst, false);
            return call() || (!wasThere && ::GetLastError() == ERROR_FILE_NOT_FOUND);
        },
        passes);
}

bool TPatience::Delete(const std::string& path) {
    return TryUntilGone(
        [&] { return FileFunctions().Delete(path.c_str()) != FALSE; },
        [&](DWORD code) { return code == ERROR_ACCESS_DENIED && MayGo(path, KeepsAFile); });
}

bool TPatience::RemoveFolder(const std::string& path) {
    return TryUntilGone([&] { return FileFunctions().RemoveFolder(path.c_str()) != FALSE; },
                        [&](DWORD code) {
                            return code == ERROR_DIR_NOT_EMPTY
                                       ? IsEmptySoon(path)
                                       : code == ERROR_ACCESS_DENIED &&
                                             MayGo(path, FILE_ATTRIBUTE_READONLY);
                        });
}

bool TPatience::Move(const std::string& from, const std::string& to, DWORD flags) {
    return Try([&] { return FileFunctions().Move(from.c_str(), to.c_str(), flags) != FALSE; },
               [&](DWORD code) { return code == ERROR_ACCESS_DENIED && MayMove(from, to); });
}

bool TPatience::Copy(const std::string& from, const std::string& to) {
    return Try([&] { return FileFunctions().Copy(from.c_str(), to.c_str(), FALSE) != FALSE; },
               [&](DWORD code) { return code == ERROR_ACCESS_DENIED && IsDeletedButHeld(to); });
}

FileHandle TPatience::Open(const std::string& path, DWORD access, DWORD share, DWORD disposition,
                           DWORD attributes) {
    FileHandle file;
    Try(
        [&] {
            file.Reset(FileFunctions().Open(path.c_str(), access, share, nullptr, disposition,
                                            attributes, nullptr));
            return static_cast<bool>(file);
        },
        [&](DWORD code) { return code == ERROR_ACCESS_DENIED && IsDeletedButHeld(path); });
    return file;
}

bool IsGoing(const std::string& path) {
    if (FileFunctions().Attributes(path.c_str()) != INVALID_FILE_ATTRIBUTES)
        return false;
    const DWORD code = ::GetLastError();
    return code == ERROR_ACCESS_DENIED || code == ERROR_FILE_NOT_FOUND ||
           code == ERROR_PATH_NOT_FOUND;
}

}  // namespace framework
