#include <gtest/gtest.h>

#include <climits>

#include "core/Customvcs_types.h"
#include "core/Cvs_utils.h"
#include "core/Cvsroot.h"
#include "cvs/Cvstempl_types.h"
#include "framework/base/exceptions.h"
#include "framework/base/string_list.h"
#include "tests/support/Japanese.h"

namespace tandrel {
namespace {

/// All names of a table, in their order.
template <class TTable>
std::string Joined(const TTable& table) {
    std::string joined;
    for (const std::string_view name : table)
        joined.append(name).append(1, ',');
    return joined;
}

TEST(NameTables, StandInTheOrderOfTheirEnumerations) {
    static_assert(otRlog == 25 && TOperationNames.size() == 26);
    static_assert(sizeof(TOperationType) == 1 && sizeof(TMergeType) == 1);
    EXPECT_EQ(Joined(TOperationNames),
              "init,import,checkout,update,commit,release,add,remove,status,admin,annotate,diff,"
              "edit,editors,export,history,log,login,logout,rdiff,rtag,tag,unedit,watch,watchers,"
              "rlog,");
    EXPECT_EQ(Joined(TKeywModeNames), ",-kkv,-kkvl,-kk,-ko,-kb,-ku,-kv,");
    EXPECT_EQ(Joined(TKeywModeDescr),
              "current,default,default with lokers name,only keyword names,disable,binary,unicode,"
              "only keyword values,");
    EXPECT_EQ(Joined(TFileTypeNames), "file,directory,,,");
    EXPECT_EQ(Joined(TActionEditName), ",edit,unedit,all,");
    EXPECT_EQ(Joined(TWatchSubCommName), "on,off,add,remove,");
    // The members that the names are looked up by.
    EXPECT_EQ(otStatus * 1000 + otTag, 8021);
    EXPECT_EQ(Km_ko * 10 + Km_kv, 47);
    EXPECT_EQ(fi_igrnore * 100 + aeUnedit * 10 + wsAdd, 222);
}

TEST(NameTables, GiveOnePastTheEndForNoMember) {
    EXPECT_EQ(GetStikyTypeIndex(stMostRecent), 5);
    EXPECT_EQ(GetStikyTypeIndex(static_cast<TStikyType>(200)), 6);
    EXPECT_EQ(GetMergeTypeIndex(mtNone), 0);
    EXPECT_EQ(GetMergeTypeIndex(static_cast<TMergeType>(3)), 3);
    EXPECT_EQ(GetDiffTypeIndex(dctMostRecent), 3);
    EXPECT_EQ(GetDiffTypeIndex(static_cast<TDiffCompareType>(255)), 4);
}

TEST(Utils, JoinAndTrim) {
    EXPECT_EQ(SlashSep("C:\\A\\", "b"), "C:\\A\\b");
    EXPECT_EQ(SlashSep("C:\\A", "b"), "C:\\A\\b");
    EXPECT_EQ(SlashSep("C:\\A", ""), "C:\\A\\");
    EXPECT_EQ(SlashSep("", "b"), "");
    EXPECT_EQ(SlashSemicolon("a"), "a;");
    EXPECT_EQ(SlashSemicolon("a;"), "a;");
    EXPECT_EQ(SlashSemicolon(""), "");
    EXPECT_EQ(SetApostrophe("a b"), "\"a b\"");
    EXPECT_EQ(SetApostrophe("\"a"), "\"a\"");
    EXPECT_EQ(SetApostrophe("a\""), "\"a\"");
    EXPECT_EQ(SetApostrophe("\""), "\"");
    EXPECT_EQ(SetApostrophe(""), "");
    EXPECT_EQ(RemoveSlashSep("C:\\\\"), "C:\\");
    EXPECT_EQ(RemoveSlashSep("C:/"), "C:/");
    EXPECT_EQ(RemoveBackSlash("//a"), "/a");
    EXPECT_EQ(RemoveBackSlash("\\a"), "\\a");
    EXPECT_EQ(FirstChar(""), "");
    EXPECT_EQ(LastPos("a\\b\\c", "\\"), 4);
    EXPECT_EQ(LastPos("abc", "\\"), 0);
    EXPECT_EQ(LeftPadCh("7", '0', 2), "07");
    EXPECT_EQ(LeftPadCh("123", '0', 2), "123");
    EXPECT_EQ(LeftPadCh("7", '0', INT_MIN), "7");
}

TEST(Utils, CopyUpToACharacter) {
    std::string Result = "before";
    CopyFromPosToString("a;b", 3, ';', Result);
    EXPECT_EQ(Result, "before");
    CopyFromPosToString("a;b;c", 3, ';', Result);
    EXPECT_EQ(Result, "b");
    CopyFromPosToString("a;b", 2, ';', Result);
    EXPECT_EQ(Result, "");
    // The result may be the text itself.
    Result = "name;rest";
    CopyFromPosToString(Result, 1, ';', Result);
    EXPECT_EQ(Result, "name");

    EXPECT_EQ(RemoveBeforeString("-kb", "-"), "kb");
    EXPECT_EQ(RemoveBeforeString("a-b-c", "-"), "b-c");
    EXPECT_EQ(RemoveBeforeString("kb", "-"), "");
}

TEST(Utils, CountFromAPosition) {
    EXPECT_EQ(CountFromPosToString("ab;cd", 1, ';'), 2);
    EXPECT_EQ(CountFromPosToString("ab;cd", 3, ';'), 0);
    EXPECT_EQ(CountFromPosToString("ab;cd", 4, ';'), 2);
    EXPECT_EQ(CountFromPosToPerevod("a\rb\nc\r\nd", 1), 5);
    EXPECT_EQ(CountFromPosToPerevod("a\rb\nc\r\nd", 7), 2);
    EXPECT_EQ(CountFromPosToPerevod("a\r", 1), 2);
}

TEST(Utils, FindALineBreakBeforeAPosition) {
    const std::string Text = "ab\r\ncd";
    const bool Expected[] = {false, false, false, true, true, true, false, false};
    for (int Pos = 0; Pos < 8; ++Pos)
        EXPECT_EQ(IsPerevodBeforePos(Text, Pos), Expected[Pos]) << Pos;
    EXPECT_FALSE(IsPerevodBeforePos("\r", 1));
    EXPECT_TRUE(IsPerevodBeforePos("\r\n", 3));
}

TEST(Utils, CopyBetweenPositions) {
    EXPECT_EQ(CopyStartFromPos_BeforePos("abcde", 2, 4), "bc");
    EXPECT_EQ(CopyStartFromPos_BeforePos("abcde", 2, 2), "b");
    EXPECT_EQ(CopyStartFromPos_BeforePos("abcde", 3, 2), "");
    EXPECT_EQ(CopyStartFromPos_BeforePos("abcde", 4, 99), "de");
    EXPECT_EQ(CopyStartFromPos_BeforePos("abcde", 6, 9), "");
    EXPECT_EQ(CopyStartFromPos_BeforePos("abcde", -1, 3), "ab");
    EXPECT_EQ(Copy_FromPosToEnd("abcde", 5), "e");
    EXPECT_EQ(Copy_FromPosToEnd("abcde", 6), "");
    EXPECT_EQ(Copy_FromPosToEnd("abcde", 0), "abcde");
}

/// What the functions that count from a position make of it.
std::string FromPosition(std::string_view Text, int Pos) {
    std::string Copied = "none";
    CopyFromPosToString(Text, Pos, ';', Copied);
    return Copied + '|' + std::to_string(CountFromPosToString(Text, Pos, ';')) + '|' +
           std::to_string(CountFromPosToPerevod(Text, Pos)) + '|' +
           CopyStartFromPos_BeforePos(Text, Pos, INT_MAX) + '|' + Copy_FromPosToEnd(Text, Pos);
}

TEST(Utils, TakeAnyPosition) {
    EXPECT_EQ(FromPosition("a;b\r\n", 1), "a|1|3|a;b\r\n|a;b\r\n");
    EXPECT_EQ(FromPosition("a;b\r\n", 6), "none|0|0||");
    for (const std::string_view Text : {"", "\r\n", "a;b", "a;b\r\n"}) {
        const int End = static_cast<int>(Text.size()) + 1;
        for (const int Pos : {INT_MIN, INT_MIN + 1, -1, 0}) {
            EXPECT_EQ(FromPosition(Text, Pos), FromPosition(Text, 1)) << Text << Pos;
            EXPECT_FALSE(IsPerevodBeforePos(Text, Pos)) << Text << Pos;
            EXPECT_EQ(CopyStartFromPos_BeforePos(Text, Pos, Pos), "") << Text << Pos;
        }
        for (const int Pos : {End + 1, End + 2, INT_MAX - 1, INT_MAX}) {
            EXPECT_EQ(FromPosition(Text, Pos), FromPosition(Text, End)) << Text << Pos;
            EXPECT_EQ(IsPerevodBeforePos(Text, Pos), false) << Text << Pos;
        }
    }
}

TEST(Utils, JoinCommandLines) {
    EXPECT_EQ(LConcat({"update", "", "-A"}), "update  -A");
    EXPECT_EQ(LConcat({"", "", "update", "-A", ""}), "update -A ");
    EXPECT_EQ(LConcat({}), "");
    std::string Text = "cvs ";
    LAppend(Text, "a b");
    EXPECT_EQ(Text, "cvs  a b");
}

TEST(Utils, FindTheNameRelativeToTheRoot) {
    struct {
        const char *Root, *Dir, *Expected;
    } const Cases[] = {
        {"C:\\Work", "C:\\Work", "f.c"},
        {"C:\\Work\\", "c:\\work", "f.c"},
        {"C:\\Work", "C:\\Work\\", "f.c"},
        {"C:\\Work", "c:\\WORK\\Sub", "Sub\\f.c"},
        {"C:\\Work\\", "C:\\Work\\Sub\\", "Sub\\f.c"},
        {"C:\\", "C:\\a\\b", "a\\b\\f.c"},
        {"C:\\W\xE4rme", "C:\\W\xC4RME\\\xFC", "\xFC\\f.c"},
        {"C:\\Work", "C:\\Work\\Old\\C:\\Work\\x", "Old\\C:\\Work\\x\\f.c"},
    };
    for (const auto& [Root, Dir, Expected] : Cases)
        EXPECT_EQ(GetRelativePath(Root, Dir, "f.c"), Expected) << Root << ' ' << Dir;
}

TEST(Utils, RefuseANameOutsideTheRoot) {
    for (const char* const Dir : {"C:\\Workshop", "C:\\Wor", "D:\\Work\\Sub", "C:\\"}) {
        try {
            GetRelativePath("C:\\Work", Dir, "f.c");
            FAIL() << Dir;
        } catch (const framework::Exception& Error) {
            EXPECT_EQ(Error.what(),
                      "File " + SlashSep(Dir, "f.c") + " is not locating in  working direktory ");
        }
    }
    EXPECT_THROW(GetRelativePath("", "C:\\Work", "f.c"), framework::Exception);
}

TEST(Utils, TakeNoHalfOfALetterForASeparator) {
    const tests::Japanese Letters;
    const std::string Source = tests::Source, So = Source.substr(0, 2), Root = "C:\\" + So;
    EXPECT_EQ(SlashSep(Root, Source), Root + "\\" + Source);
    EXPECT_EQ(SlashSep(Root + "\\", ""), Root + "\\");
    EXPECT_EQ(RemoveSlashSep(Root), Root);
    EXPECT_EQ(RemoveSlashSep(Root + "\\"), Root);
    EXPECT_EQ(GetRelativePath(Root, Root, "f.c"), "f.c");
    EXPECT_EQ(GetRelativePath(Root + "\\", Root + "\\" + Source + "\\" + So, "f.c"),
              Source + "\\" + So + "\\f.c");
    EXPECT_THROW(GetRelativePath("X", "C:\\" + Source, "f.c"), framework::Exception);
    EXPECT_EQ(FirstChar(Source), So);
    EXPECT_EQ(LastPos(Source, "\\") + LastPos("\\" + Source, "\\"), 1);
    EXPECT_EQ(CountFromPosToString(Source + "[", 1, '['), 6);
    EXPECT_EQ(RemoveBeforeString(Source + "[a", "["), "a");
    std::string Copied;
    CopyFromPosToString(Source + "[a", 1, '[', Copied);
    EXPECT_EQ(Copied, Source);
}

TEST(Cvsroot, IsComposedForEachConnection) {
    struct {
        TConnectionType Type;
        const char *User, *Password, *Port, *Expected;
    } const Cases[] = {
        {cnLocal, "u", "p", "9", "/r "},
        {cnPServer, "u", "", "", ":pserver:u@srv:/r  "},
        {cnPServer, "", "", "2401", ":pserver:srv:/r  "},
        {cnPServer, "u", "p", "2401", ":pserver:u:p@srv:/r  "},
        {cnPServer, "", "p", "02401", ":pserver::p@srv:02401:/r  "},
        {cnPServer, "%s", "%d", "%", ":pserver:%s:%d@srv:%:/r  "},
        {cnSSH, "u", "p", "2222", ":ext:u@srv:/r  "},
        {cnSSH, "", "p", "", ":ext:srv:/r  "},
    };
    for (const auto& [Type, User, Password, Port, Expected] : Cases)
        EXPECT_EQ(CompileCVSROOT(Type, "srv", User, Password, Port, "/r"), Expected);
}

TEST(Cvsroot, ConvertsItsTexts) {
    for (const TConnectionType Type : {cnLocal, cnPServer, cnSSH})
        EXPECT_EQ(ConnTypeFromStr(StrFromConnType(Type)), Type);
    EXPECT_EQ(StrFromConnType(cnLocal), "Local");
    EXPECT_EQ(ConnTypeFromStr("PSERVER"), cnPServer);
    EXPECT_EQ(ConnTypeFromStr("Ext"), cnSSH);
    for (const char* const Text : {"", "ssh", "pserver "})
        EXPECT_EQ(ConnTypeFromStr(Text), cnLocal);

    EXPECT_EQ(Get_KeywordMode("kkv"), Km_kkv);
    EXPECT_EQ(Get_KeywordMode("kb"), Km_kb);
    EXPECT_EQ(Get_KeywordMode("kv"), Km_kv);
    for (const char* const Text : {"", "-kb", "KB", "k"})
        EXPECT_EQ(Get_KeywordMode(Text), Km_none);
}

}  // namespace
}  // namespace tandrel
