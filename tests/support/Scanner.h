#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "framework/base/file_functions.h"

namespace tests {

/// While it lives, another program looks at every file and folder that is to be changed: the first
/// calls fail, as the system says so. The pauses take no time, but the clock goes on. One at a
/// time.
class TScanner {
public:
    static constexpr int ForEver = 1 << 20;

    /// @param refusals how many calls of each kind fail for each name. @param error with which; 0
    /// for that of a file in use, or of a folder with one in it. @param victim the end of the names
    /// that are held.
    explicit TScanner(int refusals, DWORD error = 0, const std::string& victim = {}) {
        Refusals = refusals;
        Error = error;
        Victim = victim;
        Calls.clear();
        Waited = 0;
        auto& system = framework::FileFunctions();
        system.Open = Open;
        system.Copy = Copy;
        system.Move = Move;
        system.Delete = Delete;
        system.RemoveFolder = RemoveFolder;
        system.Ticks = Ticks;
        system.Sleep = Sleep;
    }
    ~TScanner() { framework::FileFunctions() = {}; }
    TScanner(const TScanner&) = delete;
    TScanner& operator=(const TScanner&) = delete;

    static inline DWORD Waited = 0;                  ///< By the clock, in milliseconds.
    static inline std::map<std::string, int> Calls;  ///< "Delete C:\a": how often.

private:
    static bool Refuses(const char* call, const std::string& name, DWORD error,
                        const std::string& other = {}) {
        const int count = ++Calls[std::string(call) + " " + name];
        if (count > Refusals || !(name.ends_with(Victim) || other.ends_with(Victim)))
            return false;
        ::SetLastError(Error != 0 ? Error : error);
        return true;
    }
    static HANDLE WINAPI Open(const char* name, DWORD access, DWORD share,
                              SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                              HANDLE like) {
        return Refuses("Open", name, ERROR_SHARING_VIOLATION)
                   ? INVALID_HANDLE_VALUE
                   : ::CreateFileA(name, access, share, security, disposition, attributes, like);
    }
    static BOOL WINAPI Copy(const char* from, const char* to, BOOL fail) {
        return !Refuses("Copy", to, ERROR_SHARING_VIOLATION) && ::CopyFileA(from, to, fail);
    }
    static BOOL WINAPI Move(const char* from, const char* to, DWORD flags) {
        const bool isFolder = (::GetFileAttributesA(from) & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return !Refuses("Move", from, isFolder ? ERROR_ACCESS_DENIED : ERROR_SHARING_VIOLATION,
                        to) &&
               ::MoveFileExA(from, to, flags);
    }
    static BOOL WINAPI Delete(const char* name) {
        return !Refuses("Delete", name, ERROR_SHARING_VIOLATION) && ::DeleteFileA(name);
    }
    static BOOL WINAPI RemoveFolder(const char* name) {
        return !Refuses("RemoveFolder", name, ERROR_DIR_NOT_EMPTY) && ::RemoveDirectoryA(name);
    }

    static DWORD WINAPI Ticks() { return Waited; }
    static void WINAPI Sleep(DWORD milliseconds) { Waited += milliseconds; }

    static inline int Refusals = 0;
    static inline DWORD Error = 0;
    static inline std::string Victim;
};

}  // namespace tests
