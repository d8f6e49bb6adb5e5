#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/import.h"
#include "framework/base/names.h"
#include "framework/base/system_time.h"
#include "framework/base/text_file.h"
#include "tests/framework/kept_entries.h"
#include "tests/framework/temp_folder.h"
#include "tests/support/Scanner.h"

namespace framework {
namespace {

std::vector<std::string> ReadLines(const std::string& path) {
    TTextFile file = TTextFile::Reset(path);
    std::vector<std::string> lines;
    for (std::string line; file.ReadLine(line);)
        lines.push_back(line);
    return lines;
}

/// Opens a file so that nobody else can open it.
FileHandle Lock(const std::string& path) {
    return FileHandle(
        ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

/// Runs the function and gives the system's error number of the EInOutError it raises.
template <class Function>
unsigned long InOutErrorOf(Function function) {
    try {
        function();
    } catch (const EInOutError& error) {
        return error.ErrorCode;
    }
    return ERROR_SUCCESS;
}

TEST(TextFile, ReadsLinesWhateverTheirEnd) {
    const TempFolder folder;
    struct {
        std::string bytes;
        std::vector<std::string> lines;
    } const cases[] = {
        {"", {}},
        {"\n", {""}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        {"a\r\nb", {"a", "b"}},
        {"a\n\r\n\nb\r", {"a", "", "", "b\r"}},
        {"a\rb\r\r\n", {"a\rb\r"}},
        {std::string("a\0\x1A"
                     "b\nc",
                     6),
         {std::string("a\0\x1A"
                      "b",
                      4),
          "c"}},
    };
    for (const auto& [bytes, lines] : cases)
        EXPECT_EQ(ReadLines(folder.MakeFile("lines.txt", bytes)), lines) << bytes;
}

TEST(TextFile, ReadsLineEndsAtTheBordersOfItsBuffer) {
    const TempFolder folder;
    constexpr std::size_t BufferSize = 64 * 1024;
    for (std::size_t length = BufferSize - 3; length <= BufferSize + 1; ++length) {
        const std::string line(length, 'x');
        EXPECT_EQ(ReadLines(folder.MakeFile("lines.txt", line + "\r\nnext\r\n")),
                  (std::vector<std::string>{line, "next"}))
            << length;
    }
}

TEST(TextFile, ReadsNoEndlessLines) {
    const TempFolder folder;
    const std::string longest(TTextFile::LongestLine, 'x');
    const std::string path = folder.MakeFile("long.txt", longest + "\nb\n" + longest + "x\nc");
    TTextFile file = TTextFile::Reset(path);
    std::string line;
    EXPECT_TRUE(file.ReadLine(line));
    EXPECT_EQ(line, longest);
    EXPECT_TRUE(file.ReadLine(line, 1));
    EXPECT_EQ(line, "b");
    EXPECT_EQ(InOutErrorOf([&] { file.ReadLine(line); }), ERROR_INVALID_DATA);
    EXPECT_LE(line.capacity(), 4 * longest.size())
        << "it takes no more memory the longer it goes on";
}

TEST(TextFile, WritesAndAppendsLines) {
    const TempFolder folder;
    const std::string path = folder / "log.txt";
    TTextFile file = TTextFile::Rewrite(path);
    file.WriteLine("first");
    file.Close();
    file = TTextFile::Append(path);
    file.WriteLine("");
    file.WriteLine("third");
    file.Close();
    EXPECT_EQ(ReadBytes(path), "first\r\n\r\nthird\r\n");

    ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    TTextFile::Rewrite(path).WriteLine("x");
    EXPECT_EQ(ReadBytes(path), "x\r\n");
}

TEST(TextFile, WritesMoreThanItBuffers) {
    const TempFolder folder;
    const std::string path = folder / "large.txt";
    const std::string line(99'998, 'x');
    TTextFile file = TTextFile::Rewrite(path);
    for (int count = 0; count < 50; ++count)
        file.WriteLine(line);
    file.Close();
    EXPECT_EQ(ReadLines(path), std::vector<std::string>(50, line));
    EXPECT_EQ(ReadBytes(path).size(), 5'000'000u);
}

TEST(TextFile, LosesNothingWhenClosedByItsDestructorOrAnAssignment) {
    const TempFolder folder;
    {
        TTextFile file = TTextFile::Rewrite(folder / "a.txt");
        file.WriteLine("a");
        file = TTextFile::Rewrite(folder / "b.txt");
        file.WriteLine("b");
        TTextFile moved = std::move(file);
        moved.WriteLine("c");
    }
    EXPECT_EQ(ReadBytes(folder / "a.txt"), "a\r\n");
    EXPECT_EQ(ReadBytes(folder / "b.txt"), "b\r\nc\r\n");
}

TEST(TextFile, AppendsBehindWhatOthersAppendedMeanwhile) {
    const TempFolder folder;
    const std::string path = folder.MakeFile("log.txt", "0\r\n");
    TTextFile reader = TTextFile::Reset(path);
    TTextFile one = TTextFile::Append(path);
    TTextFile two = TTextFile::Append(path);
    one.WriteLine("1");
    two.WriteLine("2");
    one.WriteLine("1");
    two.Close();
    one.Close();
    // What one writer appended stands together.
    EXPECT_EQ(ReadBytes(path), "0\r\n2\r\n1\r\n1\r\n");
    std::string line;
    EXPECT_TRUE(reader.ReadLine(line));
    EXPECT_EQ(line, "0");
}

TEST(TextFile, RaisesWithTheNameOfTheFile) {
    const TempFolder folder;
    const std::string missing = folder / "missing.log";
    EXPECT_EQ(InOutErrorOf([&] { TTextFile::Append(missing); }), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(FileExists(missing));
    EXPECT_EQ(InOutErrorOf([&] { TTextFile::Reset(missing); }), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(InOutErrorOf([&] { TTextFile::Reset(folder.Path()); }), ERROR_ACCESS_DENIED);
    EXPECT_EQ(InOutErrorOf([&] { TTextFile::Rewrite(folder / "no\\x"); }), ERROR_PATH_NOT_FOUND);

    const tests::TScanner scanner(0);
    const std::string path = folder.MakeFile("locked.log");
    const FileHandle lock = Lock(path);
    for (const auto open : {&TTextFile::Reset, &TTextFile::Rewrite, &TTextFile::Append})
        EXPECT_EQ(InOutErrorOf([&] { open(path); }), ERROR_SHARING_VIOLATION);
    try {
        TTextFile::Append(path);
        FAIL();
    } catch (const EInOutError& error) {
        EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
    }
}

TEST(TextFile, RefusesToReadWhatIsWrittenAndToWorkClosed) {
    const TempFolder folder;
    const std::string path = folder.MakeFile("f.txt", "a\r\n");
    std::string line;
    TTextFile reader = TTextFile::Reset(path);
    EXPECT_THROW(reader.WriteLine("b"), EInOutError);
    reader.Close();
    EXPECT_THROW(reader.ReadLine(line), EInOutError);
    TTextFile writer = TTextFile::Append(path);
    EXPECT_THROW(writer.ReadLine(line), EInOutError);
}

TEST(Files, TellFilesFromFolders) {
    const TempFolder folder;
    const std::string file = folder.MakeFile("\xE4\xF6\xFC.txt");
    EXPECT_TRUE(FileExists(file));
    EXPECT_FALSE(DirectoryExists(file));
    EXPECT_TRUE(DirectoryExists(folder.Path()));
    EXPECT_FALSE(FileExists(folder.Path()));
    EraseFile(file);
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(InOutErrorOf([&] { EraseFile(file); }), ERROR_FILE_NOT_FOUND);
}

TEST(Files, MakeFoldersAndThoseAbove) {
    const TempFolder folder;
    ForceDirectories(folder / "a\\b/c\\");
    EXPECT_TRUE(DirectoryExists(folder / "a\\b\\c"));
    ForceDirectories(folder / "a\\b");
    ForceDirectories("C:\\");
    folder.MakeFile("file");
    EXPECT_THROW(ForceDirectories(folder / "file"), EInOutError);
    EXPECT_THROW(ForceDirectories(folder / "file\\x"), EInOutError);
    EXPECT_THROW(ForceDirectories(""), EInOutError);
}

std::vector<std::string> Names(const std::string& mask, int attributes) {
    TFileSearch search(mask, attributes);
    std::vector<std::string> names;
    for (TSearchRec entry; search.Next(entry);)
        names.push_back(entry.Name);
    std::sort(names.begin(), names.end());
    return names;
}

TEST(FileSearch, ListsHiddenSystemAndFoldersOnlyWhenAskedFor) {
    const TempFolder folder;
    folder.MakeFolder("dir");
    struct {
        const char* name;
        DWORD attributes;
    } const files[] = {{"hidden", FILE_ATTRIBUTE_HIDDEN},
                       {"plain", FILE_ATTRIBUTE_NORMAL},
                       {"readonly", FILE_ATTRIBUTE_READONLY},
                       {"system", FILE_ATTRIBUTE_SYSTEM}};
    for (const auto& [name, attributes] : files)
        ::SetFileAttributesA(folder.MakeFile(name).c_str(), attributes);
    using List = std::vector<std::string>;
    const std::string mask = folder / "*.*";
    EXPECT_EQ(Names(mask, 0), (List{"plain", "readonly"}));
    EXPECT_EQ(Names(mask, faHidden), (List{"hidden", "plain", "readonly"}));
    EXPECT_EQ(Names(mask, faDirectory | faArchive | faHidden),
              (List{".", "..", "dir", "hidden", "plain", "readonly"}));
    EXPECT_EQ(Names(mask, faAnyFile),
              (List{".", "..", "dir", "hidden", "plain", "readonly", "system"}));
    EXPECT_EQ(Names(folder / "p*", faAnyFile), List{"plain"});
}

TEST(FileSearch, TakesNoNameForAnother) {
    const TempFolder folder;
    folder.MakeFile("victim.txt");
    folder.MakeFile("A.txt");
    folder.MakeFolder("below");
    const std::wstring below = ToWide(folder / "below\\");
    // The system's look-alikes are a backslash, an A and a question mark.
    for (const wchar_t* name : {L"..\uFF3Cvictim.txt", L"\u0100.txt", L"\uFF1F.txt"})
        ASSERT_TRUE(FileHandle(::CreateFileW((below + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                             CREATE_NEW, 0, nullptr)));
    ASSERT_TRUE(::CreateDirectoryW((below + L"..\uFF3C..").c_str(), nullptr));
    folder.MakeFile("below\\A.txt");
    for (const std::string& name : Names(folder / "below\\*.*", faAnyFile)) {
        if (name == "." || name == "..")
            continue;
        const std::string path = folder / "below\\" + name;
        EXPECT_EQ(FileExists(path), name == "A.txt") << name;
        EXPECT_FALSE(DirectoryExists(path)) << name;
        if (name != "A.txt") {
            EXPECT_EQ(InOutErrorOf([&] { EraseFile(path); }), ERROR_INVALID_NAME) << name;
            EXPECT_EQ(InOutErrorOf([&] { Names(path + "\\*.*", faAnyFile); }), ERROR_INVALID_NAME)
                << name;
        }
    }
    EXPECT_EQ(Names(folder / "below\\*.*", faAnyFile).size(), 7u) << "and none is passed over";
    EXPECT_TRUE(FileExists(folder / "victim.txt") && FileExists(folder / "below\\A.txt"));
}

TEST(FileSearch, MarksWhatNoNameMayHave) {
    const struct {
        const wchar_t* Listed;
        const char* Name;
    } cases[] = {
        {L"plain name.c", "plain name.c"},
        {L".", "."},
        {L"..", ".."},
        {L"\u00C4\u20AC.c", "\xC4\x80.c"},
        {L"a\\b/c:d\"e<f>g|h*i?j\nk\x7F", "a?b?c?d?e?f?g?h?i?j?k\x7F"},
        {L"\u00C4\\b:", "\xC4?b?"},
        {L"victim.txt ", "victim.txt?"},
        {L"...", "???"},
        {L"\u00C4. .", "\xC4???"},
        {L"\u0416\u00C4", "?\xC4"},
        {L"", ""},
    };
    for (const auto& [listed, name] : cases)
        EXPECT_EQ(NameFromWide(listed), name);
    EXPECT_TRUE(IsPattern("a?") && IsPattern("C:\\*\\a") && IsPattern("\\\\?\\C:\\a<"));
    EXPECT_FALSE(IsPattern("C:\\a.c") || IsPattern("\\\\?\\C:\\a"));
}

TEST(SystemLibraries, ComeFromTheSystemsFolderAlone) {
    // Beside the program, as a current folder is, or one of the path.
    wchar_t system[MAX_PATH]{}, program[MAX_PATH]{};
    ::GetSystemDirectoryW(system, MAX_PATH);
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring planted =
        std::wstring(program, std::wstring_view(program).rfind(L'\\') + 1) +
        L"planted_for_test.dll";
    ASSERT_TRUE(
        ::CopyFileW((std::wstring(system) + L"\\version.dll").c_str(), planted.c_str(), FALSE));
    EXPECT_EQ(LoadSystemLibrary(L"planted_for_test.dll"), nullptr);
    const Library loaded(::LoadLibraryW(L"planted_for_test.dll"));
    EXPECT_TRUE(loaded) << "it could have been loaded";
    EXPECT_NE(LoadSystemLibrary(L"msftedit.dll"), nullptr);
    EXPECT_EQ(LoadSystemLibrary(L"no_such.dll"), nullptr);
}

TEST(FileSearch, ListsNothingWhereNothingIs) {
    const TempFolder folder;
    folder.MakeFile("file");
    for (const std::string& mask : {folder / "no\\*.*", folder / "file\\*.*", folder / "x*",
                                    std::string(), std::string("Q:\\*.*")})
        EXPECT_EQ(Names(mask, faAnyFile), std::vector<std::string>()) << mask;
}

TEST(FileSearch, TellsLinksFromWhatIsOnlyKeptElsewhere) {
    const TempFolder folder;
    const std::string kept = folder.MakeFolder("kept folder");
    folder.MakeFile("kept file");
    folder.MakeFile("plain");
    struct {
        DWORD Tag;
        bool Link;
    } const cases[] = {
        {IO_REPARSE_TAG_SYMLINK, true},
        {IO_REPARSE_TAG_MOUNT_POINT, true},
        {0, true},            // nobody knows
        {0x9000001A, false},  // a cloud, and its variants
        {0x9000101A, false},
        {0x9000F01A, false},
        {0x80000013, false},  // duplicate blocks of the disk
        {0x80000017, false},  // compressed
    };
    for (const auto& [tag, link] : cases) {
        const KeptEntries elsewhere(tag);
        EXPECT_EQ(IsLink(kept), link) << std::hex << tag;
        EXPECT_EQ(IsLink(kept + "\\"), link) << std::hex << tag;
        EXPECT_FALSE(IsLink(folder / "plain") || IsLink(folder / "missing") || IsLink("C:\\"));
        std::string links;
        TFileSearch search(folder / "*.*", faAnyFile);
        for (TSearchRec entry; search.Next(entry);)
            links += entry.IsLink() ? entry.Name + ";" : "";
        EXPECT_EQ(links.size(), link ? std::string("kept file;kept folder;").size() : 0)
            << std::hex << tag << links;
    }
}

TEST(FileSearch, DescribesEntries) {
    const TempFolder folder;
    const std::string path = folder.MakeFile("\xC4rger.txt", "12345");
    const SYSTEMTIME written{2004, 7, 0, 5, 14, 7, 9, 0};
    FILETIME time{};
    ::SystemTimeToFileTime(&written, &time);
    {
        const FileHandle file(
            ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(::SetFileTime(file.Get(), nullptr, nullptr, &time));
    }
    ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    TFileSearch search(path, faAnyFile);
    TSearchRec entry;
    ASSERT_TRUE(search.Next(entry));
    EXPECT_EQ(entry.Name, "\xC4rger.txt");
    EXPECT_EQ(entry.Size, 5);
    EXPECT_TRUE(entry.Attr & faReadOnly);
    EXPECT_FALSE(entry.IsDirectory());
    EXPECT_FALSE(entry.IsLink());
    EXPECT_NEAR(entry.LastWriteTime, SystemTimeToDateTime(written), 1e-7);
    EXPECT_FALSE(search.Next(entry));
    EXPECT_FALSE(search.Next(entry));
}

}  // namespace
}  // namespace framework
