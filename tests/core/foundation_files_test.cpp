// The shell's file operations. What they must never do: lose the user's only copy of a file, reach
// through a link into somebody else's folder, or stop at a question.
#include <gtest/gtest.h>
#include <objbase.h>
#include <windows.h>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "tests/framework/temp_folder.h"
#include "tests/support/Links.h"

namespace tandrel {
namespace {

using framework::DirectoryExists;
using framework::FileExists;
using framework::FileHandle;

/// Keeps everybody else from opening a file.
FileHandle Lock(const std::string& Path) {
    FileHandle File(::CreateFileA(Path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(File) << Path;
    return File;
}

TEST(MoveFileExt, CopiesAndMovesFiles) {
    const TempFolder Folder;
    const std::string Src = Folder.MakeFile("\xC4rger %s.txt", "new");
    const std::string Dst = Folder.MakeFile("Dst.txt", "old one");
    EXPECT_TRUE(MoveFileExt(Src, Dst, false));
    EXPECT_EQ(ReadBytes(Src), "new");
    EXPECT_EQ(ReadBytes(Dst), "new");

    ::SetFileAttributesA(Src.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string Far = Folder / "made\\on the way.txt";
    EXPECT_TRUE(MoveFileExt(Src, Far, true));
    EXPECT_FALSE(FileExists(Src));
    EXPECT_EQ(ReadBytes(Far), "new");
}

TEST(MoveFileExt, MovesAFolderWithAllThatIsInIt) {
    const TempFolder Folder;
    Folder.MakeFolder("src");
    Folder.MakeFolder("src\\empty");
    Folder.MakeFolder("src\\sub");
    Folder.MakeFile("src\\sub\\a.txt", std::string(200'000, 'a'));
    ::SetFileAttributesA(Folder.MakeFile("src\\.hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(MoveFileExt(Folder / "src", Folder / "src.precvs", true));
    EXPECT_FALSE(DirectoryExists(Folder / "src"));
    EXPECT_TRUE(DirectoryExists(Folder / "src.precvs\\empty"));
    EXPECT_EQ(ReadBytes(Folder / "src.precvs\\sub\\a.txt"), std::string(200'000, 'a'));
    EXPECT_EQ(ReadBytes(Folder / "src.precvs\\.hidden"), "text");
}

TEST(MoveFileExt, KeepsTheSourceWhenTheDestinationIsInUse) {
    const TempFolder Folder;
    const std::string Src = Folder.MakeFile("src.txt", "new");
    const std::string Dst = Folder.MakeFile("dst.txt", "old");
    {
        const FileHandle InUse = Lock(Dst);
        EXPECT_FALSE(MoveFileExt(Src, Dst, false));
        EXPECT_FALSE(MoveFileExt(Src, Dst, true));
    }
    EXPECT_EQ(ReadBytes(Src), "new");
    EXPECT_EQ(ReadBytes(Dst), "old");
}

TEST(MoveFileExt, KeepsAFolderOfWhichItCannotCopyEverything) {
    const TempFolder Folder;
    Folder.MakeFolder("src");
    Folder.MakeFile("src\\a.txt");
    const std::string Used = Folder.MakeFile("src\\used.txt", "only copy");
    {
        const FileHandle InUse = Lock(Used);
        EXPECT_FALSE(MoveFileExt(Folder / "src", Folder / "dst", true));
        EXPECT_NE(::GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
    }
    EXPECT_EQ(ReadBytes(Used), "only copy");
    EXPECT_TRUE(FileExists(Folder / "src\\a.txt"));
}

TEST(MoveFileExt, KeepsASourceThatIsItsOwnDestination) {
    const TempFolder Folder;
    Folder.MakeFolder("a long name");
    const std::string Dir = Folder / "a long name";
    const std::string File = Folder.MakeFile("a long name\\a.txt", "only copy");
    char Short[MAX_PATH] = {};
    ::GetShortPathNameA(Dir.c_str(), Short, MAX_PATH);
    for (const std::string& Same : {Dir, Folder / "A LONG NAME", Dir + "\\.", std::string(Short)})
        EXPECT_FALSE(MoveFileExt(Dir, Same, true)) << Same;
    for (const std::string& Same : {File, Dir + "\\.\\A.TXT", std::string(Short) + "\\a.txt"})
        EXPECT_FALSE(MoveFileExt(File, Same, true)) << Same;
    EXPECT_FALSE(MoveFileExt(Dir, Dir + "\\below", true));
    EXPECT_EQ(ReadBytes(File), "only copy");
}

TEST(MoveFileExt, FailsWithoutANameOrASource) {
    const TempFolder Folder;
    const std::string File = Folder.MakeFile("a.txt");
    EXPECT_FALSE(MoveFileExt("", File, true));
    EXPECT_FALSE(MoveFileExt(File, "", true));
    EXPECT_FALSE(MoveFileExt(Folder / "missing.txt", Folder / "b.txt", true));
    EXPECT_FALSE(MoveFileExt(Folder / "?.txt", Folder / "b.txt", true));
    EXPECT_FALSE(MoveFileExt(File, Folder / "b*.txt", true));
    EXPECT_TRUE(FileExists(File));
    EXPECT_FALSE(FileExists(Folder / "b.txt"));
}

TEST(RevoveFilesExt, DeletesEveryFileOfTheList) {
    const TempFolder Folder;
    const std::string First = Folder.MakeFile("\xE4.txt");
    const std::string Second = Folder.MakeFile("b c.txt");
    const std::string Kept = Folder.MakeFile("kept.txt");
    ::SetFileAttributesA(Second.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(RevoveFilesExt(First + '\0' + Second));
    EXPECT_FALSE(FileExists(First));
    EXPECT_FALSE(FileExists(Second));
    EXPECT_TRUE(FileExists(Kept));
}

TEST(RevoveFilesExt, SkipsEmptyNames) {
    const TempFolder Folder;
    const std::string First = Folder.MakeFile("a.txt");
    const std::string Second = Folder.MakeFile("b.txt");
    EXPECT_TRUE(RevoveFilesExt(std::string(1, '\0') + First + '\0' + '\0' + Second + '\0'));
    EXPECT_FALSE(FileExists(First));
    EXPECT_FALSE(FileExists(Second));
    EXPECT_TRUE(RevoveFilesExt(""));
}

TEST(RevoveFilesExt, DeletesNothingForAPatternOrAFolder) {
    const TempFolder Folder;
    const std::string First = Folder.MakeFile("a.txt");
    Folder.MakeFolder("sub");
    const std::string Second = Folder.MakeFile("sub\\b.txt");
    // Names that the code page does not have are listed with question marks.
    for (const char* Name : {"?.txt", "*", "sub"}) {
        EXPECT_FALSE(RevoveFilesExt(First + '\0' + (Folder / Name))) << Name;
        EXPECT_TRUE(FileExists(First) && FileExists(Second)) << Name;
    }
}

TEST(RevoveFilesExt, FailsForAFileInUseAndOneThatIsMissing) {
    const TempFolder Folder;
    const std::string Used = Folder.MakeFile("used.txt");
    {
        const FileHandle InUse = Lock(Used);
        ::SetFileAttributesA(Used.c_str(), FILE_ATTRIBUTE_READONLY);
        EXPECT_FALSE(RevoveFilesExt(Used));
    }
    EXPECT_TRUE(::GetFileAttributesA(Used.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(RevoveFilesExt(Folder / "missing.txt"));
}

TEST(RevoveDirExt, DeletesAFolderWithReadOnlyAndHiddenFiles) {
    const TempFolder Folder;
    Folder.MakeFolder("dir");
    Folder.MakeFolder("dir\\CVS");
    ::SetFileAttributesA(Folder.MakeFile("dir\\CVS\\Entries").c_str(), FILE_ATTRIBUTE_HIDDEN);
    ::SetFileAttributesA(Folder.MakeFile("dir\\a.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(RevoveDirExt(Folder / "dir"));
    EXPECT_FALSE(DirectoryExists(Folder / "dir"));
    EXPECT_FALSE(RevoveDirExt(Folder / "dir"));
    const std::string File = Folder.MakeFile("file");
    EXPECT_FALSE(RevoveDirExt(File));
    EXPECT_TRUE(FileExists(File));
    // What is in a folder that cannot be named may be a link to somewhere else.
    Folder.MakeFolder("dir");
    const std::wstring Below = framework::ToWide(Folder / "dir\\") + L"\u0100";
    ASSERT_TRUE(::CreateDirectoryW(Below.c_str(), nullptr));
    EXPECT_FALSE(RevoveDirExt(Folder / "dir"));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_NAME);
    EXPECT_NE(::GetFileAttributesW(Below.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(Links, KeepWhatLiesBehindThem) {
    const TempFolder Folder;
    Folder.MakeFolder("elsewhere");
    const std::string Precious = Folder.MakeFile("elsewhere\\precious.txt", "precious");
    Folder.MakeFolder("dir");
    Folder.MakeFolder("dir\\sub");
    const std::string Ordinary = Folder.MakeFile("dir\\a.txt");
    tests::MakeLink(Folder / "dir\\sub", "link", "../../elsewhere");
    ASSERT_TRUE(FileExists(Folder / "dir\\sub\\link\\precious.txt")) << "no link was made";

    EXPECT_FALSE(RevoveDirExt(Folder / "dir"));
    EXPECT_FALSE(RevoveDirExt(Folder / "dir\\sub\\link"));
    EXPECT_FALSE(MoveFileExt(Folder / "dir", Folder / "moved", true));
    EXPECT_EQ(ReadBytes(Precious), "precious");
    EXPECT_TRUE(FileExists(Ordinary));
    EXPECT_FALSE(DirectoryExists(Folder / "moved"));
}

TEST(Folders, CountAsEmptyWhenTheyExist) {
    const TempFolder Folder;
    Folder.MakeFile("file");
    EXPECT_TRUE(IsFolderEmpty(Folder.Path()));
    EXPECT_TRUE(IsFolderEmpty(Folder.MakeFolder("empty")));
    EXPECT_FALSE(IsFolderEmpty(Folder / "missing"));
    EXPECT_FALSE(IsFolderEmpty(Folder / "file"));
    EXPECT_FALSE(IsFolderEmpty(""));
}

TEST(Folders, IncludeOneForTemporaryFiles) {
    const std::string Dir = GetTempDir();
    EXPECT_TRUE(DirectoryExists(Dir));
    EXPECT_TRUE(Dir.ends_with('\\'));
}

TEST(Contents, AreTheSameByteForByte) {
    const TempFolder Folder;
    const std::string Block(64 * 1024, 'x');
    const std::string A = Folder.MakeFile("a", Block +
                                                   "\r\n\x1A"
                                                   "1");
    EXPECT_TRUE(HasSameContents(A, A));
    EXPECT_TRUE(HasSameContents(A, Folder.MakeFile("b", Block + "\r\n\x1A"
                                                                "1")));
    EXPECT_TRUE(HasSameContents(Folder.MakeFile("c", ""), Folder.MakeFile("d", "")));
    EXPECT_TRUE(HasSameContents(Folder.MakeFile("c", Block), Folder.MakeFile("d", Block)));
    for (const std::string& Other : {Block + "\r\n\x1A"
                                             "2",
                                     Block,
                                     Block + "\r\n\x1A"
                                             "11",
                                     std::string()})
        EXPECT_FALSE(HasSameContents(A, Folder.MakeFile("b", Other))) << Other.size();
    EXPECT_FALSE(HasSameContents(A, Folder / "missing"));
    EXPECT_FALSE(HasSameContents(Folder / "missing", Folder / "missing"));
}

TEST(ShellImage, IsThatOfTheItem) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    const TempFolder Folder;
    const std::string File = Folder.MakeFile("\xE4.txt");
    EXPECT_GE(GetShellImage(File, false, false), 0);
    EXPECT_GE(GetShellImage(File, true, false), 0);
    EXPECT_NE(GetShellImage(Folder.Path(), false, false), GetShellImage(File, false, false));
    EXPECT_NE(GetShellImage(Folder.Path(), false, true),
              GetShellImage(Folder.Path(), false, false));
    EXPECT_EQ(GetShellImage(Folder / "missing.txt", false, false), -1);
    ::CoUninitialize();
}

TEST(DebugSwitch, IsAWholeArgumentInAnyCase) {
    for (const wchar_t* Line :
         {L"host.exe -DEBUG", L"\"C:\\a b\\host.exe\" x \"-debug\"", L"host.exe -Debug y"})
        EXPECT_TRUE(HasDebugSwitch(Line));
    for (const wchar_t* Line : {L"", L"-DEBUG", L"host.exe", L"host.exe -DEBUGGER",
                                L"host.exe /DEBUG", L"host.exe \"x -DEBUG\"", L"host.exe DEBUG"})
        EXPECT_FALSE(HasDebugSwitch(Line));
    EXPECT_EQ(IsDebuggerPresent(), ::IsDebuggerPresent() != FALSE);
}

}  // namespace
}  // namespace tandrel
