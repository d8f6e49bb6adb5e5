// Work while the server cannot be reached: what the window offers, and that it is never in the way.

#include "framework/base/files.h"
#include "tests/workbench/Projects.h"

namespace {

using namespace tests;
using support::WriteBytes;

/// "one" is a working copy of a server's module; the client shows its arguments.
class OffLine : public Projects {
protected:
    OffLine() { Record("one", ":pserver:me@host:/repo"); }
    void Open(TMainForm& form) {
        form.OpenProject(Folder / "one");
        form.Project()->Cvs().CvsExecutable = support::FakeClient() + " arguments";
    }
    void GoOffLine() {
        Open(Form);
        Pick(Form, "&Server is on-line");
        EXPECT_FALSE(Form.Project()->Online());
    }
};

TEST_F(OffLine, LastsOverARestartAndOffersWhatWaits) {
    GoOffLine();
    Select("a.c");
    Pick(Form, "&Remove");
    Answer(false);
    {
        TMainForm again(Settings, Packages);
        Open(again);
        ExpectIn(Asked, "remove a.c");
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
    ExpectIn(Asked, "It may have been done.");
    ExpectIn(Asked, "Run them now?");
    EXPECT_TRUE(third.Project()->Online());
    third.Busily([](TProject& project) { project.RunWaiting(); });
    ExpectIn(TextOf(third, "Output"), "[remove]");
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
    ExpectTold("vcsCommand.log");
    EXPECT_GT(support::Part<TListView>(Form, "List").Count(), 0) << "the files are shown";
}

TEST_F(OffLine, ClosesTheWindowWhenWhatWaitedHasRun) {
    GoOffLine();
    Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " say-and-sleep working 1500 1";
    Select("a.c");
    Pick(Form, "&Remove");
    const TCloseDuringRun close(Form);
    Pick(Form, "&Server is on-line");
    ExpectTold("working");
    EXPECT_TRUE(close.Closed);
    EXPECT_TRUE(Application().Terminated());
    Application().Run();
}

}  // namespace
