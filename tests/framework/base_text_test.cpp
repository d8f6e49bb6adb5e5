#include <gtest/gtest.h>
#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/format.h"
#include "framework/base/paths.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"

namespace framework {
namespace {

std::vector<std::string> Lines(const TStringList& list) {
    return {list.begin(), list.end()};
}

TEST(Format, ReplacesPlaceHoldersInOrder) {
    EXPECT_EQ(Format(":pserver:%s%s:%s:%s  ", {"u@", std::string("srv"), "2402", "/r"}),
              ":pserver:u@srv:2402:/r  ");
    EXPECT_EQ(Format("%d%%, %S %s", {-7, "a", ""}), "-7%, a ");
    EXPECT_EQ(Format("%d", {4'000'000'000u}), "4000000000");
    EXPECT_EQ(Format("left over", {"a", 1}), "left over");
}

TEST(Format, NeverLooksAtInsertedTextsAgain) {
    EXPECT_EQ(Format("%s-%s", {"100%s%d%", "%%"}), "100%s%d%-%%");
    EXPECT_EQ(Format("%s", {std::string_view("a\0b", 3)}), std::string("a\0b", 3));
}

TEST(Format, RaisesForAFormatThatDoesNotFit) {
    EXPECT_THROW(Format("%s %s", {"one"}), EConvertError);
    EXPECT_THROW(Format("%s", {1}), EConvertError);
    EXPECT_THROW(Format("%d", {"1"}), EConvertError);
    EXPECT_THROW(Format("%x", {1}), EConvertError);
    EXPECT_THROW(Format("100%", {}), EConvertError);
}

TEST(StringList, CutsATextAtEveryKindOfLineEnd) {
    TStringList list;
    list.SetText("a\r\nb\nc\rd\r\n\r\n\n\re");
    EXPECT_EQ(Lines(list), (std::vector<std::string>{"a", "b", "c", "d", "", "", "", "e"}));
    list.SetText("");
    EXPECT_EQ(list.Count(), 0);
    list.SetText("a\n");
    EXPECT_EQ(list.Text(), "a\r\n");
}

TEST(StringList, TakesOneOfItsOwnLinesAsItsText) {
    TStringList list;
    list.Add("first\nsecond");
    list.SetText(list[0]);
    EXPECT_EQ(list.Text(), "first\r\nsecond\r\n");
}

TEST(StringList, RemovesEmptyLinesOnlyAndInOrder) {
    TStringList list;
    list.SetText("\n\na\n \n\nb\n\n");
    list.RemoveEmpty();
    EXPECT_EQ(Lines(list), (std::vector<std::string>{"a", " ", "b"}));
    EXPECT_THROW(list[3], EListError);
    EXPECT_THROW(list[-1], EListError);
}

TEST(Text, FoldsCaseByTheCodePage) {
    ASSERT_EQ(::GetACP(), 1252u) << "these texts are of the Western code page";
    EXPECT_EQ(UpperCase("stra\xDF"
                        "e \xE4\xF6\xFC z"),
              "STRA\xDF"
              "E \xC4\xD6\xDC Z");
    EXPECT_TRUE(SameText("C:\\\xC4rger\\Entries", "c:\\\xE4rger\\ENTRIES"));
    EXPECT_FALSE(
        SameText("\xE4"
                 "a",
                 "\xE4"
                 "b"));
    EXPECT_FALSE(SameText("\xE4", "a"));
    // Neighbours of the letters in ASCII that a bit mask would take for letters.
    EXPECT_FALSE(SameText("@[`{", "`{@["));
    EXPECT_FALSE(SameText("ab", "abc"));
    EXPECT_FALSE(SameText(std::string_view("a\0b", 3), std::string_view("a\0c", 3)));
}

TEST(Text, TrimsBlanksAndControlCharactersButNoLetters) {
    EXPECT_EQ(Trim(" \t\r\n\x01 a b\xA0\xFF \r\n"), "a b\xA0\xFF");
    EXPECT_EQ(Trim(" \n"), "");
}

TEST(Text, ConvertsToAndFromUtf16WithoutLookAlikes) {
    ASSERT_EQ(::GetACP(), 1252u) << "these texts are of the Western code page";
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    EXPECT_EQ(FromWide(ToWide(all)), all);
    EXPECT_EQ(ToWide("\x80\xE4"), L"\x20AC\xE4");
    // U+0101, whose look-alike is a plain "a".
    EXPECT_EQ(FromWide(L"x\x0101\x0416y"), "x??y");
    EXPECT_EQ(FromWide({}), "");
}

TEST(Paths, AreCutBehindTheLastSeparator) {
    struct {
        const char *path, *name, *folder, *dir;
    } const cases[] = {
        {"C:\\a\\b.txt", "b.txt", "C:\\a\\", "C:\\a"},
        {"C:\\b.txt", "b.txt", "C:\\", "C:\\"},
        {"C:b.txt", "b.txt", "C:", "C:"},
        {"\\b.txt", "b.txt", "\\", "\\"},
        {"b.txt", "b.txt", "", ""},
        {"C:\\a\\", "", "C:\\a\\", "C:\\a"},
        {"a/b\\c", "c", "a/b\\", "a/b"},
        {"C:\\a\\\\b", "b", "C:\\a\\\\", "C:\\a"},
        {"\\\\server\\share\\f", "f", "\\\\server\\share\\", "\\\\server\\share"},
        {"\\\\f", "f", "\\\\", "\\\\"},
        {"", "", "", ""},
    };
    for (const auto& [path, name, folder, dir] : cases) {
        EXPECT_EQ(ExtractFileName(path), name) << path;
        EXPECT_EQ(ExtractFilePath(path), folder) << path;
        EXPECT_EQ(ExtractFileDir(path), dir) << path;
    }
}

TEST(Exceptions, CarryTheSystemsErrorAcrossTheLibrary) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    try {
        RaiseLastOSError();
        FAIL();
    } catch (const Exception& error) {
        const auto* system = dynamic_cast<const EOSError*>(&error);
        ASSERT_NE(system, nullptr);
        EXPECT_EQ(system->ErrorCode, ERROR_ACCESS_DENIED);
        EXPECT_NE(std::string(error.what()).find(SysErrorMessage(ERROR_ACCESS_DENIED)),
                  std::string::npos);
    }
    EXPECT_STREQ(EOSError(0).what(), "A call to an OS function failed");
    EXPECT_THROW(Abort(), EAbort);
    EXPECT_THROW(AbstractError("TThing::Work"), EAbstractError);
}

TEST(Exceptions, DescribeEveryErrorInOneLine) {
    for (const unsigned long code : {0ul, 2ul, 5ul, 193ul, 0xDEADBEEFul}) {
        const std::string text = SysErrorMessage(code);
        EXPECT_FALSE(text.empty()) << code;
        EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << text;
    }
}

}  // namespace
}  // namespace framework
