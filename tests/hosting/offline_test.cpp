// Work while the server cannot be reached: what is kept, what becomes of it.

#include "framework/base/exceptions.h"
#include "framework/base/handle.h"
#include "framework/base/text_file.h"
#include "hosting/KeptCommand.h"
#include "hosting/OfflineLog.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Japanese.h"
#include "tests/support/Scanner.h"

namespace {

using namespace tests;
using support::ReadBytes;
using support::WriteBytes;

// --- the log ----------------------------------------------------------------------------------

/// What comes of a line, or nothing.
std::string Kept(const std::string& line, const std::string& folder = "C:\\w") {
    const auto kept = ParseKeptCommand(line, folder);
    return kept ? kept->Description() + "|" + kept->Message : "";
}

TEST(KeptCommands, AreAdditionsAndRemovalsOfFilesInTheProject) {
    EXPECT_EQ(Kept(" add -m \" no messages\" sub \"sub\\a b.c\";C:\\w"), "add sub, sub\\a b.c|");
    EXPECT_EQ(Kept(" add -m \"say \\\"a;b\\\"\" -- -x.c;c:\\W"), "add -x.c|say \"a;b\"");
    EXPECT_EQ(Kept(" remove \"a;b.c\";C:\\a;b", "C:\\a;b"), "remove a;b.c|");
    EXPECT_EQ(Kept(" remove -l a.c;C:\\w"), "remove a.c|");
    for (const char* line :
         {" remove ..\\x.c;C:\\w", " remove sub\\..\\..\\x.c;C:\\w", " remove C:\\x.c;C:\\w",
          " remove \\x.c;C:\\w", " remove -f x.c;C:\\w", " remove \"sub\\.. \\.. \\x.c\";C:\\w",
          " remove CVS\\Root;C:\\w", " remove;C:\\w", " add x.c;C:\\w", " add -m m;C:\\w",
          " add -m m -ko a.png;C:\\w", " -d C:\\evil add -m m x.c;C:\\w",
          "\\..\\x.exe add -m m x.c;C:\\w", " checkout x;C:\\w", " remove x.c;C:\\elsewhere",
          " remove x.c", "", ";C:\\w"})
        EXPECT_EQ(Kept(line), "") << line;
}

TEST(KeptCommands, AreReadBackAndTakeThemselvesBack) {
    const std::vector<TKeptCommand> given = {{false, "say \"a\" \\", {"a b.c", "sub\\x;y.c"}},
                                             {true, "", {"-x.c", "gone.c"}},
                                             {false, "", {"gone.c", "new.c"}},
                                             {true, "", {"NEW.c"}},
                                             {false, "", {"moved.c"}},
                                             {false, "why", {"a.png"}, true}};
    std::string back;
    for (const TKeptCommand& kept : given) {
        const auto read = ParseKeptCommand(KeptLine(kept, "C:\\a;b"), "C:\\a;b");
        ASSERT_TRUE(read) << KeptLine(kept, "C:\\a;b");
        EXPECT_EQ(read->Description() + read->Message, kept.Description() + kept.Message);
        EXPECT_EQ(read->IsBinary, kept.IsBinary);
    }
    for (const TKeptCommand& kept : WithoutTakenBack(given))
        back += kept.Description() + "; ";
    EXPECT_EQ(back,
              "add a b.c, sub\\x;y.c; remove -x.c, gone.c; add gone.c; add moved.c; "
              "add as binary a.png; ");
    EXPECT_TRUE(WithoutTakenBack({}).empty());
}

TEST(KeptCommands, KnowLettersOfTwoBytes) {
    const Japanese letters;
    const std::string source = Source, so = source.substr(0, 2), folder = "C:\\" + so;
    const TKeptCommand given{false, "say " + so, {so, so + "\\" + source, Bar + (" b" + so)}};
    const auto read = ParseKeptCommand(KeptLine(given, folder), folder);
    ASSERT_TRUE(read) << KeptLine(given, folder);
    EXPECT_EQ(read->Names, given.Names);
    EXPECT_EQ(read->Message, given.Message);
    for (const std::string& name : {so + "\\..\\..\\x", so + "\\CVS\\Root", so + "|"})
        EXPECT_FALSE(IsNameBelow(name)) << name;
}

TEST(WaitingCommands, AreRunOnceInTheirOrder) {
    const support::TTempFolder folder("offline");
    const std::string waiting = folder / "data\\waiting.txt";
    const TOfflineLog log(folder.Path(), waiting);
    WriteBytes(folder / "vcsCommand.log", "planted");
    EXPECT_TRUE(log.Waiting(false).empty()) << "it is not ours";
    EXPECT_EQ(ReadBytes(log.Begin()), "planted");
    const std::string here = ";" + folder.Path() + "\r\n";
    WriteBytes(folder / "vcsCommand.log",
               " remove a.c" + here + " checkout x" + here + " remove d.c" + here);
    EXPECT_EQ(log.Waiting(true).size(), 2u);
    EXPECT_EQ(log.Take()->size(), 1u) << "what is refused is told";
    EXPECT_FALSE(FileExists(folder / "vcsCommand.log"));
    std::string ran;
    const auto failing = [&](const TKeptCommand& kept) {
        ran += kept.Description() + ";";
        return kept.Names[0] == "a.c";
    };
    EXPECT_FALSE(log.Run(failing));
    EXPECT_EQ(ran, "remove a.c;remove d.c;");
    // The one that has run is gone; what comes later stands behind.
    EXPECT_EQ(log.Begin(), "");
    WriteBytes(folder / "vcsCommand.log", " remove e.c" + here);
    EXPECT_TRUE(log.Take()->empty());
    ran.clear();
    EXPECT_TRUE(log.Run([&](const TKeptCommand& kept) {
        ran += kept.Description() + ";";
        // Another host must not run them at the same time, nor take what runs for interrupted.
        const TScanner noWaiting(0);
        const TOfflineLog other(folder.Path(), waiting);
        EXPECT_FALSE(other.Run([](const TKeptCommand&) { return true; }));
        EXPECT_FALSE(other.Interrupted() || other.Take());
        return true;
    }));
    EXPECT_EQ(ran, "remove d.c;remove e.c;");
    EXPECT_TRUE(log.Waiting(true).empty());
}

/// Two commands wait.
class WaitingCommand : public testing::Test {
protected:
    WaitingCommand() {
        Log.Begin();
        Keep(" remove a.c");
        Keep(" remove b.c");
        Log.Take();
    }
    void Keep(const std::string& command) {
        Log.Continue();
        auto file = TTextFile::Append(Package);
        file.WriteLine(command + ";" + Folder.Path());
    }
    /// What has run is in Ran.
    bool Run() {
        return Log.Run([this](const TKeptCommand& kept) {
            Ran += kept.Description() + ";";
            return true;
        });
    }
    std::string InList() const {
        std::string all;
        for (const TKeptCommand& kept : Log.Waiting(false))
            all += kept.Description() + ";";
        return all;
    }

    const support::TTempFolder Folder{"offline"};
    const std::string Package = Folder / "vcsCommand.log", List = Folder / "data\\waiting.txt";
    const TOfflineLog Log{Folder.Path(), List};
    std::string Ran;
};

TEST_F(WaitingCommand, NeverRunsTwiceWhenNothingCanBeNoted) {
    // First the list is held, and then what is noted beside it.
    for (const char* victim : {"waiting.txt", ".running"}) {
        const TScanner scanner(TScanner::ForEver, 0, victim);
        EXPECT_THROW(Run(), EInOutError) << victim;
        EXPECT_EQ(Ran, "");
        EXPECT_EQ(InList(), "remove a.c;remove b.c;");
        EXPECT_FALSE(Log.Interrupted());
    }
    {
        // From when the command runs on.
        const TScanner scanner(TScanner::ForEver, 0, ".running");
        FileFunctions().Move = &::MoveFileExA;
        EXPECT_THROW(Run(), EInOutError);
        EXPECT_EQ(Ran, "remove a.c;");
        EXPECT_FALSE(Run());
    }
    EXPECT_FALSE(Run());
    EXPECT_EQ(Ran, "remove a.c;") << "first the user has to say what became of it";
    EXPECT_EQ(Log.Interrupted()->Description(), "remove a.c");
    Log.SettleInterrupted(false);
    EXPECT_FALSE(Log.Interrupted());
    {
        const TScanner scanner(3);
        EXPECT_TRUE(Run());
    }
    EXPECT_EQ(Ran, "remove a.c;remove b.c;");
    EXPECT_EQ(InList(), "");
}

TEST_F(WaitingCommand, IsNotLostWithTheHost) {
    // An error that nobody expects leaves behind what an end does.
    const auto end = [](const TKeptCommand&) -> bool { throw Exception("the host is ended"); };
    EXPECT_THROW(Log.Run(end), Exception);
    EXPECT_EQ(InList(), "remove b.c;");
    Log.SettleInterrupted(true);
    EXPECT_EQ(InList(), "remove a.c;remove b.c;");
    // One that failed, and the last of them.
    EXPECT_FALSE(Log.Run([](const TKeptCommand&) { return false; }));
    EXPECT_EQ(InList(), "remove a.c;remove b.c;");
    EXPECT_FALSE(Log.Interrupted());
    EXPECT_THROW(Log.Run([&, isFirst = true](const TKeptCommand& kept) mutable {
        return std::exchange(isFirst, false) || end(kept);
    }),
                 Exception);
    EXPECT_EQ(InList(), "");
    EXPECT_FALSE(Run()) << "it is not forgotten";
    EXPECT_EQ(Log.Interrupted()->Description(), "remove b.c");
    Log.SettleInterrupted(true);
    // Ended before the list was written: it has not run.
    WriteBytes(List + ".running", ReadBytes(List));
    EXPECT_FALSE(Log.Interrupted());
    EXPECT_TRUE(Run());
    EXPECT_EQ(Ran, "remove b.c;");
}

TEST_F(WaitingCommand, IsTakenOnceOrStaysWhereItIs) {
    Keep(" remove c.c");
    {
        const TScanner scanner(TScanner::ForEver, 0, ".log");
        EXPECT_THROW(Log.Take(), EInOutError);
    }
    EXPECT_EQ(InList(), "remove a.c;remove b.c;");
    EXPECT_EQ(Log.Waiting(true).size(), 3u);
    const TScanner scanner(3);
    Log.Take();
    EXPECT_EQ(InList(), "remove a.c;remove b.c;remove c.c;");
    EXPECT_FALSE(FileExists(Package));
}

// --- the projects -----------------------------------------------------------------------------

/// "one" is a working copy of a server's module; the client shows its arguments.
class OffLine : public Projects {
protected:
    OffLine() {
        Record("one", ":pserver:me@host:/repo", "/a.c/1.1/dummy//\r\n/b.c/1.2/dummy//\r\n");
    }
    void Open() {
        Project.emplace(Host, Settings, Folder / "one");
        Project->Cvs().CvsExecutable = support::FakeClient() + " arguments";
    }
    void GoOffLine() {
        Open();
        Project->SetOnline(false);
        EXPECT_FALSE(Project->Online());
    }
    void Remove(const std::string& name) {
        Project->Operate(&TCvsObject::Remove, {Folder / ("one\\" + name)});
    }
    /// The arguments of the commands that ran, each with a bar before it.
    std::string Arguments() const {
        const std::string& told = Host.Told;
        std::string all;
        for (std::size_t at = 0; (at = told.find('[', at)) != std::string::npos;) {
            const std::size_t end = told.find("]\r\n", at);
            const std::string word = told.substr(at + 1, end - at - 1);
            all += (word == "add" || word == "remove" ? "|" : " ") + word;
            at = end;
        }
        return all;
    }

    std::optional<TProject> Project;
};

TEST_F(OffLine, KeepsBothHalvesOfAMoveAndNewFoldersFirst) {
    WriteBytes(Folder / "one\\new\\deep\\x.c", "x");
    GoOffLine();
    EXPECT_FALSE(Project->Move(Folder / "one\\a.c", Folder / "one\\new\\a.c"));
    Project->Operate(&TCvsObject::Add, {Folder / "one\\new\\deep\\x.c"});
    // Nothing is moved on top of something.
    EXPECT_FALSE(Project->Move(Folder / "one\\new\\a.c", Folder / "one\\new\\deep"));
    EXPECT_TRUE(FileExists(Folder / "one\\new\\a.c"));
    EXPECT_EQ(Project->Waiting().size(), 3u) << Host.Told;
    EXPECT_EQ(Arguments(), "") << "nothing has run";
    Project->SetOnline(true);
    EXPECT_EQ(Arguments(),
              "|remove a.c"
              "|add -m  no messages new|add -m  no messages new new\\a.c"
              "|add -m  no messages new new\\deep|add -m  no messages new new\\deep new\\deep\\x.c")
        << Host.Told;
    EXPECT_TRUE(Project->Waiting().empty());
}

TEST_F(OffLine, LosesNothingWithTheLog) {
    WriteBytes(Folder / "one\\b.c", "b");
    GoOffLine();
    Project->Options.LocalOnly = true;
    Remove("a.c");
    // It looks like nobody's.
    EXPECT_TRUE(::DeleteFileA((Folder / "one\\vcsCommand.log").c_str()));
    Remove("b.c");
    EXPECT_EQ(Project->Waiting().size(), 2u) << Host.Told;
    Project->SetOnline(true);
    EXPECT_EQ(Arguments(), "|remove -l a.c|remove -l b.c") << Host.Told;
}

TEST_F(OffLine, AsksWhatBecameOfACommandThatWasInterrupted) {
    const std::string running = Settings.ProjectFile("Waiting", Folder / "one") + ".running";
    for (const bool forget : {true, false}) {
        WriteBytes(running, " remove a.c;" + (Folder / "one") + "\r\n");
        Host.Asked.clear();
        Host.Answer = forget ? TAnswer::Yes : TAnswer::No;
        Open();
        Project->SettleInterrupted();
        ExpectIn(Host.Asked, "    remove a.c\r\nIt may have been done.");
        EXPECT_EQ(Project->Waiting().size(), forget ? 0u : 1u);
        EXPECT_FALSE(FileExists(running));
    }
}

TEST_F(OffLine, StaysSoWhileAnotherHostRunsWhatWaits) {
    GoOffLine();
    Remove("a.c");
    const TScanner noWaiting(0);
    const std::string lock = Settings.ProjectFile("Waiting", Folder / "one") + ".lock";
    FileHandle other(
        ::CreateFileA(lock.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
    Project->SetOnline(true);
    EXPECT_FALSE(Project->Online());
    ExpectTold("Another host");
    EXPECT_EQ(Project->Waiting().size(), 1u);
    other.Reset();
    Project->SetOnline(true);
    EXPECT_EQ(Arguments(), "|remove a.c") << Host.Told;
}

}  // namespace
