#include "core/Cvs_files.h"

#include <windows.h>
// The shell's headers need what comes above.
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/names.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"

namespace tandrel {

using framework::TFileSearch;
using framework::TSearchRec;

namespace {

/// Names as the shell takes them: a zero behind each and another one (which every text has) behind
/// the last. An empty name would end the list early, or stand for the current folder.
std::string ShellList(std::string_view Names) {
    std::string Result;
    while (!Names.empty()) {
        const std::string_view Name = Names.substr(0, Names.find('\0'));
        Names.remove_prefix(std::min(Name.size() + 1, Names.size()));
        if (!Name.empty())
            Result.append(Name).append(1, '\0');
    }
    return Result;
}

/// False, with the reason where the caller looks for the system's last error.
bool Fail(DWORD Code) {
    ::SetLastError(Code);
    return false;
}

/// True for the shell's own result codes, under whose numbers the system has other errors.
bool IsShellCode(int Code) {
    return (Code >= 0x71 && Code <= 0x88) || Code == 0xB7 || Code == 0x402 || Code >= 0x10000;
}

bool RunShell(UINT Function, const std::string& From, const std::string& To, FILEOP_FLAGS Flags,
              const char* Title) {
    SHFILEOPSTRUCTA Operation{};
    Operation.hwnd = framework::Application().MainWindow();
    Operation.wFunc = Function;
    Operation.pFrom = From.c_str();
    Operation.pTo = To.empty() ? nullptr : To.c_str();
    Operation.fFlags = Flags;
    Operation.lpszProgressTitle = Title;
    const int Code = ::SHFileOperationA(&Operation);
    if (Operation.fAnyOperationsAborted)
        return Fail(ERROR_CANCELLED);
    return Code == 0 || Fail(IsShellCode(Code) ? ERROR_CAN_NOT_COMPLETE : static_cast<DWORD>(Code));
}

/// Lifts the write protection of files that are to be deleted: some versions of the shell do not
/// delete them otherwise, whatever the flags. Files that are still there in the end get it back.
class WriteProtectionLifted {
public:
    explicit WriteProtectionLifted(const std::string& ShellNames) {
        for (const char* Name = ShellNames.c_str(); *Name != 0; Name += std::strlen(Name) + 1) {
            const DWORD Attributes = ::GetFileAttributesA(Name);
            constexpr DWORD Kind = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
            if (Attributes == INVALID_FILE_ATTRIBUTES ||
                (Attributes & Kind) != FILE_ATTRIBUTE_READONLY)
                continue;
            if (::SetFileAttributesA(Name, Attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}))
                Files_.emplace_back(Name, Attributes);
        }
    }
    ~WriteProtectionLifted() {
        const DWORD LastError = ::GetLastError();
        for (const auto& [Name, Attributes] : Files_)
            ::SetFileAttributesA(Name, Attributes);
        ::SetLastError(LastError);
    }
    WriteProtectionLifted(const WriteProtectionLifted&) = delete;
    WriteProtectionLifted& operator=(const WriteProtectionLifted&) = delete;

private:
    std::vector<std::pair<const char*, DWORD>> Files_;
};

bool ShellDelete(std::string_view Names) {
    const std::string List = ShellList(Names);
    const WriteProtectionLifted Lifted(List);
    return RunShell(FO_DELETE, List, {}, FOF_NOCONFIRMATION, "Delete files");
}

/// True when each name is that of one file at most. The shell takes other names for patterns, and
/// deletes a folder with everything in it.
bool AreFiles(const std::string& ShellNames) {
    for (const char* Name = ShellNames.c_str(); *Name != 0; Name += std::strlen(Name) + 1)
        if (framework::IsPattern(Name) || framework::DirectoryExists(Name))
            return false;
    return true;
}

/// Opened for its attributes alone, which works whoever else has it open.
framework::FileHandle OpenForAttributes(const std::string& Path) {
    return framework::FileHandle(
        ::CreateFileA(Path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

/// True when two names, however they are written, lead to the same file or folder.
bool IsSame(const std::string& A, const std::string& B) {
    const framework::FileHandle FileA = OpenForAttributes(A);
    const framework::FileHandle FileB = OpenForAttributes(B);
    BY_HANDLE_FILE_INFORMATION InfoA{};
    BY_HANDLE_FILE_INFORMATION InfoB{};
    return FileA && FileB && ::GetFileInformationByHandle(FileA.Get(), &InfoA) &&
           ::GetFileInformationByHandle(FileB.Get(), &InfoB) &&
           InfoA.dwVolumeSerialNumber == InfoB.dwVolumeSerialNumber &&
           InfoA.nFileIndexHigh == InfoB.nFileIndexHigh &&
           InfoA.nFileIndexLow == InfoB.nFileIndexLow;
}

bool IsOwnOrParent(const TSearchRec& Entry) {
    return Entry.Name == "." || Entry.Name == "..";
}

/// True when everything in the source is in the destination, too, byte for byte. The shell reports
/// success for folders of which it had to leave out a file.
bool IsCopied(const std::string& Src, const std::string& Dst) {
    if (!framework::DirectoryExists(Src))
        return HasSameContents(Src, Dst);
    if (!framework::DirectoryExists(Dst))
        return false;
    TFileSearch Search(SlashSep(Src, "*.*"), framework::faAnyFile);
    TSearchRec Entry;
    while (Search.Next(Entry))
        if (!IsOwnOrParent(Entry) &&
            !IsCopied(SlashSep(Src, Entry.Name), SlashSep(Dst, Entry.Name)))
            return false;
    return true;
}

/// True for a folder that is a link or has one to a folder in it.
bool HasLink(const std::string& Dir) {
    // What cannot be looked into may have some; the shell would find them.
    if (framework::IsUnusable(Dir))
        throw framework::EInOutError(ERROR_INVALID_NAME, Dir);
    if (!framework::DirectoryExists(Dir))
        return false;
    if (framework::IsLink(Dir))
        return true;
    TFileSearch Search(SlashSep(Dir, "*.*"), framework::faAnyFile);
    TSearchRec Entry;
    while (Search.Next(Entry))
        if (Entry.IsDirectory() && !IsOwnOrParent(Entry) && HasLink(SlashSep(Dir, Entry.Name)))
            return true;
    return false;
}

struct LocalMemory {
    void operator()(void* Memory) const { ::LocalFree(Memory); }
};
struct TaskMemory {
    void operator()(void* Memory) const { ::CoTaskMemFree(Memory); }
};

}  // namespace

bool MoveFileExt(const std::string& Src, const std::string& Dst, bool DeleteSource) {
    if (Src.empty() || Dst.empty())
        return Fail(ERROR_INVALID_PARAMETER);
    // The shell would take all that fit.
    if (framework::IsPattern(Src) || framework::IsPattern(Dst))
        return Fail(ERROR_INVALID_NAME);
    try {
        if (DeleteSource && IsSame(Src, Dst))
            return Fail(ERROR_INVALID_PARAMETER);
        if (DeleteSource && HasLink(Src))
            return Fail(ERROR_NOT_SUPPORTED);
        if (!RunShell(FO_COPY, ShellList(Src), ShellList(Dst),
                      FOF_MULTIDESTFILES | FOF_NOCONFIRMATION | FOF_NOCONFIRMMKDIR, "Copy files"))
            return false;
        if (!DeleteSource)
            return true;
        return IsCopied(Src, Dst) ? ShellDelete(Src) : Fail(ERROR_CAN_NOT_COMPLETE);
    } catch (const framework::EInOutError& Error) {
        // A folder that cannot be listed cannot be compared.
        return Fail(Error.ErrorCode);
    }
}

bool RevoveDirExt(const std::string& Dir) {
    if (!framework::DirectoryExists(Dir))
        return Fail(ERROR_PATH_NOT_FOUND);
    try {
        return HasLink(Dir) ? Fail(ERROR_NOT_SUPPORTED) : ShellDelete(Dir);
    } catch (const framework::EInOutError& Error) {
        return Fail(Error.ErrorCode);
    }
}

bool RevoveFilesExt(std::string_view List) {
    const std::string Names = ShellList(List);
    if (!AreFiles(Names))
        return Fail(ERROR_INVALID_NAME);
    return Names.empty() || ShellDelete(List);
}

bool HasSameContents(const std::string& A, const std::string& B) {
    constexpr std::size_t BlockSize = 64 * 1024;
    std::ifstream FileA(A, std::ios::binary);
    std::ifstream FileB(B, std::ios::binary);
    std::vector<char> BlockA(BlockSize);
    std::vector<char> BlockB(BlockSize);
    while (FileA && FileB) {
        FileA.read(BlockA.data(), BlockSize);
        FileB.read(BlockB.data(), BlockSize);
        const auto Count = FileA.gcount();
        if (Count != FileB.gcount() ||
            !std::equal(BlockA.begin(), BlockA.begin() + Count, BlockB.begin()))
            return false;
    }
    return FileA.eof() && FileB.eof() && !FileA.bad() && !FileB.bad();
}

int GetShellImage(const std::string& Item, bool Large, bool Open) {
    PIDLIST_ABSOLUTE Found = nullptr;
    if (framework::IsPattern(Item) ||
        FAILED(::SHParseDisplayName(framework::ToWide(Item).c_str(), nullptr, &Found, 0, nullptr)))
        return -1;
    const std::unique_ptr<ITEMIDLIST, TaskMemory> Identifiers(Found);
    SHFILEINFOA Info{};
    const UINT Flags = SHGFI_PIDL | SHGFI_SYSICONINDEX |
                       static_cast<UINT>(Large ? SHGFI_LARGEICON : SHGFI_SMALLICON) |
                       static_cast<UINT>(Open ? SHGFI_OPENICON : 0);
    if (!::SHGetFileInfoA(reinterpret_cast<const char*>(Identifiers.get()), 0, &Info, sizeof(Info),
                          Flags))
        return -1;
    return Info.iIcon;
}

bool IsDebuggerPresent() {
    using Question = BOOL(WINAPI*)();
    const HMODULE Kernel = ::GetModuleHandleA("KERNEL32.DLL");
    const auto Ask = reinterpret_cast<Question>(
        reinterpret_cast<void*>(::GetProcAddress(Kernel, "IsDebuggerPresent")));
    return (Ask != nullptr && Ask()) || HasDebugSwitch(::GetCommandLineW());
}

bool HasDebugSwitch(const std::wstring& CommandLine) {
    int Count = 0;
    const std::unique_ptr<wchar_t*[], LocalMemory> Arguments(
        ::CommandLineToArgvW(CommandLine.c_str(), &Count));
    if (!Arguments)
        return false;
    for (std::size_t At = 1; At < static_cast<std::size_t>(Count); ++At)
        if (framework::SameText(framework::FromWide(Arguments[At]), "-DEBUG"))
            return true;
    return false;
}

std::string GetTempDir() {
    char Buffer[1024] = {};
    const DWORD Length = ::GetTempPathA(sizeof(Buffer), Buffer);
    return framework::Trim(Length < sizeof(Buffer) ? Buffer : "");
}

bool IsFolderEmpty(const std::string& Dir) {
    try {
        TSearchRec Entry;
        return TFileSearch(SlashSep(Dir, "*.*"), framework::faAnyFile).Next(Entry);
    } catch (const framework::EInOutError&) {
        return false;
    }
}

}  // namespace tandrel
