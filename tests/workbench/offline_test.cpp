// Work while the server cannot be reached: what the window offers, and that it is never in the way.

#include "framework/base/files.h"
#include "tests/workbench/Projects.h"

namespace {

using namespace tests;
using support::WriteBytes;

/// "one" is a working copy of a server's module; the client shows its arguments, or does what
/// `Client` says.
class OffLine : public Projects {
protected:
    OffLine() {
        WriteBytes(Folder / "one\\CVS\\Root", ":pserver:me@host:/repo\r\n");
        WriteBytes(Folder / "one\\CVS\\Repository", "one\r\n");
        WriteBytes(Folder / "one\\CVS\\Entries", "/a.c/1.1/dummy//\r\n");
    }
    void Open(TMainForm& form) {
        form.OpenProject(Folder / "one");
        form.Project()->Cvs().CvsExecutable = Client;
    }
    void GoOffLine() {
        Open(Form);
        Pick(Form, "&Server is on-line");
        EXPECT_FALSE(Form.Project()->Online());
    }

    std::string Client = support::FakeClient() + " arguments";
};

TEST_F(OffLine, LastsOverARestartAndOffersWhatWaits) {
    GoOffLine();
    Select("a.c");
    Pick(Form, "&Remove");
    Answer(false);
    {
        TMainForm again(Settings, Packages);
        Open(again);
        EXPECT_NE(Asked.find("remove a.c"), std::string::npos) << Asked;
        EXPECT_FALSE(again.Project()->Online());
        EXPECT_EQ(again.Project()->Waiting().size(), 1u);
        // The client refuses, and the user keeps the command.
        again.Project()->Cvs().CvsExecutable = support::FakeClient() + " exit 1";
        Answer(true);
        Pick(again, "&Server is on-line");
        EXPECT_TRUE(again.Project()->Online());
    }
    // Another one was cut off, and the user does not know whether it has been done.
    WriteBytes(Settings.ProjectFile("Waiting", Folder / "one") + ".running",
               " remove a.c;" + (Folder / "one") + "\r\n");
    Asked.clear();
    Answer(false);
    TMainForm third(Settings, Packages);
    Open(third);
    EXPECT_NE(Asked.find("It may have been done."), std::string::npos) << Asked;
    EXPECT_NE(Asked.find("Run them now?"), std::string::npos) << Asked;
    EXPECT_TRUE(third.Project()->Online());
    third.Busily([](TProject& project) { project.RunWaiting(); });
    EXPECT_NE(support::Part<TRichEdit>(third, "Output").Text().find("[remove]"), std::string::npos);
    EXPECT_TRUE(third.Project()->Waiting().empty());
    EXPECT_FALSE(FileExists(Folder / "one\\vcsCommand.log"));
    // Planted while the server counts as reachable: not ours, and nobody asks.
    WriteBytes(Folder / "one\\vcsCommand.log", " remove a.c;" + (Folder / "one") + "\r\n");
    Asked.clear();
    TMainForm fourth(Settings, Packages);
    Open(fourth);
    EXPECT_EQ(Asked, "");
    Application().SetMainWindow(nullptr);
}

TEST_F(OffLine, CannotBeginWithoutALog) {
    // There is no writing a log where a folder has its name.
    WriteBytes(Folder / "one\\vcsCommand.log\\file", "");
    Open(Form);
    Pick(Form, "&Server is on-line");
    EXPECT_TRUE(Form.Project()->Online());
    EXPECT_NE(Told().find("vcsCommand.log"), std::string::npos);
    EXPECT_GT(support::Part<TListView>(Form, "List").Count(), 0) << "the files are shown";
}

TEST_F(OffLine, ClosesTheWindowWhenWhatWaitedHasRun) {
    Client = support::FakeClient() + " say-and-sleep working 1500 1";
    GoOffLine();
    Select("a.c");
    Pick(Form, "&Remove");
    const TCloseDuringRun close(Form);
    Pick(Form, "&Server is on-line");
    EXPECT_NE(Told().find("working"), std::string::npos);
    EXPECT_TRUE(close.Closed);
    EXPECT_TRUE(Application().Terminated());
    Application().Run();
}

}  // namespace
