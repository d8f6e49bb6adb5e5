// Commands that are given while the server is off-line, and what becomes of them.

#include <gtest/gtest.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "support/Files.h"
#include "tests/core/TestObject.h"

namespace {

using framework::FileExists;
using namespace tandrel;

class CommandLog : public testing::Test {
protected:
    CommandLog() {
        Obj.Set_WorkingDirectory(Folder.Path());
        Obj.ConnectionType = cnPServer;
        Obj.Operation = otAdd;
    }
    void Give(const std::string& arguments) {
        Obj.CommandLine = arguments;
        Obj.Execute(Folder.Path());
    }
    std::string Logged() const { return support::ReadBytes(LogFile); }

    support::TTempFolder Folder{"log"};
    const std::string LogFile = Folder / "vcsCommand.log";
    tests::TTestObject Obj;
};

TEST_F(CommandLog, AppendsAddAndRemoveToAnExistingFile) {
    support::WriteBytes(LogFile, "before\r\n");
    Give(" add a.c");
    EXPECT_EQ(Obj.ExitCode, 1);
    EXPECT_EQ(Obj.Messages.All(),
              "server is offline \r\nCVS command   add a.c saved  in vcsCommand.log \r\n");
    Obj.Operation = otRemove;
    Give(" remove 100%s.c");
    EXPECT_EQ(Logged(), "before\r\n add a.c;" + Folder.Path() + "\r\n remove 100%s.c;" +
                            Folder.Path() + "\r\n");
    // A message may have lines; the log has one for each command.
    support::WriteBytes(LogFile, "");
    Give(" add -m \"one\r\ntwo\nthree\r\" a.c");
    EXPECT_EQ(Logged(), " add -m \"one two three \" a.c;" + Folder.Path() + "\r\n");
    Obj.Messages.Clear();
    Give("");
    EXPECT_EQ(Obj.Messages.All(),
              "server is offline \r\nCVS command   saved  in vcsCommand.log \r\n")
        << "said even when nothing was written";
}

TEST_F(CommandLog, DropsOtherCommandsAndNeedsTheFile) {
    int ends = 0;
    Obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) { ++ends; };
    Give(" add a.c");
    EXPECT_FALSE(FileExists(LogFile)) << "the engine never creates it";
    EXPECT_EQ(Obj.Messages.All(), "server is offline \r\n")
        << "the error ends the worker in silence";
    support::WriteBytes(LogFile, "");
    Obj.Operation = otCommit;
    Obj.Messages.Clear();
    Give(" commit");
    EXPECT_EQ(Obj.Messages.All(), "server is offline \r\n");
    EXPECT_EQ(Logged(), "");
    EXPECT_EQ(ends, 2);
}

TEST_F(CommandLog, IsNotUsedForALocalRepository) {
    Obj.ConnectionType = cnLocal;
    Give(" exit 0");
    EXPECT_EQ(Obj.ExitCode, 0);
}

/// Replays in the folder that the log names, without the ";" that is handed on with it.
class ReplayObject : public tests::TTestObject {
public:
    std::string Get_CurrentProcDirectory() override { return "C:\\"; }
};

TEST_F(CommandLog, ReplaysInOrderAndDeletesTheFile) {
    Obj.ConnectionType = cnLocal;
    support::WriteBytes(LogFile,
                        " arguments 1;C:\\first\r\n\r\n arguments 2;C:\\second\n"
                        "no folder here\r\n;\r\n arguments 3;C:\\third");
    std::vector<std::string> runs;
    Obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) {
        runs.push_back(Obj.CommandLine + "|" + Obj.ExecuteClass->Directory);
    };
    Obj.Set_ServerOnline(true);
    // A line without ";" repeats the command before it, in what is left of the line behind it.
    EXPECT_EQ(runs, (std::vector<std::string>{" arguments 1|;C:\\first", " arguments 2|;C:\\second",
                                              " arguments 2|re", " arguments 3|;C:\\third"}));
    EXPECT_EQ(Obj.Messages.Texts.front(), "CVS process command saved in vcsCommand.log \r\n");
    EXPECT_FALSE(FileExists(LogFile));
    EXPECT_TRUE(Obj.ServerOnline());
    runs.clear();
    support::WriteBytes(LogFile, " arguments 1;C:\\first\r\n");
    Obj.Set_ServerOnline(true);
    EXPECT_TRUE(runs.empty()) << "it was on-line already";
    Obj.Set_ServerOnline(false);
    EXPECT_TRUE(runs.empty());
    EXPECT_FALSE(Obj.ServerOnline());
}

TEST_F(CommandLog, StillCountsAsOffLineDuringTheReplay) {
    support::WriteBytes(LogFile, " add a.c;C:\\x\r\n add b.c;C:\\x\r\n");
    Obj.Set_ServerOnline(true);
    // Each command goes through the log again, and the log is then deleted.
    EXPECT_EQ(Obj.Messages.All(),
              "CVS process command saved in vcsCommand.log \r\n"
              "server is offline \r\n"
              "CVS command   add a.c saved  in vcsCommand.log \r\n"
              "server is offline \r\n"
              "CVS command   add b.c saved  in vcsCommand.log \r\n");
    EXPECT_FALSE(FileExists(LogFile));
}

TEST_F(CommandLog, WaitsWhileACommandRuns) {
    Obj.ConnectionType = cnLocal;
    support::WriteBytes(LogFile, " exit 0;C:\\\r\n");
    int tries = 0;
    Obj.OnMessage = [&, before = Obj.OnMessage](framework::TObject* sender,
                                                const std::string& text) {
        before(sender, text);
        if (text != "working")
            return;
        ++tries;
        Obj.Set_ServerOnline(true);
        EXPECT_FALSE(Obj.ServerOnline());
        EXPECT_EQ(Obj.CommandLine, " say-and-sleep working 0");
    };
    Give(" say-and-sleep working 0");
    EXPECT_EQ(tries, 1);
    EXPECT_TRUE(FileExists(LogFile)) << "or its commands were lost";
    EXPECT_NE(Obj.Messages.All().find("execute already running"), std::string::npos);
    Obj.Set_ServerOnline(true);
    EXPECT_FALSE(FileExists(LogFile));
    EXPECT_TRUE(Obj.ServerOnline());
}

TEST_F(CommandLog, SurvivesDamageAndMissingFolders) {
    Obj.ConnectionType = cnLocal;
    std::string damage(3000, '\0');
    for (std::size_t i = 0; i < damage.size(); ++i)
        damage[i] = static_cast<char>(i * 7);
    support::WriteBytes(LogFile, damage);
    Obj.Set_ServerOnline(true);
    EXPECT_FALSE(FileExists(LogFile));
    EXPECT_TRUE(Obj.ServerOnline());

    Obj.Set_ServerOnline(false);
    Obj.Messages.Clear();
    Obj.Set_WorkingDirectory("C:\\gone");
    Obj.Set_ServerOnline(true);
    EXPECT_EQ(Obj.Messages.All(), "") << "no file, no word";
    EXPECT_TRUE(Obj.ServerOnline());
}

TEST_F(CommandLog, StaysOffLineWhenTheLogCannotBeRead) {
    support::WriteBytes(LogFile, " add a.c;C:\\x\r\n");
    const framework::FileHandle locked(
        ::CreateFileA(LogFile.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_THROW(Obj.Set_ServerOnline(true), framework::EInOutError);
    EXPECT_FALSE(Obj.ServerOnline());
    EXPECT_TRUE(FileExists(LogFile));
}

}  // namespace
