// Projects in the host's window: what is stored, what reaches whom, how it closes.

#include <gtest/gtest.h>

#include "core/CvsExecute.h"
#include "core/Cvsroot.h"
#include "core/Progress_frm.h"
#include "framework/base/handle.h"
#include "framework/base/registry.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "framework/ui/menus.h"
#include "framework/ui/timer.h"
#include "framework/ui/tool_bar.h"
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

/// Chooses an item of the form's menu.
void Pick(const TForm& form, const std::string& caption) {
    for (const TMenuItem* menu : form.Find<TMainMenu>("Menu")->Items())
        for (TMenuItem* item : menu->Items())
            if (item->Caption() == caption)
                return item->Click();
    ADD_FAILURE() << "no such item";
}

class Projects : public testing::Test {
protected:
    Projects() {
        support::WriteBytes(Folder / "one\\a.c", "a");
        support::WriteBytes(Folder / "two\\b.c", "b");
    }
    ~Projects() override { Application().SetMainWindow(nullptr); }

    std::string Told() { return support::Part<TRichEdit>(Form, "Output").Text(); }
    /// Chooses a row of the list.
    void Select(const std::string& name) {
        auto& list = support::Part<TListView>(Form, "List");
        for (int i = 0; i < list.Count(); ++i)
            if (list.Row(i).Caption == name)
                return list.Select(i);
        FAIL() << "There is no " << name;
    }
    /// Does something with the project at hand, as the menu does: the rows show what there is
    /// afterwards.
    bool Operate(const std::function<bool(TCvsObject&)>& operation) {
        bool done = false;
        Form.Operate([&](TCvsObject& cvs) { return done = operation(cvs); }, false);
        return done;
    }
    /// Runs the fake client in the project at hand.
    bool Run(const std::string& arguments) {
        return Operate([&](TCvsObject& cvs) {
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
    TRegistry registry(HostRegistryKey);
    ASSERT_TRUE(registry.OpenKeyReadOnly(Settings.ProjectKey(Folder / "one")));
    EXPECT_EQ(registry.ReadString("CVSROOT").find("secret"), std::string::npos);
}

TEST_F(Projects, GoOnWithWhatCannotBeStoredOrRead) {
    TSettings unusable("Software\\" + std::string(300, 'x'));
    TProject project(Form, unusable, Folder / "one");
    project.Cvs().Password = "secret";
    project.Cvs().SetCVSROOT(":pserver:me:secret@host:/repo");
    project.Save();
    EXPECT_NE(Told().find("cannot be opened for writing"), std::string::npos) << Told();
    EXPECT_NE(project.Cvs().CVSROOT().find("secret"), std::string::npos) << "it still works";

    Form.OpenProject(Folder / "one");
    Select("a.c");
    Pick(Form, "&Edit file");
    const FileHandle held(::CreateFileA((Folder / "one\\a.c").c_str(), GENERIC_READ, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held);
    Form.Operate([](TCvsObject&) { return true; }, false);
    EXPECT_NE(Told().find("a.c: "), std::string::npos) << Told();
    EXPECT_GT(support::Part<TListView>(Form, "List").Count(), 0) << "the files still show";
}

TEST_F(Projects, KeepWhatIsIgnoredAlready) {
    // In place of the editor comes a program that ends at once. The present folder comes before
    // the system's.
    const std::string client = support::FakeClient(), editor = Folder / "notepad.exe";
    char before[MAX_PATH];
    ::GetCurrentDirectoryA(MAX_PATH, before);
    support::WriteBytes(editor, support::ReadBytes(client.substr(1, client.rfind('"') - 1)));
    support::WriteBytes(Folder / "one\\.cvsignore", "*.obj\r\nold stuff\r\n.cvsignore\r\n");
    support::WriteBytes(Folder / "one\\sub\\x.c", "x");
    Form.OpenProject(Folder / "one");
    Select("a.c");
    ::SetCurrentDirectoryA(Folder.Path().c_str());
    Pick(Form, "&Ignore");
    Select("a.c");
    Pick(Form, "&Ignore");
    auto& tree = support::Part<TTreeView>(Form, "Tree");
    tree.Root().Children().front()->Children().front()->SetSelected(true);
    Select("x.c");
    Pick(Form, "&Ignore");
    ::SetCurrentDirectoryA(before);
    EXPECT_EQ(support::ReadBytes(Folder / "one\\sub\\.cvsignore"), "x.c\r\n.cvsignore\r\n");
    EXPECT_EQ(support::ReadBytes(Folder / "one\\.cvsignore"),
              "*.obj\r\nold stuff\r\na.c\r\n.cvsignore\r\n");
    EXPECT_TRUE(SameText(Form.Project()->Cvs().WorkingDirectory(), Folder / "one"));
    EXPECT_TRUE(support::WaitUntil([&] { return ::DeleteFileA(editor.c_str()) != FALSE; }));
}

TEST_F(Projects, WorkOnWhatIsSelected) {
    support::WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    support::WriteBytes(Folder / "one\\gone.c", "gone soon");
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.CvsExecutable = support::FakeClient();
    // Without the name it would be about the whole project.
    Select("gone.c");
    ::DeleteFileA((Folder / "one\\gone.c").c_str());
    Pick(Form, "Unedi&t");
    EXPECT_TRUE(cvs.CommandLine.ends_with(" gone.c")) << cvs.CommandLine;
    // A bare name is one in the file's folder.
    Select("a.c");
    tests::ExpectForm("Move a.c", [](TForm& form) {
        support::Type(form, "Input1", "b.c");
        support::Press(form, "BitBtn1");
    });
    Pick(Form, "&Move...");
    EXPECT_EQ(support::ReadBytes(Folder / "one\\b.c"), "a");
}

TEST_F(Projects, KeepTheirConnectionWhenItsDialogIsCancelled) {
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.ConnectionType = tandrel::cnPServer;
    cvs.SetCVSROOT(":pserver:me@host:/repo");
    const auto choose = [&](TModalResult result) {
        tests::ExpectForm("CVS preferences", [&cvs, result](TForm& form) {
            support::Choose(form, "ComboBox1", tandrel::cnLocal);
            EXPECT_TRUE(support::WaitUntil([&] { return cvs.ConnectionType == tandrel::cnLocal; }));
            form.ModalResult = result;
        });
        return Operate(&TCvsObject::Preferences);
    };
    EXPECT_FALSE(choose(mrCancel));
    EXPECT_EQ(cvs.ConnectionType, tandrel::cnPServer);
    EXPECT_TRUE(choose(mrOk));
    EXPECT_EQ(cvs.ConnectionType, tandrel::cnLocal);
}

TEST_F(Projects, OfferTheToolsThatAreKept) {
    const auto configure = [&](const std::string& name, const std::string& button) {
        tests::ExpectForm("User Tools", [&](TForm& form) {
            support::Part<TToolButton>(form, "ToolButton1").Click();
            ::SetWindowTextA(::GetFocus(), name.c_str());
            support::Type(form, "Edit1", "C:\\windows\\explorer.exe");
            tests::Click(form, button);
        });
        Pick(Form, "&Configure...");
        std::string captions;
        for (const TMenuItem* menu : support::Part<TMainMenu>(Form, "Menu").Items())
            if (menu->Items().back()->Caption() == "&Configure...")
                for (const TMenuItem* item : menu->Items())
                    captions += item->Caption() + ' ';
        return captions;
    };
    EXPECT_EQ(configure("cancelled", "BitBtn2"), "&Configure... ");
    EXPECT_EQ(configure("kept", "BitBtn1"), "kept - &Configure... ");
    EXPECT_EQ(configure("cancelled", "BitBtn2"), "kept - &Configure... ");
    ::RegDeleteKeyA(HostRegistryKey, Settings.ToolsKey().c_str());
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

TEST_F(Projects, PullIntoAFolderThatIsNotThereYet) {
    Form.OpenProject(Folder / "one");
    tests::ExpectForm("CVS Pull Project ", [](TForm& form) { tests::Click(form, "BitBtn1"); });
    EXPECT_TRUE(Operate([&](TCvsObject& cvs) {
        cvs.CvsExecutable = support::FakeClient() + " surroundings";
        cvs.SetCVSROOT("a root");
        cvs.Set_ProjectRoot(Folder / "new\\deep");
        return cvs.PullProjectAccepted();
    })) << Told();
    EXPECT_NE(Told().find("folder:" + (Folder / "new\\deep") + ";"), std::string::npos) << Told();
}

TEST_F(Projects, TakeNoFolderForEverythingInTheProject) {
    support::WriteBytes(Folder / "one\\sub\\c.c", "c");
    support::WriteBytes(Folder / "one\\CVS\\Entries", "");
    Form.OpenProject(Folder / "one");
    auto& list = support::Part<TListView>(Form, "List");
    const auto selected = [&] {
        for (TMenuItem* menu : support::Part<TMainMenu>(Form, "Menu").Items()) {
            std::string enabled;
            for (const TMenuItem* item : menu->Items())
                if (item->Enabled() && item->Caption() != "-")
                    enabled += item->Caption() + ' ';
            if (menu->Caption() == "&Selection")
                return enabled;
        }
        return std::string();
    };
    for (int i = 0; i < list.Count(); ++i) {
        list.Select(i);
        const bool isFile = list.Row(i).Caption == "a.c";
        EXPECT_EQ(selected() == "&Add &Ignore ", !isFile) << selected();
        EXPECT_EQ(selected().find("&Commit") != std::string::npos, isFile) << selected();
    }
    EXPECT_EQ(list.Count(), 2);
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

TEST_F(Projects, EndACommandThatSaysNothingWhenTheUserCancelsIt) {
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    // Sees the form without being input to it, which would keep it hidden.
    TTimer user(1700);
    user.OnTimer = [&](TObject*) {
        auto* const form = cvs.ExecuteClass->ProgressForm;
        if (form && form->Visible())
            tests::Click(*form, "BitBtn2");
    };
    user.Restart();
    const ULONGLONG start = ::GetTickCount64();
    EXPECT_FALSE(Run("sleep 600000"));
    EXPECT_LT(::GetTickCount64() - start, 120000u);
    EXPECT_NE(Told().find("did not answer"), std::string::npos);
    EXPECT_TRUE(Run("exit 0")) << "and go on";
}

/// The user closes the window while a command runs.
class TCloseDuringRun {
public:
    explicit TCloseDuringRun(const TForm& form) {
        Timer_.OnTimer = [this, &form](TObject*) {
            Timer_.SetEnabled(false);
            ::SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
            EXPECT_FALSE(Application().Terminated()) << "the command goes on";
            Closed = true;
        };
        Timer_.SetEnabled(true);
    }
    bool Closed = false;

private:
    TTimer Timer_{200};
};

TEST_F(Projects, GoOffLineAndOnLineAgain) {
    // There is no writing a log where a folder has its name.
    support::WriteBytes(Folder / "one\\vcsCommand.log\\file", "");
    Form.OpenProject(Folder / "one");
    Pick(Form, "&Server is on-line");
    EXPECT_TRUE(Form.Project()->Online());
    EXPECT_NE(Told().find("vcsCommand.log"), std::string::npos);
    EXPECT_GT(support::Part<TListView>(Form, "List").Count(), 0) << "the files are shown";

    support::WriteBytes(Folder / "two\\vcsCommand.pending",
                        " say-and-sleep working 1500;" + Folder.Path() + "\r\n");
    Form.OpenProject(Folder / "two");
    Form.Project()->Cvs().CvsExecutable = support::FakeClient();
    Pick(Form, "&Server is on-line");
    EXPECT_FALSE(Form.Project()->Online());
    const TCloseDuringRun close(Form);
    Pick(Form, "&Server is on-line");
    EXPECT_TRUE(Form.Project()->Online());
    EXPECT_NE(Told().find("working"), std::string::npos);
    EXPECT_FALSE(Form.Project()->HasPending());
    EXPECT_TRUE(close.Closed);
    EXPECT_TRUE(Application().Terminated());
    Application().Run();
}

TEST_F(Projects, CloseWhenTheCommandHasEnded) {
    Form.OpenProject(Folder / "one");
    Form.Show();
    const TCloseDuringRun close(Form);
    Form.Operate(
        [&](TCvsObject& cvs) {
            cvs.CvsExecutable = support::FakeClient();
            cvs.CommandLine = " say-and-sleep working 1500";
            cvs.Execute(Folder.Path());
            EXPECT_EQ(cvs.ExitCode, 0);
            return true;
        },
        false);
    EXPECT_TRUE(close.Closed);
    EXPECT_TRUE(Application().Terminated());
    Application().Run();  // ends at once, and forgets that it was to end
    EXPECT_NE(Told().find("working"), std::string::npos);
    Form.SetVisible(false);
}

}  // namespace
