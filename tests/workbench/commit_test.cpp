// What is known about the messages of commits.

#include <gtest/gtest.h>

#include "hosting/RecentMessages.h"
#include "tests/support/Japanese.h"
#include "tests/workbench/Projects.h"
#include "workbench/CommitMessage.h"

namespace {

using namespace tests;

TEST(Messages, AreSentWithoutRemarks) {
    EXPECT_EQ(MessageToSend("CVS: a\r\n one \r\n\r\nCVS:\r\nNo CVS: here\r\nCVS: end"),
              " one \r\n\r\nNo CVS: here\r\n");
    for (const std::string same : {"", "\n", "a", "\r\n\r\n b\nc\r\n", "cvs: small", "a\rb"})
        EXPECT_EQ(MessageToSend(same), same);
}

TEST(Messages, AreKnownToSayNothing) {
    const std::string asked = "BugId:\nReviewer: \nCVS: fill this in\n";
    for (const char* nothing : {"", " \r\n\t", "CVS: only\r\n", "BugId:\r\nReviewer:",
                                " BugId: \n\n"
                                "Reviewer:\n"})
        EXPECT_TRUE(IsUnfilled(nothing, asked)) << nothing;
    for (const char* something : {"BugId: 7\r\nReviewer:", "BugId:", "x"})
        EXPECT_FALSE(IsUnfilled(something, asked)) << something;
    EXPECT_FALSE(IsUnfilled("BugId:", ""));
}

TEST(Messages, AreDescribedByLineAndColumn) {
    const std::string fits(72, '\xE4'), over = fits + "x";
    EXPECT_EQ(DescribePlace("", 0), "Line 1, column 1");
    EXPECT_EQ(DescribePlace("ab\r\ncd", 5), "Line 2, column 2");
    EXPECT_EQ(DescribePlace(fits + "\r\nCVS: " + over, 99), "Line 2, column 26");
    EXPECT_EQ(DescribePlace("a\r\n" + fits + "\r\n" + over, 1),
              "Line 1, column 2: line 3 is longer than 72");
    EXPECT_EQ(DescribePlace(over + "\r\n" + over + "\n" + over, 0),
              "Line 1, column 1: line 1 is longer than 72, and 2 more");
    EXPECT_EQ(SummaryOf("\r\n CVS: x\r\n"), "CVS: x");
    EXPECT_EQ(SummaryOf("CVS: x\r\n\r\none\r\ntwo"), "one...");
    EXPECT_EQ(SummaryOf(over), over.substr(0, 60) + "...");
    const Japanese letters;
    EXPECT_EQ(DescribePlace("\x83\\\x83\\z", 4), "Line 1, column 3") << "letters, not bytes";
}

class LastMessages : public TwoFolders {};

TEST_F(LastMessages, AreKeptOnceAndByAllHosts) {
    TSettings another(Key, Folder / "data");
    TRecentMessages mine(Settings), theirs(another);
    EXPECT_TRUE(mine.All().empty());
    const std::string odd = "say \"what\"\r\n\r\n\\ %PATH% ; \xE4\xF6\xFC\t|,'\r\n";
    mine.Remember(odd);
    for (int i = 0; i < 30; ++i)
        (i % 2 == 0 ? mine : theirs).Remember("message " + std::to_string(i));
    EXPECT_EQ(mine.All().size(), TRecentMessages::MostKept);
    EXPECT_EQ(mine.All().back(), "message 10");
    theirs.Remember(odd);
    mine.Remember("message 20");
    mine.Remember("Message 20");
    const std::vector<std::string> all = theirs.All();
    ASSERT_EQ(all.size(), TRecentMessages::MostKept);
    EXPECT_EQ(all[0], "Message 20");
    EXPECT_EQ(all[1], "message 20");
    EXPECT_EQ(all[2], odd);
    EXPECT_EQ(std::ranges::count(all, "message 20"), 1);
    EXPECT_EQ(Settings.Names(Settings.MessagesKey()).size(), all.size());
}

}  // namespace
