#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "framework/api.h"
#include "framework/base/handle.h"

namespace framework {

/// In milliseconds.
inline constexpr DWORD LongestPatience = 2000;

/// The system's calls that change names, for files that somebody else holds for a moment: scanners,
/// indexers and sync clients look at what is fresh. Such a call is tried again, with pauses in
/// which the calling thread sleeps. A write protection, a right that is missing, a folder with
/// something in it: these fail at once. After a failure the system's last error is that of the last
/// try.
///
/// All calls of one object share its time. Only what is waited in vain is taken from it, so a run
/// of calls over many files waits for a scanner at each of them, but not for an editor that has
/// hundreds open.
class FRAMEWORK_API TPatience {
public:
    /// A file that goes while it is waited for counts as deleted.
    bool Delete(const std::string& path);
    /// @param flags those of MoveFileEx.
    bool Move(const std::string& from, const std::string& to, DWORD flags);
    /// Takes the place of a file that is there.
    bool Copy(const std::string& from, const std::string& to);
    /// As with Delete.
    bool RemoveFolder(const std::string& path);
    /// Opens for writing; the parameters are those of CreateFile.
    FileHandle Open(const std::string& path, DWORD access, DWORD share, DWORD disposition,
                    DWORD attributes = FILE_ATTRIBUTE_NORMAL);

private:
    /// @param passes whether an error that may mean both is one of a moment.
    bool Try(const std::function<bool()>& call, const std::function<bool(DWORD code)>& passes);
    bool TryUntilGone(const std::function<bool()>& call,
                      const std::function<bool(DWORD code)>& passes);

    DWORD Left_ = LongestPatience;
};

/// Whether there is nothing of this name, or only something that is deleted already and goes as
/// soon as nobody holds it; it is still listed.
FRAMEWORK_API bool IsGoing(const std::string& path);

}  // namespace framework
