// The state of a working copy as the model tells it, and as the client tells it.

#include <gtest/gtest.h>

#include <random>

#include "core/CvsExecute.h"
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

TEST_F(WorkingCopy, IsReadBehindMissingEntriesWhenAskedTo) {
    Obj.ReadAllEntries = true;
    for (const char* name : {"d.c", "e.c", "f.c", "g.c"})
        Sandbox.Write(Copy + "\\" + name, "text\r\n");
    Sandbox.Client("-Q add d.c e.c f.c g.c", Copy);
    Sandbox.Client("-Q commit -m more", Copy);
    EXPECT_EQ(State("g.c"), "Not changed");
    EXPECT_EQ(Obj.Messages.All(), "");
    const std::string complaint = "Directory(" + Copy + ") does not have ";
    ::DeleteFileA((Copy + "\\a.c").c_str());
    EXPECT_EQ(State("b.c") + "," + State("g.c") + "," + State("sub\\c.c"),
              "Not changed,Not changed,Not changed");
    EXPECT_EQ(Obj.Messages.All(), complaint + "1 of its entries: a.c\r\n");
    for (const char* name : {"d.c", "e.c", "f.c"})
        ::DeleteFileA((Copy + "\\" + name).c_str());
    ::DeleteFileA((Copy + "\\sub\\c.c").c_str());
    EXPECT_EQ(State("g.c"), "Not changed");
    EXPECT_EQ(Obj.Messages.Texts.size(), 2u) << "one for each folder";
    EXPECT_NE(Obj.Messages.All().find(complaint + "4 of its entries: a.c, d.c, e.c, ...\r\n"),
              std::string::npos)
        << Obj.Messages.All();
    Obj.ReadAllEntries = false;
    EXPECT_EQ(State("g.c"), "Not in repository");
    EXPECT_NE(Obj.Messages.All().find("Error  reading " + Copy + "\\CVS\\Entries\r\n"),
              std::string::npos);
}

TEST_F(WorkingCopy, TakesWhatAClientThatWasCutShortHasLeft) {
    const std::string records = Copy + "\\CVS\\";
    const std::string before = Sandbox.Read(records + "Entries");
    const auto line = [&](const std::string& name) {
        const std::size_t start = before.find("/" + name + "/");
        return before.substr(start, before.find('\n', start) + 1 - start);
    };
    const std::string journal =
        "R D/sub////\r\nA " + std::string("/B.C/1.1///\r\n") + "R /a.c/1.1///\r\nA " + line("a.c") +
        "A /a.c/1.9/dummy timestamp//\r\nR /B.C/1.1///\r\n" + "R " + line("a.c") +
        "X /a.c/1.7///\r\n\r\nA\r\n" + line("a.c") + "A /b.c/1.8/dummy timestamp//\r\n";
    EXPECT_EQ(State("a.c") + "," + State("b.c"), "Not changed,Not changed");
    Sandbox.Write(records + "Entries.Log", journal);
    for (const bool all : {false, true}) {
        Obj.ReadAllEntries = all;
        EXPECT_EQ(State("a.c"), "Not changed");
        EXPECT_EQ(State("b.c"), all ? "Changed in workspace" : "Not changed");
        EXPECT_EQ(Obj.WorkDirTree.ItemExist(Copy, "b.c")->Revision, all ? "1.8" : "1.1.1.1");
        EXPECT_EQ(Obj.WorkDirTree.ItemExist(Copy, "sub")->InRepository, !all);
        EXPECT_EQ(Obj.Messages.All(), "");
    }
    // As the client itself takes it, which leaves its records in order afterwards.
    Sandbox.Client("-Q update -l a.c", Copy);
    EXPECT_NE(Sandbox.Read(records + "Entries").find("/b.c/1.8/"), std::string::npos);
    EXPECT_NE(Sandbox.Read(records + "Entries").find(line("a.c")), std::string::npos);
    EXPECT_EQ(Sandbox.Read(records + "Entries").find("D/sub"), std::string::npos);
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
    // A line without an end is read by nobody.
    std::string endless;
    endless.resize(10000000, 'x');
    Sandbox.Write(Copy + "\\.cvsignore", endless);
    Sandbox.Write(Copy + "\\CVS\\Entries", "/b.c/1.9///\r\n/a.c/" + endless + "/\r\n");
    Obj.Messages.Clear();
    EXPECT_EQ(State("b.c"), "Changed in workspace") << "what stands before it counts";
    EXPECT_EQ(State("a.c"), "Not in repository");
    for (const char* name : {"\\CVS\\Entries: ", "\\.cvsignore: "})
        EXPECT_NE(Obj.Messages.All().find(Copy + name), std::string::npos) << Obj.Messages.All();
}

TEST_F(WorkingCopy, DoesNotWalkThroughLinks) {
    tests::MakeLink(Copy, "loop", ".");
    EXPECT_EQ(State("loop"), "Directory");
    EXPECT_TRUE(Obj.WorkDirTree.ItemExist(Copy, "loop")->Children->Empty());
}

/// Counts how often folders are read.
class CountingObject : public tests::TSandboxObject {
public:
    using TSandboxObject::TSandboxObject;
    void ReadCVSInfo(TWorkDirTree& tree, const std::string& dir) override {
        ++Reads;
        TSandboxObject::ReadCVSInfo(tree, dir);
    }
    int Reads = 0;
};

TEST_F(WorkingCopy, IsReadAgainOnceAfterCommandsThatChangeAllOfIt) {
    CountingObject obj(Sandbox, Copy);
    obj.Load_WorkDirTree();
    EXPECT_TRUE(obj.ModelCurrent);
    Append("a.c", "more\r\n");
    EXPECT_STREQ(obj.WorkDirTree.ItemExist(Copy, "a.c")->StatusName(), "Not changed");
    obj.Reads = 0;
    EXPECT_TRUE(obj.Commit(false));
    EXPECT_EQ(obj.WorkDirTree.ItemExist(Copy, "a.c")->Revision, "1.2");
    EXPECT_EQ(obj.Reads, 2) << "two folders, once each";
    EXPECT_TRUE(obj.ModelCurrent);
    EXPECT_TRUE(obj.Status());
    EXPECT_EQ(obj.Reads, 2);
    EXPECT_FALSE(obj.ModelCurrent) << "a host may want to look";
    // Who loads it while the command still runs has not seen its end.
    obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) { obj.Load_WorkDirTree(); };
    EXPECT_TRUE(obj.Status());
    EXPECT_FALSE(obj.ModelCurrent);
}

TEST_F(WorkingCopy, IsEmptyWhenItIsGone) {
    Obj.Set_WorkingDirectory(Copy);
    Obj.Set_ProjectRoot(Sandbox.Folder / "work");
    Obj.Load_WorkDirTree();
    ASSERT_FALSE(Obj.WorkDirTree.Empty());
    support::DeleteFolder(Copy);
    Obj.SetCVSROOT(Sandbox.Folder / "no repository");
    Obj.Messages.Clear();
    EXPECT_FALSE(Obj.CheckOut(false));
    EXPECT_TRUE(Obj.WorkDirTree.Empty());
    EXPECT_EQ(Obj.Messages.All().find("working  directory is not set"), std::string::npos)
        << Obj.Messages.All();
    // A release may take the folder with it.
    Obj.Set_WorkingDirectory(Sandbox.CheckOut("again"));
    Obj.Load_WorkDirTree();
    ASSERT_FALSE(Obj.WorkDirTree.Empty());
    Obj.OnRelease = [](TCvsObject& sender) { support::DeleteFolder(sender.WorkingDirectory()); };
    Obj.ReleaseForce = true;  // and nobody is asked
    Obj.ReleaseAccepted();
    EXPECT_TRUE(Obj.WorkDirTree.Empty());
}

}  // namespace
