// Projects in the host's window: what is stored, what reaches whom, how it closes.

#include <gtest/gtest.h>

#include "core/CvsExecute.h"
#include "core/Cvsroot.h"
#include "core/Progress_frm.h"
#include "framework/base/registry.h"
#include "framework/ui/application.h"
#include "framework/ui/timer.h"
#include "host/MainForm.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace framework;
using namespace host;
using tandrel::TCvsObject;

class Projects : public testing::Test {
protected:
    Projects() {
        support::WriteBytes(Folder / "one\\a.c", "a");
        support::WriteBytes(Folder / "two\\b.c", "b");
    }
    ~Projects() override { Application().SetMainWindow(nullptr); }

    std::string Told() { return support::Part<TRichEdit>(Form, "Output").Text(); }
    /// Runs the fake client in the project at hand.
    bool Run(const std::string& arguments) {
        return Form.Project()->Operate([&](TCvsObject& cvs) {
            cvs.CvsExecutable = support::FakeClient();
            cvs.CommandLine = " " + arguments;
            cvs.Execute(Folder.Path());
            return cvs.ExitCode == 0;
        });
    }

    const support::TTempFolder Folder{"projects"};
    const std::string Key = "Software\\Tandrel Test " + std::to_string(::GetCurrentProcessId());
    TSettings Settings{Key};
    TPackageRegistry Packages;
    TMainForm Form{Settings, Packages};
};

TEST_F(Projects, KeepTheirConnectionButNoPassword) {
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.ConnectionType = tandrel::cnPServer;
    cvs.Server = "host";
    cvs.UserName = "me";
    cvs.Path = "/repo";
    cvs.Password = "secret";
    cvs.SpecialPort = "2402";
    cvs.SetCVSROOT(
        tandrel::CompileCVSROOT(cvs.ConnectionType, "host", "me", "secret", "2402", "/repo"));
    cvs.PruneEmptyDirs = false;
    cvs.Set_CVSIGNORE("*.o & \"x\"");
    Form.Project()->Save();
    EXPECT_NE(cvs.CVSROOT().find("secret"), std::string::npos) << "it still works with it";

    TProject again(Form, Settings, Folder / "one");
    EXPECT_EQ(again.Cvs().ConnectionType, tandrel::cnPServer);
    EXPECT_EQ(again.Cvs().Server + again.Cvs().UserName + again.Cvs().Path, "hostme/repo");
    EXPECT_EQ(again.Cvs().SpecialPort, "2402");
    EXPECT_EQ(again.Cvs().CVSROOT().find("secret"), std::string::npos);
    EXPECT_FALSE(again.Cvs().PruneEmptyDirs);
    EXPECT_EQ(again.Cvs().CVSIGNORE(), "*.o & \"x\"");
    TRegistry registry(TSettings::RootKey());
    ASSERT_TRUE(registry.OpenKeyReadOnly(Settings.ProjectKey(Folder / "one")));
    EXPECT_EQ(registry.ReadString("CVSROOT").find("secret"), std::string::npos);
}

TEST_F(Projects, GiveTheChildTheirOwnSurroundings) {
    for (const char* name : {"one", "two"}) {
        Form.OpenProject(Folder / name);
        Form.Project()->Cvs().SetCVSROOT(std::string("root of ") + name);
        Form.Project()->Cvs().Set_CVSIGNORE(std::string("ignored by ") + name);
    }
    for (const char* name : {"one", "two", "one"}) {
        Form.OpenProject(Folder / name);
        EXPECT_TRUE(Run("surroundings CVSROOT CVSIGNORE"));
        const std::string last = Told().substr(Told().rfind("folder:"));
        EXPECT_NE(last.find(std::string("CVSROOT=root of ") + name + ";CVSIGNORE=ignored by " +
                            name + ";"),
                  std::string::npos)
            << last;
    }
}

TEST_F(Projects, SurviveAClientThatCrashes) {
    Form.OpenProject(Folder / "one");
    EXPECT_FALSE(Run("crash"));
    EXPECT_TRUE(Run("exit 0")) << "and go on";
}

TEST_F(Projects, ShowACommandThatTakesLongAndLetTheUserCancelIt) {
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    bool shown = false;
    cvs.OnMessage = [&, host = cvs.OnMessage](TObject* sender, const std::string& text) {
        host(sender, text);
        tandrel::Progress_frm::TVcs_ProgressForm& form = *cvs.ExecuteClass->ProgressForm;
        if (shown || !form.Visible())
            return;
        shown = true;
        tests::Click(form, "BitBtn2");
    };
    // Each pause is longer than the second after which the form shows.
    EXPECT_FALSE(Run("say-and-sleep . 1500 20"));
    EXPECT_TRUE(shown);
    EXPECT_NE(Told().find("User cancel execute command"), std::string::npos);
}

TEST_F(Projects, CloseWhenTheCommandHasEnded) {
    Form.OpenProject(Folder / "one");
    Form.Show();
    // The user closes the window while the command runs.
    TTimer timer(200);
    bool closed = false;
    timer.OnTimer = [&](TObject*) {
        timer.SetEnabled(false);
        ::SendMessageW(Form.Handle(), WM_CLOSE, 0, 0);
        EXPECT_FALSE(Application().Terminated()) << "the command goes on";
        closed = true;
    };
    timer.SetEnabled(true);
    Form.Operate(
        [&](TCvsObject& cvs) {
            cvs.CvsExecutable = support::FakeClient();
            cvs.CommandLine = " say-and-sleep working 1500";
            cvs.Execute(Folder.Path());
            EXPECT_EQ(cvs.ExitCode, 0);
            return true;
        },
        false);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(Application().Terminated());
    Application().Run();  // ends at once, and forgets that it was to end
    EXPECT_NE(Told().find("working"), std::string::npos);
    Form.SetVisible(false);
}

}  // namespace
