// Names and dates from the client's log.

#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "core/Cvs_datetext.h"
#include "cvs/LogParser.h"
#include "tests/cvs/Sandbox.h"

namespace {

using namespace tandrel;

std::string Dump(const TLogList& list) {
    std::string text;
    for (const TLogClass& item : list)
        text += item.Name + "=" + item.Value + (item.IsLabel ? " label; " : " branch; ");
    return text;
}

std::string Header(const std::string& names) {
    return "head: 1.4\r\naccess list:\r\nsymbolic names:\r\n" + names +
           "keyword substitution: kv\r\ntotal revisions: 3;\tselected revisions: 0\r\n"
           "description:\r\n";
}

TEST(LogParser, TellsLabelsFromBranches) {
    struct {
        std::string Text;
        const char* Expected;
    } const cases[] = {
        {Header("\tREL_1: 1.4\r\n\tBR_1: 1.4.0.2\r\n"), "REL_1=1.4 label; BR_1=1.4.0.2 branch; "},
        // The last name counts as a branch, whatever it is.
        {Header("\tBR_1: 1.4.0.2\r\n\tREL_1: 1.4\r\n"), "BR_1=1.4.0.2 branch; REL_1=1.4 branch; "},
        {Header(""), ""},
        // A name of several files keeps its first revision and takes its last kind.
        {Header("\tA: 1.1\r\n\tB: 1.2\r\n") + Header("") + Header("\tA: 1.9\r\n"),
         "A=1.1 branch; B=1.2 branch; "},
        {Header("\tA: 1.1\r\n\tB: 1.2\r\n") + Header("\tB: 1.3\r\n\tC: 1.1.0.2\r\n"),
         "A=1.1 label; B=1.2 label; C=1.1.0.2 branch; "},
        // Names differ by case, headings do not.
        {"SYMBOLIC NAMES:\r\n\ta: 1.1\r\n\tA: 1.2\r\n\tz: 1.3\r\nKeyword",
         "a=1.1 label; A=1.2 label; z=1.3 branch; "},
        // Without a keyword line the totals end the section.
        {"symbolic names:\r\n\tA: 1.1\r\n\tB: 1.2\r\ntotal revisions",
         "A=1.1 label; B=1.2 branch; "},
        {"symbolic names:\r\n\tA: 1.1\r\n\tB: 1.2\r\n", ""},
        // A message that speaks of keywords is passed over.
        {"the keyword is gone\r\n" + Header("\tA: 1.1\r\n\tB: 1.2\r\n"),
         "A=1.1 label; B=1.2 branch; "},
        {"", ""},
    };
    for (const auto& [text, expected] : cases) {
        TLogList list;
        EXPECT_TRUE(ParseSymbolicNames(text, list));
        EXPECT_EQ(Dump(list), expected) << text;
    }
}

TEST(LogParser, FindsDatesWithTheirRevisions) {
    TLogList list;
    EXPECT_TRUE(ParseRevisionDates(
        "revision 1.2\r\ndate: 2004/03/05 14:07:09;  author: me;  state: Exp;\r\nmessage\r\n"
        "revision 1.1.1.1.2.10\r\ndate: 2003/01/01 00:00:00;  author: me;\r\nThe date: none\r\n"
        "----\r\nrevision 1.1\r\nDATE: 2002/01/01 00:00:00;",
        list));
    EXPECT_EQ(Dump(list),
              "2004/03/05 14:07:09=revision 1.2 branch; "
              // The number is too long for its heading to be in reach.
              "2003/01/01 00:00:00= branch; "
              "none\r\n----\r\nrevision 1.1\r\nDATE: 2002/01/01 00:00:00= branch; ");
}

TEST(LogParser, StopsAtMoreThanALogCanHold) {
    const auto names = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "\tN" + std::to_string(i) + ": 1.1\r\n";
        return Header(text);
    };
    TLogList list;
    EXPECT_TRUE(ParseSymbolicNames(names(100000), list));
    EXPECT_EQ(list.Count(), 100000);
    list.Clear();
    EXPECT_FALSE(ParseSymbolicNames(names(100001), list));
    EXPECT_EQ(list.Count(), 100000);
    std::string dates;
    for (int i = 0; i <= 100001; ++i)
        dates += "date: " + std::to_string(i) + ";\r\n";
    list.Clear();
    EXPECT_FALSE(ParseRevisionDates(dates, list));
    EXPECT_EQ(list.Count(), 100001);
}

TEST(LogParser, SurvivesAnyText) {
    const std::string pieces[] = {"symbolic names:",
                                  "keyword",
                                  "total revisions",
                                  "date:",
                                  ";",
                                  "\r\n\t",
                                  ":",
                                  "revision ",
                                  "d",
                                  "1.1.0.2",
                                  " ",
                                  std::string("\0\xFF", 2)};
    std::mt19937 random(20041105);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int i = 0; i < 40; ++i)
            text += pieces[random() % std::size(pieces)];
        TLogList list;
        ParseSymbolicNames(text, list);
        ParseRevisionDates(text, list);
    }
    const std::string whole =
        Header("\tA: 1.1\r\n\tB: 1.2\r\n") +
        "revision 1.2\r\ndate: 2004/03/05 14:07:09;  author: me;\r\nmessage\r\n";
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
        TLogList list;
        ParseSymbolicNames(whole.substr(0, cut), list);
        ParseRevisionDates(whole.substr(0, cut), list);
        EXPECT_LE(list.Count(), 3);
    }
}

/// A module with labels, a branch and odd messages, and an object that works on it.
class RealLog : public testing::Test {
protected:
    RealLog() {
        Sandbox.Client("-Q tag REL_1", Copy);
        Sandbox.Client("-Q tag -b BRANCH", Copy);
        Sandbox.Write(Copy + "\\a.c", "changed\r\n");
        Sandbox.Client("-Q commit -m \"symbolic names: date: x; keyword revision 9.9\"", Copy);
        Obj.Set_WorkingDirectory(Copy);
        Obj.OutputListLimit = 1000;
    }
    tests::TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
    tests::TSandboxObject Obj{Sandbox};
};

TEST_F(RealLog, GivesTheNamesOfAWorkingCopyAndOfAModule) {
    Obj.FileItems.AddFile(Copy + "\\a.c", Km_none);
    Obj.LocalOnly = false;
    Obj.Operation = otUpdate;
    EXPECT_TRUE(Obj.ParseLogInfo());
    const std::string names =
        "BRANCH=1.1.1.1.0.2 branch; REL_1=1.1.1.1 label; START=1.1.1.1 label; VENDOR=1.1.1 "
        "branch; ";
    EXPECT_EQ(Dump(Obj.LogListA), names);
    EXPECT_EQ(Obj.CommandLine, " log -l -h a.c");
    EXPECT_FALSE(Obj.LocalOnly || Obj.LogHeaderOnly);
    EXPECT_EQ(Obj.Operation, otUpdate);
    EXPECT_EQ(Obj.OutputList.load(), nullptr);
    EXPECT_TRUE(CheckTagNameExists(Obj, "rel_1"));

    Obj.IsVCSStoredFlag = false;
    Obj.Set_ProjectRoot(Sandbox.Folder.Path());
    EXPECT_TRUE(Obj.ParseLogInfo());
    EXPECT_EQ(Obj.CommandLine, " rlog -l -h mod");
    EXPECT_EQ(Dump(Obj.LogListA), names);
}

TEST_F(RealLog, GivesTheDatesOfAFile) {
    Obj.FileItems.AddFile(Copy + "\\a.c", Km_none);
    EXPECT_TRUE(Obj.ParseLogInfoForRevDate());
    // The message holds what looks like a date.
    ASSERT_GE(Obj.LogListB.Count(), 3);
    EXPECT_EQ(Obj.LogListB.GetItem(0).Value, "revision 1.2");
    EXPECT_GT(CustomStrToDateTime2(Obj.LogListB.GetItem(0).Name), 38000.0);
    EXPECT_EQ(Obj.LogListB.GetItem(1).Name, "x");
}

TEST_F(RealLog, ParsesWhatCameWhenTheClientFails) {
    Obj.FileItems.AddFile(Copy + "\\no such file.c", Km_none);
    EXPECT_FALSE(Obj.ParseLogInfo());
    EXPECT_TRUE(Obj.LogListA.Empty());
}

TEST_F(RealLog, SeesNoMoreThanWasCaptured) {
    Obj.OutputListLimit = -1;
    Obj.FileItems.AddFile(Copy + "\\a.c", Km_none);
    EXPECT_TRUE(Obj.ParseLogInfo());
    EXPECT_TRUE(Obj.LogListA.Empty()) << "no chunk was kept";
}

TEST_F(RealLog, TellsOfMoreThanItReads) {
    // As if the client had written all that.
    std::string names, dates;
    for (int i = 0; i <= 100001; ++i) {
        names += "\tL" + std::to_string(i) + ": 1.1\r\n";
        dates += "revision 1.1\r\ndate: " + std::to_string(i) + ";\r\n";
    }
    bool given = false;
    std::string more;
    Obj.OnMessage = [&, before = Obj.OnMessage](framework::TObject* sender,
                                                const std::string& text) {
        before(sender, text);
        if (framework::TStringList* const list = Obj.OutputList; list && !given) {
            given = true;
            list->Add(more);
        }
    };
    const std::string complaint = "error parsing RFS log\r\n";
    for (const auto& [parse, text, list, count] :
         {std::tuple{&TCvsObject::ParseLogInfo, Header(names), &Obj.LogListA, 100000},
          {&TCvsObject::ParseLogInfoForRevDate, dates, &Obj.LogListB, 100001}}) {
        given = false;
        more = text;
        Obj.Messages.Clear();
        EXPECT_TRUE((Obj.*parse)()) << "the client has succeeded";
        EXPECT_TRUE(Obj.Messages.All().ends_with(complaint));
        EXPECT_EQ(list->Count(), count) << "what was read stays";
        given = true;
        Obj.Messages.Clear();
        EXPECT_TRUE((Obj.*parse)());
        EXPECT_EQ(Obj.Messages.All().find(complaint), std::string::npos);
    }
}

TEST_F(RealLog, SingleFileOperationsSetTheirOptions) {
    const std::string file = Copy + "\\a.c";
    EXPECT_NE(Obj.StatusFileEx(file).find("Status: Up-to-date"), std::string::npos);
    EXPECT_EQ(Obj.CommandLine, " status -l -v a.c");
    EXPECT_NE(Obj.LogFileEx(file).find("symbolic names:"), std::string::npos);
    EXPECT_EQ(Obj.CommandLine, " log -l -h a.c");
    Sandbox.Write(file, "changed again\r\n");
    Obj.DiffSpec.Kind = dctTwoRevision;
    int fired = 0;
    Obj.OnDiff = [&](TCvsObject& sender) {
        EXPECT_GT(sender.DiffSpec.Date1, 38000.0);
        ++fired;
    };
    EXPECT_NE(Obj.DiffFileEx(file).find("> changed again"), std::string::npos);
    EXPECT_EQ(Obj.CommandLine, " diff -l -r HEAD a.c");
    EXPECT_EQ(fired, 1);
    EXPECT_TRUE(Obj.FileItems.Empty());
}

}  // namespace
