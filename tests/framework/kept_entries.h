#pragma once

#include <windows.h>

#include <string_view>

#include "framework/base/file_functions.h"

/// While it lives, the disk lists entries whose names begin with "kept" as ones that are kept in
/// another way, with a reparse tag of this kind.
class KeptEntries {
public:
    explicit KeptEntries(DWORD tag) {
        Tag = tag;
        framework::FileFunctions().FindFirst = FindFirst;
        framework::FileFunctions().FindNext = FindNext;
    }
    ~KeptEntries() { framework::FileFunctions() = {}; }
    KeptEntries(const KeptEntries&) = delete;
    KeptEntries& operator=(const KeptEntries&) = delete;

    /// The tag of a cloud's files.
    static constexpr DWORD Cloud = 0x9000001A;

private:
    static void Mark(WIN32_FIND_DATAW* entry) {
        if (!std::wstring_view(entry->cFileName).starts_with(L"kept"))
            return;
        entry->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
        entry->dwReserved0 = Tag;
    }
    static HANDLE WINAPI FindFirst(const wchar_t* name, WIN32_FIND_DATAW* entry) {
        const HANDLE found = ::FindFirstFileW(name, entry);
        if (found != INVALID_HANDLE_VALUE)
            Mark(entry);
        return found;
    }
    static BOOL WINAPI FindNext(HANDLE search, WIN32_FIND_DATAW* entry) {
        const BOOL found = ::FindNextFileW(search, entry);
        if (found)
            Mark(entry);
        return found;
    }

    static inline DWORD Tag = 0;
};
