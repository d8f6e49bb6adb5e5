#include "tests/support/Leaks.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <winternl.h>

#include <tlhelp32.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "framework/base/handle.h"

namespace tests {
namespace {

// The system's own counters stay at zero where these tests run, so its tables are read.

struct THandleEntry {
    void* Object;
    ULONG_PTR ProcessId;
    ULONG_PTR Handle;
    ULONG Access;
    USHORT Creator, Type;
    ULONG Attributes, Reserved;
};
struct THandleTable {
    ULONG_PTR Count, Reserved;
    THandleEntry Entries[1];
};

int CountHandles() {
    // The headers do not know this table, so the function is called by what it really takes.
    using TQuery = NTSTATUS(NTAPI*)(ULONG, void*, ULONG, ULONG*);
    constexpr ULONG ExtendedHandleInformation = 64;
    static const auto query = reinterpret_cast<TQuery>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"ntdll"), "NtQuerySystemInformation")));
    constexpr NTSTATUS LengthMismatch = static_cast<NTSTATUS>(0xC0000004);
    std::vector<std::byte> buffer(1 << 16);
    ULONG needed = 0;
    while (query(ExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
                 &needed) == LengthMismatch)
        buffer.resize(buffer.size() * 2);
    const auto& table = *reinterpret_cast<const THandleTable*>(buffer.data());
    int count = 0;
    for (ULONG_PTR i = 0; i < table.Count; ++i)
        count += table.Entries[i].ProcessId == ::GetCurrentProcessId() ? 1 : 0;
    return count;
}

int CountThreads() {
    const framework::FileHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    int count = 0;
    for (BOOL more = ::Thread32First(snapshot.Get(), &thread); more;
         more = ::Thread32Next(snapshot.Get(), &thread))
        count += thread.th32OwnerProcessID == ::GetCurrentProcessId() ? 1 : 0;
    return count;
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK CountTopWindow(HWND window, LPARAM count) {
    wchar_t name[16];
    ::GetClassNameW(window, name, 16);
    if (std::wstring_view(name) == L"IME")
        return TRUE;  // the system's, one for the thread
    ++*reinterpret_cast<int*>(count);
    ::EnumChildWindows(window, CountWindow, count);
    return TRUE;
}

int CountWindows() {
    int count = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), CountTopWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

int CountGdiObjects() {
#if defined(_WIN64)
    return 0;
#else
    struct TEntry {
        std::uint8_t Unused[14];
        std::uint16_t Type;
        std::uint8_t Rest[8];
    };
    constexpr int EntryCount = 0x4000, TableOffset = 0x94;
    PROCESS_BASIC_INFORMATION process{};
    ::NtQueryInformationProcess(::GetCurrentProcess(), ProcessBasicInformation, &process,
                                sizeof process, nullptr);
    const auto* const block = reinterpret_cast<const std::uint8_t*>(process.PebBaseAddress);
    const auto* const table = *reinterpret_cast<const TEntry* const*>(block + TableOffset);
    int count = 0;
    for (int i = 0; i < EntryCount; ++i)
        count += table[i].Type != 0 ? 1 : 0;
    return count;
#endif
}

}  // namespace

TResources CountResources() {
    return {CountHandles(), CountThreads(), CountWindows(), CountGdiObjects()};
}

void ExpectNothingLeft(int times, const std::function<void()>& action) {
    action();
    const TResources before = CountResources();
    for (int i = 0; i < times; ++i)
        action();
    const TResources after = CountResources();
    EXPECT_EQ(after.Windows, before.Windows);
    EXPECT_EQ(after.GdiObjects, before.GdiObjects);
    EXPECT_EQ(after.Handles, before.Handles);
    EXPECT_EQ(after.Threads, before.Threads);
}

}  // namespace tests
