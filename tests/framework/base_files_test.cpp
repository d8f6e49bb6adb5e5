#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/system_time.h"
#include "framework/base/text_file.h"
#include "tests/framework/temp_folder.h"

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

TEST(TextFile, ReadsLongLinesInLinearTime) {
    const TempFolder folder;
    const std::string line(10'000'000, 'x');
    const std::string path = folder.MakeFile("long.txt", line + "\n" + line);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ReadLines(path), (std::vector<std::string>{line, line}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
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

TEST(FileSearch, ListsNothingWhereNothingIs) {
    const TempFolder folder;
    folder.MakeFile("file");
    for (const std::string& mask : {folder / "no\\*.*", folder / "file\\*.*", folder / "x*",
                                    std::string(), std::string("Q:\\*.*")})
        EXPECT_EQ(Names(mask, faAnyFile), std::vector<std::string>()) << mask;
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
