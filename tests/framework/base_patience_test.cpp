// Files and folders that somebody else holds.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/patience.h"
#include "framework/base/temp_file.h"
#include "framework/base/text_file.h"
#include "tests/framework/temp_folder.h"
#include "tests/support/Scanner.h"

namespace framework {
namespace {

using tests::TScanner;

/// How often anything was tried.
int Tries() {
    int tries = 0;
    for (const auto& [call, count] : TScanner::Calls)
        tries += count;
    return tries;
}

/// A way to change a file or folder, and the errors that it may get from one that is held.
struct TChange {
    std::function<bool(const TempFolder& folder, TPatience& patience)> Make;
    std::vector<DWORD> Errors;
};

const TChange Changes[] = {
    {[](const TempFolder& folder, TPatience& patience) {
         return patience.Delete(folder.MakeFile("f")) && !FileExists(folder / "f");
     },
     {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}},
    {[](const TempFolder& folder, TPatience& patience) {
         // On top of another; a write protection does not keep a name.
         ::SetFileAttributesA(folder.MakeFile("f", "new").c_str(), FILE_ATTRIBUTE_READONLY);
         return patience.Move(folder / "f", folder.MakeFile("g"), MOVEFILE_REPLACE_EXISTING) &&
                ReadBytes(folder / "g") == "new" && !FileExists(folder / "f");
     },
     {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}},
    {[](const TempFolder& folder, TPatience& patience) {
         folder.MakeFolder("d");
         folder.MakeFile("d\\f");
         return patience.Move(folder / "d", folder / "e", 0) && FileExists(folder / "e\\f");
     },
     {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}},
    {[](const TempFolder& folder, TPatience& patience) {
         return patience.RemoveFolder(folder.MakeFolder("d")) && !DirectoryExists(folder / "d");
     },
     {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED, ERROR_DIR_NOT_EMPTY}},
    {[](const TempFolder& folder, TPatience& patience) {
         return patience.Copy(folder.MakeFile("f", "new"), folder.MakeFile("g")) &&
                ReadBytes(folder / "g") == "new";
     },
     {ERROR_SHARING_VIOLATION}},
    {[](const TempFolder& folder, TPatience&) {
         WriteFileBytes(folder.MakeFile("f"), "new");
         return ReadBytes(folder / "f") == "new";
     },
     {ERROR_SHARING_VIOLATION}},
    {[](const TempFolder& folder, TPatience&) {
         SaveToFile(folder.MakeFile("f"), "new");
         return ReadBytes(folder / "f") == "new";
     },
     {ERROR_SHARING_VIOLATION}},
    {[](const TempFolder& folder, TPatience&) {
         TTextFile::Append(folder.MakeFile("f", "")).WriteLine("new");
         return ReadBytes(folder / "f") == "new\r\n";
     },
     {ERROR_SHARING_VIOLATION}},
};

TEST(HeldFiles, AreWaitedFor) {
    for (const TChange& change : Changes)
        for (const DWORD error : change.Errors) {
            SCOPED_TRACE(std::to_string(&change - Changes) + ", " + std::to_string(error));
            const TempFolder folder;
            const TScanner scanner(3, error);
            TPatience patience;
            EXPECT_TRUE(change.Make(folder, patience));
            EXPECT_EQ(TScanner::Waited, 10u + 20 + 40) << "pauses grow";
            EXPECT_EQ(Tries(), 4);
        }
    // The new text's file, and then the old one's place.
    const TempFolder folder;
    const TScanner scanner(3);
    ReplaceTextFile(folder.MakeFile("f"), {"new"});
    EXPECT_EQ(ReadBytes(folder / "f"), "new\r\n");
    EXPECT_EQ(Tries(), 8);
}

/// Held until the next pause.
FileHandle& Held() {
    static FileHandle file;
    return file;
}

void WINAPI LetGo(DWORD) {
    Held().Reset();
    ++TScanner::Waited;
}

TEST(HeldFiles, AreHeldAsTheSystemSays) {
    const TScanner scanner(0);
    FileFunctions().Sleep = LetGo;
    const TempFolder folder;
    const auto hold = [&](const char* name) {
        std::string path = folder.MakeFile(name);
        Held().Reset(
            ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        TScanner::Waited = 0;
        return path;
    };
    EraseFile(hold("a"));
    EXPECT_EQ(TScanner::Waited, 1u);
    WriteFileBytes(hold("b"), "new");
    EXPECT_EQ(TScanner::Waited, 1u);
    EXPECT_TRUE(TPatience().Move(hold("c"), folder / "d", 0));
    EXPECT_EQ(TScanner::Waited, 1u);
    EXPECT_TRUE(TPatience().Copy(folder / "b", hold("e")));
    EXPECT_EQ(TScanner::Waited, 1u);
    EXPECT_EQ(ReadBytes(folder / "e"), "new");
}

DWORD MissingRight = 0;

HANDLE WINAPI OpenWithoutRight(const char* name, DWORD access, DWORD share,
                               SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                               HANDLE like) {
    if (access != MissingRight)
        return ::CreateFileA(name, access, share, security, disposition, attributes, like);
    ::SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

DWORD WINAPI ReadOnlyFolder(const char*) {
    return FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
}

TEST(HeldFiles, AreNotThoseThatNeverGo) {
    const TempFolder folder;
    const std::string file = folder.MakeFile("f"), safe = folder.MakeFile("safe"),
                      full = folder.MakeFolder("d"), fresh = folder / "g";
    folder.MakeFile("d\\f");
    ::SetFileAttributesA(safe.c_str(), FILE_ATTRIBUTE_READONLY);
    using Change = std::function<bool(TPatience&)>;
    const auto remove = [](const std::string& path) -> Change {
        return [path](TPatience& patience) { return patience.Delete(path); };
    };
    const auto removeFolder = [](const std::string& path) -> Change {
        return [path](TPatience& patience) { return patience.RemoveFolder(path); };
    };
    const auto move = [](const std::string& from, const std::string& to) -> Change {
        return [from, to](TPatience& patience) {
            return patience.Move(from, to, MOVEFILE_REPLACE_EXISTING);
        };
    };
    const auto open = [](const std::string& path) -> Change {
        return [path](TPatience& patience) {
            return static_cast<bool>(patience.Open(path, GENERIC_WRITE, 0, OPEN_EXISTING));
        };
    };
    struct {
        DWORD Error;
        std::vector<Change> Changes;
        DWORD Right;
        decltype(TFileFunctions::Attributes) Attributes;
    } const cases[] = {
        {ERROR_FILE_NOT_FOUND, {remove(file), move(file, fresh), open(file)}, 0, nullptr},
        {ERROR_DISK_FULL, {remove(file), move(file, fresh), open(file)}, 0, nullptr},
        // Protected, or of another kind.
        {ERROR_ACCESS_DENIED,
         {remove(safe), remove(full), move(file, safe), move(file, full), open(safe)},
         0,
         nullptr},
        {ERROR_ACCESS_DENIED, {removeFolder(full)}, 0, ReadOnlyFolder},
        {ERROR_DIR_NOT_EMPTY, {removeFolder(full)}, 0, nullptr},
        // A right is missing.
        {ERROR_ACCESS_DENIED,
         {remove(file), removeFolder(full), move(file, fresh)},
         DELETE,
         nullptr},
        {ERROR_ACCESS_DENIED, {move(file, fresh)}, FILE_ADD_FILE, nullptr},
        {ERROR_ACCESS_DENIED, {move(full, fresh)}, FILE_ADD_SUBDIRECTORY, nullptr},
    };
    for (const auto& [error, changes, right, attributes] : cases)
        for (const Change& change : changes) {
            SCOPED_TRACE(std::to_string(error) + ", " + std::to_string(&change - changes.data()));
            const TScanner scanner(TScanner::ForEver, error);
            FileFunctions().Probe = OpenWithoutRight;
            MissingRight = right;
            if (attributes)
                FileFunctions().Attributes = attributes;
            TPatience patience;
            EXPECT_FALSE(change(patience));
            EXPECT_EQ(::GetLastError(), error);
            EXPECT_EQ(TScanner::Waited, 0u);
        }
}

TEST(HeldFiles, AreNotWaitedForForEver) {
    const TempFolder folder;
    for (const char* name : {"a", "b", "c.good", "d"})
        folder.MakeFile(name);
    TPatience patience;
    {
        const TScanner scanner(3);
        EXPECT_TRUE(patience.Delete(folder / "a"));
    }
    const TScanner scanner(TScanner::ForEver);
    EXPECT_FALSE(patience.Delete(folder / "b"));
    EXPECT_EQ(::GetLastError(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(TScanner::Waited, LongestPatience) << "a wait that was worth it is free";
    const int tries = Tries();
    EXPECT_GE(tries, 8);
    // Hundreds of them take no longer.
    EXPECT_FALSE(patience.Delete(folder / "d"));
    EXPECT_FALSE(patience.Move(folder / "d", folder / "e", 0));
    EXPECT_EQ(TScanner::Waited, LongestPatience);
    EXPECT_EQ(Tries(), tries + 2);
    try {
        EraseFile(folder / "d");
        ADD_FAILURE() << "it is held";
    } catch (const EInOutError& error) {
        EXPECT_EQ(error.ErrorCode, ERROR_SHARING_VIOLATION);
    }
    EXPECT_EQ(TScanner::Waited, 2 * LongestPatience) << "another's time";
}

/// A file that is deleted but held: it is listed, and refuses everything, until it goes.
struct TDying {
    static bool Refuses(const char* name) {
        if (name != Path || TScanner::Waited >= Until)
            return false;
        ::SetLastError(ERROR_ACCESS_DENIED);
        return true;
    }
    static DWORD WINAPI Attributes(const char* name) {
        return Refuses(name) ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesA(name);
    }
    static BOOL WINAPI Delete(const char* name) { return !Refuses(name) && ::DeleteFileA(name); }
    static void WINAPI Sleep(DWORD milliseconds) {
        TScanner::Waited += milliseconds;
        if (TScanner::Waited >= Until)
            ::DeleteFileA(Path.c_str());
    }

    static inline std::string Path;
    static inline DWORD Until = 0;
};

TEST(HeldFiles, GoLaterThanTheyAreDeleted) {
    const TempFolder folder;
    folder.MakeFolder("d");
    TDying::Path = folder.MakeFile("d\\dying");
    TDying::Until = 100;
    const TScanner scanner(0);
    FileFunctions().Attributes = TDying::Attributes;
    FileFunctions().Delete = TDying::Delete;
    FileFunctions().Sleep = TDying::Sleep;
    EXPECT_TRUE(IsGoing(TDying::Path));
    EXPECT_TRUE(TPatience().RemoveFolder(folder / "d"));
    EXPECT_FALSE(DirectoryExists(folder / "d"));
    EXPECT_GE(TScanner::Waited, TDying::Until);
    EXPECT_TRUE(IsGoing(TDying::Path)) << "there is nothing";

    folder.MakeFolder("d");
    folder.MakeFile("d\\dying");
    TDying::Until += 200;
    EXPECT_TRUE(TPatience().Delete(TDying::Path)) << "it is gone, whoever has deleted it";
    EXPECT_FALSE(TPatience().Delete(TDying::Path)) << "at the first try it was not there";
    EXPECT_EQ(::GetLastError(), ERROR_FILE_NOT_FOUND);
    folder.MakeFile("d\\dying");
    EXPECT_FALSE(IsGoing(TDying::Path));
}

}  // namespace
}  // namespace framework
