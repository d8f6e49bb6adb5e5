// The state of a working copy as the model tells it, and as the client tells it.

#include <gtest/gtest.h>

#include <random>

#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/Links.h"

namespace {

using namespace tandrel;

void Touch(const std::string& path, int year, int month, int day, int hour) {
    const SYSTEMTIME moment{static_cast<WORD>(year),
                            static_cast<WORD>(month),
                            0,
                            static_cast<WORD>(day),
                            static_cast<WORD>(hour),
                            0,
                            0,
                            0};
    FILETIME time;
    ::SystemTimeToFileTime(&moment, &time);
    const framework::FileHandle file(
        ::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(::SetFileTime(file.Get(), nullptr, nullptr, &time));
}

/// Gives a file another text; its time becomes the one it had and so many seconds.
void WriteWithin(const std::string& path, const std::string& text, int seconds) {
    constexpr ULONGLONG Second = 10000000;
    const auto open = [&] {
        return framework::FileHandle(::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                                   nullptr, OPEN_EXISTING, 0, nullptr));
    };
    FILETIME time{};
    EXPECT_TRUE(::GetFileTime(open().Get(), nullptr, nullptr, &time));
    support::WriteBytes(path, text);
    ULARGE_INTEGER later{{time.dwLowDateTime, time.dwHighDateTime}};
    later.QuadPart += static_cast<ULONGLONG>(seconds) * Second;
    time = {later.LowPart, later.HighPart};
    EXPECT_TRUE(::SetFileTime(open().Get(), nullptr, nullptr, &time));
}

class WorkingCopy : public testing::Test {
protected:
    /// What the model says about a file of the working copy; empty when it does not know it.
    std::string State(const std::string& name) {
        Obj.Set_WorkingDirectory(Copy);
        Obj.Messages.Clear();
        Obj.Load_WorkDirTree();
        const TWorkDirTree* tree = &Obj.WorkDirTree;
        std::string folder = Copy, rest = name;
        for (std::size_t at; (at = rest.find('\\')) != std::string::npos; rest.erase(0, at + 1)) {
            const TWorkDirItem* item = tree->ItemExist(folder, rest.substr(0, at));
            if (!item)
                return {};
            tree = item->Children.get();
            folder += "\\" + rest.substr(0, at);
        }
        const TWorkDirItem* item = tree->ItemExist(folder, rest);
        return item ? item->StatusName() : "";
    }
    /// The letter that the client puts before the file in a dry update; a blank for none.
    char Letter(const std::string& name) const {
        const std::string output = support::RunProcess("cvs -nq update", Copy).Output;
        const std::size_t at = output.find(" " + name + "\r\n");
        return at == std::string::npos || at == 0 ? ' ' : output[at - 1];
    }
    /// Changes a file, as if it was done some years after the check-out.
    void Append(const std::string& name, const std::string& text) {
        const std::string path = Copy + "\\" + name;
        Sandbox.Write(path, Sandbox.Read(path) + text);
        Touch(path, 2030, 1, 1, 0);
    }

    tests::TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
    tests::TSandboxObject Obj{Sandbox};
};

TEST_F(WorkingCopy, AgreesWithTheClient) {
    Append("a.c", "more\r\n");
    Sandbox.Write(Copy + "\\new.c", "new\r\n");
    Sandbox.Write(Copy + "\\ignored.x", "x\r\n");
    Sandbox.Write(Copy + "\\D", "a file of the name that folders have in the records\r\n");
    Sandbox.Client("-Q add D", Copy);
    Sandbox.Write(Copy + "\\.cvsignore", "  ignored.x  \r\nnot there\r\n.cvsignore");
    Append("sub\\c.c", "more\r\n");
    struct {
        const char *Name, *State;
        char Letter;
    } const cases[] = {
        {"a.c", "Changed in workspace", 'M'},      {"b.c", "Not changed", ' '},
        {"new.c", "Not in repository", '?'},       {"ignored.x", "Ignore", ' '},
        {"D", "Changed in workspace", 'A'},        {"sub", "Directory", ' '},
        {"sub\\c.c", "Changed in workspace", ' '},
    };
    for (const auto& [name, state, letter] : cases) {
        EXPECT_EQ(State(name), state) << name;
        EXPECT_EQ(Letter(name), letter) << name;
    }
    EXPECT_EQ(Letter("sub/c.c"), 'M');
    EXPECT_EQ(Obj.Messages.All(), "");
    const TWorkDirItem* item = Obj.WorkDirTree.ItemExist(Copy, "b.c");
    EXPECT_EQ(item->Revision, "1.1.1.1");
    EXPECT_EQ(item->RepositoryFileName, "b.c,v");
    EXPECT_NE(item->RepositoryDate, 0);
    EXPECT_TRUE(Obj.WorkDirTree.ItemExist(Copy, "sub")->InRepository);
}

TEST_F(WorkingCopy, AgreesAfterATagAMergeAndAConflict) {
    const std::string other = Sandbox.CheckOut("other");
    Sandbox.Client("-Q tag -b BRANCH", Copy);
    Sandbox.Client("-Q update -r BRANCH", Copy);
    EXPECT_EQ(State("a.c"), "Not changed") << "with a sticky tag";
    EXPECT_EQ(Letter("a.c"), ' ');
    Sandbox.Client("-Q update -A", Copy);
    Sandbox.Write(other + "\\a.c", "one\r\ntheirs\r\n");
    Sandbox.Client("-Q commit -m theirs", other);
    Sandbox.Write(Copy + "\\a.c", "one\r\nmine\r\n");
    support::RunProcess("cvs -Q update", Copy);
    EXPECT_EQ(State("a.c"), "Changed in workspace");
    EXPECT_EQ(Letter("a.c"), 'C');
    EXPECT_NE(Sandbox.Read(Copy + "\\CVS\\Entries").find("Result of merge"), std::string::npos);
}

TEST_F(WorkingCopy, DiffersFromTheClientWhereItOnlyLooksAtRecords) {
    // A change within the few seconds that times may be apart is not seen.
    WriteWithin(Copy + "\\a.c", "changed at once\r\n", 3);
    EXPECT_EQ(State("a.c"), "Not changed");
    EXPECT_EQ(Letter("a.c"), 'M');
    // A file with another time but the same text counts as changed: its text is not compared.
    Touch(Copy + "\\b.c", 2020, 1, 1, 0);
    EXPECT_EQ(State("b.c"), "Changed in workspace");
    EXPECT_EQ(Letter("b.c"), ' ');
    // A file that was added counts as changed, not as something of its own.
    Sandbox.Write(Copy + "\\new.c", "new\r\n");
    Sandbox.Client("-Q add new.c", Copy);
    EXPECT_EQ(State("new.c"), "Changed in workspace");
    EXPECT_EQ(Letter("new.c"), 'A');
    EXPECT_EQ(Obj.Messages.All(), "");
    // An ignored file is ignored whatever it is, a pattern is a name, a folder is a folder.
    Sandbox.Write(Copy + "\\.cvsignore", "a.c\r\n*.x\r\n.cvsignore\r\n");
    Sandbox.Write(Copy + "\\some.x", "x\r\n");
    Sandbox.Write(Copy + "\\unknown\\u.c", "u\r\n");
    EXPECT_EQ(State("a.c") + State("some.x") + State("unknown") + State("unknown\\u.c"),
              "IgnoreNot in repositoryDirectoryNot in repository");
    EXPECT_EQ(std::string({Letter("a.c"), Letter("some.x"), Letter("unknown")}), "M ?");
    ::DeleteFileA((Copy + "\\.cvsignore").c_str());
    // A file that is gone ends the reading of its folder; what was read before it stays.
    ::DeleteFileA((Copy + "\\b.c").c_str());
    Sandbox.Client("-Q remove b.c", Copy);
    EXPECT_EQ(Letter("b.c"), 'R');
    EXPECT_EQ(State("b.c"), "");
    EXPECT_EQ(Obj.Messages.All(), "Error  reading " + Copy + "\\CVS\\Entries\r\n");
    EXPECT_EQ(State("a.c"), "Not changed");
    EXPECT_EQ(State("sub\\c.c"), "Not changed") << "other folders are read";
}

TEST_F(WorkingCopy, AllowsAFewSeconds) {
    // The client keeps whole seconds, some disks only even ones.
    const std::string entries = Copy + "\\CVS\\Entries";
    Touch(Copy + "\\b.c", 2026, 3, 5, 12);
    for (const auto& [time, state] : {std::pair{"12:00:05", "Not changed"},
                                      {"11:59:55", "Not changed"},
                                      {"12:00:10", "Changed in workspace"},
                                      {"11:59:50", "Changed in workspace"}}) {
        Sandbox.Write(entries, std::string("/b.c/1.1/Thu Mar  5 ") + time + " 2026//\n");
        EXPECT_EQ(State("b.c"), state) << time;
    }
    Sandbox.Write(entries, "/b.c/1.1///");
    EXPECT_EQ(State("b.c"), "Changed in workspace") << "without a time";
}

TEST_F(WorkingCopy, IsTheSameInBothHalvesOfTheYear) {
    Touch(Copy + "\\a.c", 2026, 7, 15, 12);
    Touch(Copy + "\\b.c", 2026, 1, 15, 12);
    Sandbox.Write(Copy + "\\CVS\\Entries",
                  "/a.c/1.1.1.1/Wed Jul 15 12:00:00 2026//\r\n"
                  "/b.c/1.1.1.1/Thu Jan 15 12:00:00 2026//\r\n"
                  "D/sub////\r\n");
    for (const char* name : {"a.c", "b.c"}) {
        EXPECT_EQ(State(name), "Not changed");
        EXPECT_EQ(Letter(name), ' ') << "for the client, too";
    }
}

TEST_F(WorkingCopy, ReadsRecordsFromOtherHands) {
    // Line ends of both kinds, none at the end, a lone D, names in another case.
    Sandbox.Write(Copy + "\\CVS\\Entries",
                  "D\nD/SUB////\r\n/A.C/1.7/Thu Mar  5 12:00:00 2026//\n/b.c/1.8/");
    EXPECT_EQ(State("b.c"), "Changed in workspace") << "a revision without its end";
    const TWorkDirItem* item = Obj.WorkDirTree.ItemExist(Copy, "a.c");
    EXPECT_EQ(item->Revision + "|" + item->TimeStamp, "1.7|Thu Mar  5 12:00:00 2026");
    EXPECT_TRUE(Obj.WorkDirTree.ItemExist(Copy, "sub")->InRepository);
    EXPECT_THROW(Obj.ReadCVSInfo(Obj.WorkDirTree, Copy + "\\gone"), framework::EInOutError);
    Sandbox.Write(Copy + "\\CVS\\Entries", "/nobody/1.1///\r\n");
    EXPECT_THROW(Obj.ReadCVSInfo(Obj.WorkDirTree, Copy), framework::Exception);
}

TEST_F(WorkingCopy, SurvivesDamagedRecords) {
    std::mt19937 random(20041105);
    const std::string pieces[] = {"/",
                                  "D/",
                                  "a.c",
                                  "b.c",
                                  "\r\n",
                                  "\n",
                                  "Thu Mar  5 12:00:00 2026",
                                  std::string(1, '\0'),
                                  "\xFF\xFE",
                                  "1.1",
                                  "//"};
    for (int round = 0; round < 200; ++round) {
        std::string text;
        for (int i = 0; i < 60; ++i)
            text += pieces[random() % std::size(pieces)];
        Sandbox.Write(Copy + "\\CVS\\Repository", text);
        Sandbox.Write(Copy + "\\CVS\\Root", round % 2 ? text : ":pserver:me:" + text);
        Sandbox.Write(Copy + "\\CVS\\Entries", text);
        Sandbox.Write(Copy + "\\.cvsignore", text);
        State("a.c");
        EXPECT_EQ(Obj.WorkingDirectory(), Copy);
        ParseRootLine(text);
    }
    for (const char* name : {"Root", "Repository"})
        Sandbox.Write(Copy + "\\CVS\\" + name, ":ext:me@host:/" + std::string(10000000, 'x'));
    Sandbox.Write(Copy + "\\CVS\\Entries",
                  "/a.c/" + std::string(10000000, 'x') + "/\r\n/b.c/1.9///\r\n");
    EXPECT_EQ(State("b.c"), "Changed in workspace");
    EXPECT_EQ(Obj.WorkDirTree.ItemExist(Copy, "a.c")->Revision.size(), 10000000u);
}

TEST_F(WorkingCopy, DoesNotWalkThroughLinks) {
    tests::MakeLink(Copy, "loop", ".");
    EXPECT_EQ(State("loop"), "Directory");
    EXPECT_TRUE(Obj.WorkDirTree.ItemExist(Copy, "loop")->Children->Empty());
}

TEST_F(WorkingCopy, IsReadAgainAfterCommandsThatChangeAllOfIt) {
    EXPECT_EQ(State("a.c"), "Not changed");
    Append("a.c", "more\r\n");
    EXPECT_STREQ(Obj.WorkDirTree.ItemExist(Copy, "a.c")->StatusName(), "Not changed");
    EXPECT_TRUE(Obj.Commit(false));
    EXPECT_EQ(Obj.WorkDirTree.ItemExist(Copy, "a.c")->Revision, "1.2");
}

}  // namespace
