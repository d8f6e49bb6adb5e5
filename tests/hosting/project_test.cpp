// Projects: what is stored, what their commands get, and what is left of them.

#include "core/Cvsroot.h"
#include "framework/base/exceptions.h"
#include "framework/base/registry.h"
#include "hosting/Queries.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Japanese.h"

namespace {

using namespace tests;
using support::ReadBytes;
using support::WriteBytes;

// Before the host looks at what it inherited.
const bool Inherits = ::SetEnvironmentVariableA("CVS_RSH", "inherited shell") != FALSE;

TEST(Settings, RememberTheProjectsOpenedLast) {
    const std::string key = "Software\\Tandrel Test " + std::to_string(::GetTickCount64());
    TSettings settings(key);
    EXPECT_TRUE(settings.RecentProjects().empty());
    for (int i = 0; i < 10; ++i)
        settings.Remember("C:\\p" + std::to_string(i));
    settings.Remember("c:\\P5");
    const auto recent = settings.RecentProjects();
    ASSERT_EQ(recent.size(), 8u);
    EXPECT_EQ(recent[0] + recent[1] + recent[7], "c:\\P5C:\\p9C:\\p2");
    settings.Forget("C:\\p9");
    EXPECT_EQ(settings.RecentProjects()[1], "C:\\p8");
    EXPECT_NE(settings.ProjectKey("C:\\a\\b"), settings.ProjectKey("C:\\a"));
    const Japanese letters;
    EXPECT_EQ(settings.ProjectKey("C:\\" + std::string(Source)), key + "\\Projects\\C:/" + Source);
}

TEST_F(Projects, KeepTheirConnectionButNoPassword) {
    TProject project(Host, Settings, Folder / "one");
    TCvsObject& cvs = project.Cvs();
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
    cvs.Set_CVS_RSH("C:\\my ssh.exe");
    // An operation has options of its own; the project's outlive it.
    EXPECT_TRUE(Run(project, "exit 0"));
    EXPECT_FALSE(cvs.PruneEmptyDirs);
    project.Save();

    TProject again(Host, Settings, Folder / "one");
    EXPECT_EQ(again.Cvs().ConnectionType, tandrel::cnPServer);
    EXPECT_EQ(again.Cvs().Server + again.Cvs().UserName + again.Cvs().Path, "hostme/repo");
    EXPECT_EQ(again.Cvs().SpecialPort, "2402");
    EXPECT_EQ(again.Cvs().CVSROOT().find("secret"), std::string::npos);
    EXPECT_FALSE(again.Cvs().PruneEmptyDirs);
    EXPECT_EQ(again.Cvs().CVSIGNORE() + again.Cvs().CVS_RSH(), "*.o & \"x\"C:\\my ssh.exe");
    TRegistry registry(HostRegistryKey);
    ASSERT_TRUE(registry.OpenKeyReadOnly(Settings.ProjectKey(Folder / "one")));
    EXPECT_EQ(registry.ReadString("CVSROOT"), ":pserver:me@host:2402:/repo");

    // What the user empties does not come back, and a name may bring the password along.
    again.Cvs().SpecialPort = "";
    again.Cvs().UserName = "me:secret";
    again.Save();
    TProject third(Host, Settings, Folder / "one");
    EXPECT_EQ(third.Cvs().SpecialPort + third.Cvs().UserName, "me");
    EXPECT_EQ(again.Cvs().Password, "secret");
}

TEST_F(Projects, GoOnWithWhatCannotBeStored) {
    TSettings unusable("Software\\" + std::string(300, 'x'));
    TProject project(Host, unusable, Folder / "one");
    project.Cvs().Password = "secret";
    project.Cvs().SetCVSROOT(":pserver:me:secret@host:/repo");
    project.Save();
    ExpectTold("cannot be opened for writing");
}

TEST_F(Projects, BelongWhereTheirRecordsSay) {
    Record("one", ":pserver:me@host:/repo");
    TProject project(Host, Settings, Folder / "one");
    // Another dialog's connection is not that of this working copy.
    EXPECT_FALSE(project.Operate([](TCvsObject& cvs) {
        cvs.ConnectionType = tandrel::cnLocal;
        cvs.UserName = "you";
        cvs.SetCVSROOT("C:\\elsewhere");
        return false;
    }));
    EXPECT_EQ(project.Cvs().CVSROOT(), ":pserver:me@host:/repo");
}

TEST_F(Projects, KeepTheirConnectionWhenItsDialogIsCancelled) {
    TProject project(Host, Settings, Folder / "one");
    TCvsObject& cvs = project.Cvs();
    cvs.ConnectionType = tandrel::cnPServer;
    cvs.SetCVSROOT(":pserver:me@host:/repo");
    const auto choose = [&](TModalResult result) {
        ExpectForm("CVS preferences", [&cvs, result](TForm& form) {
            support::Choose(form, "ComboBox1", tandrel::cnLocal);
            EXPECT_TRUE(support::WaitUntil([&] { return cvs.ConnectionType == tandrel::cnLocal; }));
            form.ModalResult = result;
        });
        return project.Operate(&TCvsObject::Preferences);
    };
    EXPECT_FALSE(choose(mrCancel));
    EXPECT_EQ(cvs.ConnectionType, tandrel::cnPServer);
    EXPECT_TRUE(choose(mrOk));
    EXPECT_EQ(cvs.ConnectionType, tandrel::cnLocal);
}

TEST_F(Projects, GiveTheChildTheirOwnSurroundings) {
    ASSERT_TRUE(Inherits);
    TProject one(Host, Settings, Folder / "one"), two(Host, Settings, Folder / "two");
    for (TProject* project : {&one, &two}) {
        project->Cvs().SetCVSROOT("root of " + ExtractFileName(project->Folder()));
        project->Cvs().Set_CVSIGNORE("ignored by " + ExtractFileName(project->Folder()));
    }
    const auto surroundings = [this](TProject& project) {
        Host.Told.clear();
        EXPECT_TRUE(Run(project, "surroundings CVSROOT CVSIGNORE CVS_RSH"));
        return Host.Told.substr(Host.Told.find("CVSROOT="));
    };
    for (TProject* project : {&one, &two, &one}) {
        const std::string name = ExtractFileName(project->Folder());
        EXPECT_TRUE(surroundings(*project).starts_with("CVSROOT=root of " + name +
                                                       ";CVSIGNORE=ignored by " + name +
                                                       ";CVS_RSH=inherited shell;"))
            << Host.Told;
    }
    one.Cvs().Set_CVS_RSH("C:\\my ssh.exe");
    surroundings(one);
    ExpectTold(";CVS_RSH=C:\\my ssh.exe;");
    surroundings(two);
    ExpectTold(";CVS_RSH=inherited shell;");
}

TEST_F(Projects, TakeNoTimeWithinTheRecordedSecondForAChange) {
    const std::string file = Folder / "one\\a.c";
    Record("one", "C:\\none", "/a.c/1.1/Fri Mar  5 14:07:09 2004//\r\n");
    TProject project(Host, Settings, Folder / "one");
    for (const auto& [second, fraction, state] : {std::tuple{9, 9998000, TFileState::Unchanged},
                                                  {9, 0, TFileState::Unchanged},
                                                  {10, 2000, TFileState::Changed},
                                                  {8, 9998000, TFileState::Changed}}) {
        const SYSTEMTIME moment{2004, 3, 5, 5, 14, 7, static_cast<WORD>(second), 0};
        FILETIME time{};
        ::SystemTimeToFileTime(&moment, &time);
        time.dwLowDateTime += static_cast<DWORD>(fraction);  // of 100 ns
        const FileHandle handle(::CreateFileA(file.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ,
                                              nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(::SetFileTime(handle.Get(), nullptr, nullptr, &time));
        project.Refresh();
        EXPECT_EQ(RowsOf(project.Folder(), project.Cvs().WorkDirTree).front().State, state)
            << second << "." << fraction;
    }
}

TEST_F(Projects, ShowWhatIsMissingAndCanGetItBack) {
    Record("one", "C:\\none",
           "/gone.c/1.2/Fri Mar  5 14:07:09 2004//\r\nD/sub////\r\n"
           "/a.c/1.1/dummy//\r\n/taken.c/-1.3/dummy//\r\n");
    TProject project(Host, Settings, Folder / "one");
    project.Cvs().CvsExecutable = support::FakeClient() + " arguments";
    std::string rows;
    for (const TFileRow& row : RowsOf(project.Folder(), project.Cvs().WorkDirTree))
        rows += row.Name + '=' + StateName(row.State) + ' ' + row.Revision + ';';
    EXPECT_EQ(rows, "a.c=Changed 1.1;gone.c=Missing 1.2;taken.c=Removed -1.3;");
    const auto loads = [this] {
        int count = 0;
        for (std::size_t at = 0; (at = Host.Told.find("does not have", at)) != std::string::npos;
             ++at)
            ++count;
        return count;
    };
    EXPECT_EQ(loads(), 1) << Host.Told;
    ExpectTold("does not have 2 of its entries: gone.c, sub");
    ExpectForm("CVS update", [](TForm& form) { Click(form, "BitBtn1"); });
    project.Operate(&TCvsObject::Update, {Folder / "one\\gone.c"});
    ExpectTold("[update]\r\n[-P]\r\n[-d]\r\n[gone.c]\r\n");
    EXPECT_EQ(loads(), 2) << "the files are read once for an operation";
    project.Operate(&TCvsObject::Remove, {Folder / "one\\gone.c"});
    ExpectTold("[remove]\r\n[gone.c]\r\n");
    EXPECT_EQ(loads(), 3);
}

TEST_F(Projects, ArePlacedAlsoWhenCalledLikeTheirParent) {
    const TSandbox sandbox;
    const std::string folder = Folder / "projects\\proj";
    WriteBytes(folder + "\\a.c", "a");
    TProject project(Host, Settings, folder);
    ExpectForm("Place project into CVS-step 1", [&](TForm& form) {
        support::Press(form, "BitBtn4");
        support::Type(support::StepOf(form), "Edit3", sandbox.Repository);
        ASSERT_TRUE(
            support::WaitUntil([&] { return support::Part<TButton>(form, "BitBtn4").Enabled(); }));
        support::Press(form, "BitBtn4");
        support::Press(form, "BitBtn4");
        support::Press(form, "BitBtn1");
    });
    ExpectForm("CVS PlaceProject", [](TForm& form) {
        EXPECT_TRUE(TextOf(form, "Label1").ends_with("successfuly completed"));
        Click(form, "BitBtn1");
    });
    project.Operate(&TCvsObject::PlaceProject);
    EXPECT_EQ(ReadBytes(folder + "\\CVS\\Repository"), "proj\r\n") << Host.Told;
    EXPECT_EQ(ReadBytes(folder + "\\a.c"), "a");
    EXPECT_TRUE(project.Operate(&TCvsObject::Status)) << "what was placed is known" << Host.Told;
}

TEST_F(Projects, LeaveNothingOfAnOperationToTheNext) {
    TProject project(Host, Settings, Folder / "one");
    EXPECT_FALSE(project.Operate([](TCvsObject& cvs) {
        cvs.DeleteLocalFiles = cvs.TagDelete = cvs.ExportInsteadOfCheckout = true;
        cvs.AnswerPrompts = true;
        Abort();
        return true;
    }));
    EXPECT_TRUE(project.Operate([](TCvsObject& cvs) {
        EXPECT_FALSE(cvs.DeleteLocalFiles || cvs.TagDelete || cvs.ExportInsteadOfCheckout);
        EXPECT_FALSE(cvs.AnswerPrompts);
        return true;
    }));
}

TEST_F(Projects, PullIntoAFolderThatIsNotThereYet) {
    TProject project(Host, Settings, Folder / "one");
    ExpectForm("CVS Pull Project ", [](TForm& form) { Click(form, "BitBtn1"); });
    EXPECT_TRUE(project.Operate([&](TCvsObject& cvs) {
        cvs.CvsExecutable = support::FakeClient() + " surroundings";
        cvs.SetCVSROOT("a root");
        cvs.Set_ProjectRoot(Folder / "new\\deep");
        return cvs.PullProjectAccepted();
    })) << Host.Told;
    ExpectTold("folder:" + (Folder / "new\\deep") + ";");
    // One that fails leaves nothing behind, but for what was there before.
    ExpectForm("CVS Pull Project ", [](TForm& form) { Click(form, "BitBtn1"); });
    EXPECT_FALSE(project.Operate([&](TCvsObject& cvs) {
        cvs.CvsExecutable = support::FakeClient() + " exit 1 ";
        cvs.SetCVSROOT("a root");
        cvs.Set_ProjectRoot(Folder / "new\\other\\deep");
        return cvs.PullProjectAccepted();
    }));
    EXPECT_FALSE(DirectoryExists(Folder / "new\\other"));
    EXPECT_TRUE(DirectoryExists(Folder / "new\\deep"));
}

TEST_F(Projects, GetOldRevisionsAndTheNamesOfModules) {
    const std::string root = "\"" + (Folder / "repository") + "\"";
    const auto client = [&](const std::string& arguments, const std::string& folder) {
        const auto result = support::RunProcess("cvs -Q -d " + root + " " + arguments, folder);
        EXPECT_EQ(result.ExitCode, 0u) << result.Output;
    };
    client("init", Folder.Path());
    WriteBytes(Folder / "seed\\sub\\old.c", "first\r\n\r\nlast\r\n");
    client("import -m m module V R", Folder / "seed");
    client("checkout module", Folder.Path());
    const std::string file = Folder / "module\\sub\\old.c";
    WriteBytes(file, "second\r\n");
    client("commit -m m", Folder / "module");
    TProject project(Host, Settings, Folder / "module");
    TQueries queries(project, Settings);
    for (const char* revision : {"1.1", "R"}) {
        const auto text = queries.File(file, TVersion::Of(revision));
        EXPECT_TRUE(text && text->Text == "first\r\n\r\nlast\r\n") << revision << Host.Told;
    }
    EXPECT_EQ(queries.File(file, TVersion::At(EncodeDate(2036, 1, 1)))->Text, "second\r\n");
    EXPECT_FALSE(queries.File(file, TVersion::Of("no_such")));
    ExpectTold("no such tag");
    EXPECT_FALSE(queries.File(file, TVersion::Of("-A")));
    EXPECT_EQ(ReadBytes(file), "second\r\n");
    EXPECT_EQ(project.Modules(), std::vector<std::string>{"module"});
    // To the client a difference is a failure; to the user it is none.
    project.Operate(&TCvsObject::Diff);
    EXPECT_EQ(project.Outcome(), "There is no difference") << Host.Told;
    WriteBytes(file, "third and longer\r\n");
    project.Operate(&TCvsObject::Diff);
    EXPECT_EQ(project.Outcome(), "There are differences");
}

}  // namespace
