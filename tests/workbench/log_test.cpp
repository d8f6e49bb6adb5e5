// Histories: what the real client says of real ones, read and put together to commits.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "tests/cvs/Sandbox.h"
#include "workbench/Commits.h"
#include "workbench/LogText.h"

namespace {

using namespace tests;
using namespace workbench;

/// A working copy whose history the tests make.
class Histories : public testing::Test {
protected:
    /// Commits the files, each with another line, and gives the client the message byte for byte.
    void Commit(const std::string& files, const std::string& message) {
        for (std::size_t at = 0; at < files.size();) {
            const std::size_t end = std::min(files.find(' ', at), files.size());
            const std::string path = Copy + "\\" + files.substr(at, end - at);
            if (framework::FileExists(path))
                Sandbox.Write(path, Sandbox.Read(path) + "line\r\n");
            at = end + 1;
        }
        Sandbox.Write(Sandbox.Folder / "message", message);
        Client("-Q commit -F \"" + (Sandbox.Folder / "message") + "\" " + files);
    }
    std::string Client(const std::string& arguments) { return Sandbox.Client(arguments, Copy); }

    const TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
};

const TFileLog& LogOf(const std::vector<TFileLog>& logs, const std::string& name) {
    const auto log = std::ranges::find(logs, name, &TFileLog::Name);
    if (log == logs.end())
        throw framework::Exception("There is no log of " + name);
    return *log;
}

std::string CrLf(const std::string& text) {
    std::string lines;
    for (const char c : text)
        lines += c == '\n' ? "\r\n" : std::string(1, c);
    return lines;
}

// --- messages ---------------------------------------------------------------------------------

TEST_F(Histories, AreReadWithTheMessagesThatWereCommitted) {
    const std::string dashes(28, '-'), end(77, '=');
    const std::string entry = "date: 2004/01/02 12:00:00;  author: x;  state: Exp;  lines: +1 -0;";
    std::vector<std::string> said = {"Initial revision"};
    const auto commit = [&](const std::string& message) {
        Commit("a.c", message);
        // The client takes blanks off the ends of lines, and empty lines off the message's.
        said.push_back(message.substr(0, message.find_last_not_of(" \n") + 1));
    };
    commit("one line");
    commit(dashes);
    commit(dashes + "\nrevision 1.1\n" + dashes + "\n" + dashes + "\n" + end + "\n\n" + end);
    commit("  blanks\n\n\nbehind one another\n\n \n");
    commit("");
    commit(dashes + "\nrevision 1.1\n" + entry + "\nquoted\n" + dashes + "\nrevision 1.7\n" +
           entry + "\nto come\n" + end);
    commit(entry + "\nbranches:  1.6.2;\nRCS file: /none,v\ntotal revisions: 9");
    commit("branches:  1.9.2;\nof a branch that is not there");
    commit("\xE4\xF6\xFC\x80 of another code page \x81\x8D\x9D");
    const auto inFile = [&](const std::string& arguments) {
        std::string text = Client(arguments);
        std::erase(text, '\r');
        return text;
    };
    const std::string own = inFile("-Q log a.c"), all = inFile("-Q log");
    commit("Its log was:\n" + own + "\nAnd is no more.");
    commit(own + "cvs log: Logging .\n" + own);
    commit("All files:\n" + all);
    commit(all.substr(all.size() / 3, all.size() / 2) + "\nis a part.");
    commit("*** no empty log message ***");

    for (const std::string arguments : {"log", "-Q rlog mod"}) {
        SCOPED_TRACE(arguments);
        const std::vector<TFileLog> logs = ParseLog(Client(arguments));
        ASSERT_EQ(logs.size(), 3u);
        std::vector<std::string> read;
        for (const TRevision& revision : logs[0].Revisions)
            read.push_back(revision.Number + " " + revision.Message);
        std::vector<std::string> expected;
        for (std::size_t i = said.size(); i > 0; --i)
            expected.push_back("1." + std::to_string(i) + " " + said[i - 1]);
        expected.push_back("1.1.1.1 first");
        EXPECT_EQ(read, expected) << Client(arguments);
        EXPECT_EQ(logs[1].Revisions, ParseLog(Client("log b.c")).at(0).Revisions);
        EXPECT_EQ(logs[2].Revisions.size(), 2u);
    }
    // Messages that another client has not trimmed.
    Client("-Q admin \"-m1.3:*** empty log message ***\" a.c");
    const std::string file = Sandbox.Repository + "\\mod\\a.c,v", plain = "@one line\n@";
    std::string records = Sandbox.Read(file);
    records.replace(records.find(plain), plain.size(), "@one line  \n\n@");
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    Sandbox.Write(file, records);
    const std::vector<TFileLog> logs = ParseLog(Client("log a.c"));
    ASSERT_EQ(logs.size(), 1u);
    const TFileLog& log = logs[0];
    ASSERT_EQ(log.Revisions.size(), said.size() + 1);
    EXPECT_EQ(log.Revisions[said.size() - 2].Message, "one line  \n");
    EXPECT_EQ(log.Revisions[said.size() - 3].Message, "");
}

// --- histories --------------------------------------------------------------------------------

/// A file's log in a line for each revision.
std::string Dump(const TFileLog& log) {
    std::string text = log.Name + " head " + log.Head + " branch " + log.Branch + " -k" +
                       log.KeywordMode + " " + log.Description + "\n";
    for (const TRevision& revision : log.Revisions) {
        text += revision.Number + " " + revision.State;
        if (revision.Added && revision.Removed)
            text +=
                " +" + std::to_string(*revision.Added) + " -" + std::to_string(*revision.Removed);
        for (const std::string& branch : revision.Branches)
            text += " [" + branch + "]";
        text += " " + revision.Message + "\n";
    }
    return text;
}

std::string Labels(const TFileLog& log) {
    std::string text;
    for (const TFileLabel& label : log.Labels)
        text += label.Name + "=" + label.Revision + (label.IsBranch() ? " branch; " : "; ");
    return text;
}

TEST_F(Histories, AreReadWithBranchesLabelsAndRemovedFiles) {
    Commit("a.c sub\\c.c", "both");
    Client("-Q tag -b BRANCH");
    Client("-Q tag LABEL");
    Commit("a.c", "trunk");
    Sandbox.Write(Copy + "\\b.bin", std::string("\0\1\r\n\xFF", 5));
    Client("-Q add -kb -m described b.bin");
    Client("-Q commit -m added b.bin");
    ::DeleteFileA((Copy + "\\b.c").c_str());
    Client("-Q remove b.c");
    Client("-Q commit -m gone b.c");
    Sandbox.Write(Copy + "\\b.c", "again\r\n");
    Client("add b.c");
    Client("-Q commit -m \"back again\" b.c");
    Client("-Q update -r BRANCH");
    Commit("a.c", "branched");
    Client("-Q tag -b TWIG a.c");
    Sandbox.Write(Copy + "\\new.c", "new\r\n");
    Client("-Q add new.c");
    Commit("a.c new.c", "more");
    Client("-Q update -r TWIG a.c");
    Commit("a.c", "twig");
    Client("-Q update -A");

    const std::string text = Client("log");
    const std::vector<TFileLog> logs = ParseLog(text);
    ASSERT_EQ(logs.size(), 5u) << text;
    EXPECT_EQ(Dump(LogOf(logs, "a.c")),
              "a.c head 1.3 branch  -kkv \n"
              "1.3 Exp +1 -0 trunk\n1.2 Exp +1 -0 [1.2.2] both\n1.1 Exp [1.1.1] Initial revision\n"
              "1.1.1.1 Exp +0 -0 first\n1.2.2.2 Exp +1 -0 more\n"
              "1.2.2.1 Exp +1 -0 [1.2.2.1.2] branched\n1.2.2.1.2.1 Exp +1 -0 twig\n");
    EXPECT_EQ(Labels(LogOf(logs, "a.c")),
              "TWIG=1.2.2.1.0.2 branch; LABEL=1.2; BRANCH=1.2.0.2 branch; START=1.1.1.1; "
              "VENDOR=1.1.1 branch; ");
    EXPECT_EQ(Dump(LogOf(logs, "b.c")),
              "b.c head 1.3 branch  -kkv \n1.3 Exp +1 -1 back again\n1.2 dead +0 -0 gone\n"
              "1.1 Exp [1.1.1] Initial revision\n1.1.1.1 Exp +0 -0 first\n");
    EXPECT_EQ(Dump(LogOf(logs, "b.bin")), "b.bin head 1.1 branch  -kb described\n1.1 Exp added\n");
    EXPECT_EQ(Dump(LogOf(logs, "new.c")),
              "new.c head 1.1 branch  -kkv \n"
              "1.1 dead [1.1.2] file new.c was initially added on branch BRANCH.\n"
              "1.1.2.1 Exp +2 -0 more\n");
    const TFileLog& below = LogOf(logs, "sub/c.c");
    EXPECT_TRUE(below.Repository.ends_with("repository/mod/sub/c.c,v")) << below.Repository;
    EXPECT_TRUE(LogOf(logs, "new.c").Repository.ends_with("mod/Attic/new.c,v"));
    EXPECT_EQ(
        FileNameOf(ParseLog(Client("rlog mod/new.c")).at(0)).substr(Sandbox.Repository.size()),
        "/mod/new.c");
    // What was committed together has one identifier, and a moment that others can be told from.
    const TRevision& first = LogOf(logs, "a.c").Revisions[1];
    EXPECT_EQ(below.Revisions[0].CommitId, first.CommitId);
    EXPECT_NE(LogOf(logs, "a.c").Revisions[0].CommitId, first.CommitId);
    EXPECT_GT(LogOf(logs, "a.c").Revisions[0].Date, first.Date);

    // Parts of it: other numbers of revisions, no labels, heads alone, no file.
    EXPECT_EQ(Dump(ParseLog(Client("log -r1.2.2.1:1.2.2.2 -N a.c")).at(0)),
              "a.c head 1.3 branch  -kkv \n1.2.2.2 Exp +1 -0 more\n"
              "1.2.2.1 Exp +1 -0 [1.2.2.1.2] branched\n");
    const std::vector<TFileLog> heads = ParseLog(Client("log -h"));
    ASSERT_EQ(heads.size(), 5u);
    EXPECT_EQ(Labels(heads[0]), Labels(logs[0]));
    EXPECT_TRUE(heads[0].Revisions.empty());
    EXPECT_TRUE(ParseLog(Client("log -R")).empty());
    // The branch that check-outs take, and a lock.
    Client("-Q admin -b1.2.2 -l1.2 a.c");
    const TFileLog locked = ParseLog(Client("log a.c")).at(0);
    EXPECT_EQ(locked.Branch, "1.2.2");
    EXPECT_EQ(locked.Revisions, LogOf(logs, "a.c").Revisions);
    // Cut off anywhere it gives what there is.
    for (std::size_t size = 0; size < text.size(); size += 37)
        EXPECT_LE(ParseLog(std::string_view(text).substr(0, size)).size(), 5u);
}

TEST(LogText, ReadsBothFormsOfDates) {
    const auto dateOf = [](const std::string& date) {
        return ParseLog(
                   "RCS file: a,v\nhead: 1.1\nbranch:\nlocks: strict\naccess list:\n"
                   "keyword substitution: kv\ntotal revisions: 1;\tselected revisions: 1\n"
                   "description:\n----------------------------\nrevision 1.1\ndate: " +
                   date + ";  author: me;  state: Exp;\nm\n" + std::string(77, '=') + "\n")
            .at(0)
            .Revisions.at(0)
            .Date;
    };
    const framework::TDateTime noon =
        framework::EncodeDate(2004, 1, 2) + framework::EncodeTime(12, 0, 0, 0);
    EXPECT_EQ(dateOf("2004/01/02 12:00:00"), noon);
    EXPECT_EQ(dateOf("2004-01-02 12:00:00 +0000"), noon);
    EXPECT_EQ(dateOf("2004-01-02 13:30:00 +0130"), noon);
    EXPECT_EQ(dateOf("2004-01-01 23:00:00 -1300"), noon);
    for (const char* const other :
         {"", "2004/01/02", "2004/13/02 12:00:00", "now", "2004-01-02 12:00:00 +01",
          "2004-01-02 24:00:00 +0000", "0001-01-01 00:00:00 +0000", "9999-12-31 23:59:59 -1200"})
        EXPECT_EQ(dateOf(other), 0) << other;
}

// --- commits ----------------------------------------------------------------------------------

std::string Dump(const TCommit& commit) {
    std::string text = commit.Branch + "|" + commit.Message + "|";
    for (const TCommittedFile& file : commit.Files)
        text += " " + file.Name + " " + file.Before + ">" + file.Revision +
                (file.Removed ? " removed" : "");
    return text;
}

std::vector<std::string> Dump(const std::vector<TCommit>& commits) {
    std::vector<std::string> lines(commits.size());
    std::ranges::transform(commits, lines.begin(),
                           [](const TCommit& commit) { return Dump(commit); });
    return lines;
}

TEST_F(Histories, ArePutTogetherToCommits) {
    Commit("a.c b.c", "both");
    Client("-Q tag LABEL");
    Client("-Q tag -b BRANCH");
    ::DeleteFileA((Copy + "\\b.c").c_str());
    Client("-Q remove b.c");
    Commit("a.c b.c sub\\c.c", "three");
    Client("-Q update -r BRANCH");
    Sandbox.Write(Copy + "\\new.c", "new\r\n");
    Client("-Q add new.c");
    Commit("b.c new.c", "On the Branch\nsecond line");
    const std::string text = Client("log");
    const std::vector<TFileLog> logs = ParseLog(text);
    const std::vector<TCommit> commits = CommitsOf(logs);
    const std::vector<std::string> expected = {
        "BRANCH|On the Branch\nsecond line| b.c 1.2>1.2.2.1 new.c >1.1.2.1",
        "|three| a.c 1.2>1.3 b.c 1.2>1.3 removed sub/c.c 1.1>1.2", "|both| a.c 1.1>1.2 b.c 1.1>1.2",
        "VENDOR|first| a.c >1.1.1.1 b.c >1.1.1.1 sub/c.c >1.1.1.1"};
    EXPECT_EQ(Dump(commits), expected);
    // The same without the identifiers, which older servers do not give.
    std::string older = text;
    for (std::size_t at; (at = older.find("  commitid: ")) != std::string::npos;)
        older.erase(at, older.find(';', at) + 1 - at);
    EXPECT_EQ(Dump(CommitsOf(ParseLog(older))), expected);

    const auto found = [&](const std::string& part, framework::TDateTime from = 0) {
        std::string positions;
        for (const std::size_t at : FindCommits(commits, logs, {part, from}))
            positions += std::to_string(at);
        return positions;
    };
    EXPECT_EQ(found(""), "0123");
    EXPECT_EQ(found("ON THE b"), "0");
    EXPECT_EQ(found("label"), "23") << "c.c is as it was imported";
    EXPECT_EQ(found("bRANCH"), "0");
    EXPECT_EQ(found("sub/"), "13");
    EXPECT_EQ(found(commits[0].Author), "0123");
    EXPECT_EQ(found("", commits[1].Date), "01");
    EXPECT_EQ(found("both", commits[1].Date), "");
    const TFileLog& log = LogOf(logs, "b.c");
    EXPECT_EQ(FindRevisions(log, {"start"}), std::vector<std::size_t>{3});
    EXPECT_EQ(FindRevisions(log, {"BRANCH"}), std::vector<std::size_t>{4});

    const std::vector<TProjectLabel> labels = LabelsOf(logs);
    const std::vector<TProjectLabel> expectedLabels = {{"BRANCH", true, 4, commits[0].Last},
                                                       {"LABEL", false, 3, commits[2].Last},
                                                       {"START", false, 3, commits[3].Last},
                                                       {"VENDOR", true, 3, commits[3].Last}};
    EXPECT_EQ(labels, expectedLabels);
}

TEST(Commits, EndWhereTimeAuthorOrFileSaySo) {
    const auto revision = [](const std::string& number, int second, const std::string& author,
                             const std::string& id = "") {
        TRevision made{number, 38000 + second / 86400.0, author, "Exp"};
        made.Message = "same";
        made.CommitId = id;
        return made;
    };
    const auto commits = [](std::vector<std::vector<TRevision>> files) {
        std::vector<TFileLog> logs;
        for (auto& revisions : files) {
            logs.push_back({"f" + std::to_string(logs.size()) + ",v"});
            logs.back().Revisions = std::move(revisions);
        }
        std::vector<std::string> lines = Dump(CommitsOf(logs));
        std::ranges::reverse(lines);
        return lines;
    };
    using Lines = std::vector<std::string>;
    EXPECT_EQ(commits({{revision("1.1", 0, "me")},
                       {revision("1.1", 300, "me")},
                       {revision("1.1", 600, "me")}}),
              (Lines{"|same| f0 >1.1 f1 >1.1 f2 >1.1"}));
    EXPECT_EQ(commits({{revision("1.1", 0, "me")}, {revision("1.1", 301, "me")}}),
              (Lines{"|same| f0 >1.1", "|same| f1 >1.1"}));
    EXPECT_EQ(commits({{revision("1.1", 0, "me")}, {revision("1.1", 0, "you")}}),
              (Lines{"|same| f0 >1.1", "|same| f1 >1.1"}));
    // A file occurs once, in the order of its numbers where the clock does not tell.
    EXPECT_EQ(
        commits({{revision("1.3", 5, "me"), revision("1.2", 5, "me"), revision("1.1", 5, "me")},
                 {revision("1.7", 6, "me")}}),
        (Lines{"|same| f0 >1.1", "|same| f0 1.1>1.2", "|same| f0 1.2>1.3 f1 >1.7"}));
    // The identifier says more than time and author.
    EXPECT_EQ(commits({{revision("1.1", 0, "me", "x")}, {revision("1.1", 999, "you", "x")}}),
              (Lines{"|same| f0 >1.1 f1 >1.1"}));
    EXPECT_EQ(commits({{revision("1.1", 0, "me", "x")}, {revision("1.1", 0, "me", "y")}}).size(),
              2u);
    // Branches without names, and a trunk that goes on with 2.
    EXPECT_EQ(commits({{revision("2.1", 9, "me"), revision("1.4", 3, "me"),
                        revision("1.4.2.1", 6, "me")}}),
              (Lines{"|same| f0 >1.4", "1.4.2|same| f0 1.4>1.4.2.1", "|same| f0 1.4>2.1"}));
}

// --- any text ---------------------------------------------------------------------------------

TEST(LogText, TakesAnyText) {
    const std::string dashes(28, '-'), end(77, '=');
    const std::string head =
        "RCS file: a,v\nhead: 1.2\nbranch:\nlocks: strict\naccess list:\nsymbolic names:\n"
        "\tL: 1.1\n\tB: 1.1.0.2\nkeyword substitution: kv\n"
        "total revisions: 3;\tselected revisions: 3\ndescription:";
    const std::vector<std::string> lines = {
        dashes,
        end,
        "",
        "cvs log: Logging x",
        "x",
        "\ty: 1.1",
        "description:",
        head,
        dashes +
            "\nrevision 1.1\ndate: 2004/01/02 12:00:00;  author: x;  state: Exp;\n"
            "branches:  1.1.2;",
        dashes + "\nrevision 1.2\ndate: 2004/01/02 12:00:00;  author: x;  state: Exp;",
        dashes + "\nrevision 1.1.2.1\ndate: 2004/01/03 12:00:00;  author: x;  state: dead;",
        dashes + "\nrevision 1.2147483647\ndate: ;  author: ;",
        std::string("\0\xFF", 2)};
    std::mt19937 random(20041105);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int i = 0; i < 25; ++i)
            text += lines[random() % lines.size()] + "\n";
        const std::vector<TFileLog> logs = ParseLog(text);
        std::size_t size = 0;
        for (const TFileLog& log : logs)
            for (const TRevision& revision : log.Revisions)
                size += revision.Message.size();
        ASSERT_LE(size, text.size()) << text;
        ASSERT_EQ(ParseLog(CrLf(text)), logs) << text;
        static_cast<void>(LabelsOf(logs));
        ASSERT_EQ(FindCommits(CommitsOf(logs), logs, {"no such text"}).size(), 0u);
    }
}

}  // namespace
