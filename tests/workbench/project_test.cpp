// Projects in the host's window: what is stored, what reaches whom, how it closes.

#include <gtest/gtest.h>

#include "core/CvsExecute.h"
#include "core/Cvsroot.h"
#include "core/Progress_frm.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/registry.h"
#include "framework/base/text.h"
#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/status_bar.h"
#include "framework/ui/timer.h"
#include "framework/ui/tool_bar.h"
#include "support/WaitUntil.h"
#include "tests/support/Tidy.h"
#include "tests/workbench/Projects.h"

namespace {

using namespace tests;

// Before the host looks at what it inherited.
const bool Inherits = ::SetEnvironmentVariableA("CVS_RSH", "inherited shell") != FALSE;

BOOL CALLBACK FindDocument(HWND window, LPARAM found) {
    if (auto* form = dynamic_cast<TDocumentForm*>(TControl::FromHandle(window)))
        *reinterpret_cast<TDocumentForm**>(found) = form;
    return TRUE;
}

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
    cvs.Set_CVS_RSH("C:\\my ssh.exe");
    // An operation has options of its own; the project's outlive it.
    EXPECT_TRUE(Run("exit 0"));
    EXPECT_FALSE(cvs.PruneEmptyDirs);

    TProject again(Form, Settings, Folder / "one");
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
    TProject third(Form, Settings, Folder / "one");
    EXPECT_EQ(third.Cvs().SpecialPort + third.Cvs().UserName, "me");
    EXPECT_EQ(again.Cvs().Password, "secret");
}

TEST_F(Projects, GoOnWithWhatCannotBeStoredOrRead) {
    TSettings unusable("Software\\" + std::string(300, 'x'));
    TProject project(Form, unusable, Folder / "one");
    project.Cvs().Password = "secret";
    project.Cvs().SetCVSROOT(":pserver:me:secret@host:/repo");
    project.Save();
    EXPECT_NE(Told().find("cannot be opened for writing"), std::string::npos) << Told();

    Form.OpenProject(Folder / "one");
    Select("a.c");
    Pick(Form, "O&pen");
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
    Pick(Form, "&Unedit");
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

TEST_F(Projects, NameBinaryFilesAndLetTheUserTakeThemForTexts) {
    support::WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    support::WriteBytes(Folder / "one\\pic.png", "p");
    support::WriteBytes(Folder / "one\\zero.txt", std::string(2, '\0'));
    support::WriteBytes(Folder / "one\\b.special", "s");
    ExpectForm("Options", [](TForm& form) {
        ExpectTidy(form);
        EXPECT_NE(TextOf(form, "Input8").find("png"), std::string::npos);
        support::Type(form, "Input8", "png special");
        support::Press(form, "BitBtn1");
    });
    Form.OpenProject(Folder / "one");
    Pick(Form, "Optio&ns...");
    Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " arguments";
    const auto add = [&](const char* button) {
        ExpectForm("Binary files", [button](TForm& form) {
            ExpectTidy(form);
            auto& tree = support::Part<TTreeView>(form, "TreeView1");
            std::string names;
            for (const auto& node : tree.Root().Children())
                names += node->Text() + ' ';
            EXPECT_EQ(names, "b.special pic.png zero.txt ");
            tree.OnStateClick(*tree.Root().Children().front());
            support::Press(form, button);
        });
        support::Part<TListView>(Form, "List").SelectAll();
        const std::size_t before = Told().size();
        Pick(Form, "&Add");
        return Told().substr(before);
    };
    EXPECT_EQ(add("BitBtn2").find("[add]"), std::string::npos) << "the user gave up";
    const std::string told = add("BitBtn1");
    EXPECT_NE(told.find("2 files are kept as binary: pic.png, zero.txt\r\n"), std::string::npos)
        << told;
    EXPECT_NE(told.find("[add]\r\n[-m]\r\n[ no messages]\r\n[a.c]\r\n[b.special]\r\n"),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("[ no messages]\r\n[-kb]\r\n[pic.png]\r\n[zero.txt]\r\n"),
              std::string::npos)
        << told;
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
    ASSERT_TRUE(Inherits);
    for (const char* name : {"one", "two"}) {
        Form.OpenProject(Folder / name);
        Form.Project()->Cvs().SetCVSROOT(std::string("root of ") + name);
        Form.Project()->Cvs().Set_CVSIGNORE(std::string("ignored by ") + name);
    }
    const auto surroundings = [this](const std::string& name) {
        Form.OpenProject(Folder / name);
        EXPECT_TRUE(Run("surroundings CVSROOT CVSIGNORE CVS_RSH"));
        const std::string told = Told(), mark = "CVSROOT=";
        return told.substr(told.rfind(mark) + mark.size(), told.rfind(';') - told.rfind(mark) - 8);
    };
    for (const std::string name : {"one", "two", "one"})
        EXPECT_EQ(surroundings(name),
                  "root of " + name + ";CVSIGNORE=ignored by " + name + ";CVS_RSH=inherited shell");
    ExpectForm("Options", [](TForm& form) {
        EXPECT_EQ(TextOf(form, "Input7"), "inherited shell");
        support::Type(form, "Input7", "C:\\my ssh.exe");
        support::Press(form, "BitBtn1");
    });
    Pick(Form, "Optio&ns...");
    EXPECT_TRUE(surroundings("one").ends_with(";CVS_RSH=C:\\my ssh.exe"));
    EXPECT_TRUE(surroundings("two").ends_with(";CVS_RSH=inherited shell"));
}

TEST_F(Projects, OfferOnlyWhatTheRecordsLeaveOpen) {
    support::WriteBytes(Folder / "one\\CVS\\Root", ":pserver:me@host:/repo\r\n");
    support::WriteBytes(Folder / "one\\CVS\\Repository", "the module\r\n");
    Form.OpenProject(Folder / "one");
    ExpectForm("Preferences", [](TForm& form) {
        ExpectTidy(form);
        EXPECT_NE(TextOf(form, "Input2").find(":pserver:me@host:/repo"), std::string::npos);
        EXPECT_NE(TextOf(form, "Input3").find("the module"), std::string::npos);
        support::Type(form, "Input4", "*.o");
        support::Check(form, "Input5", false);
        support::Press(form, "BitBtn1");
    });
    Pick(Form, "P&references...");
    TProject again(Form, Settings, Folder / "one");
    EXPECT_EQ(again.Cvs().CVSIGNORE(), "*.o");
    EXPECT_FALSE(again.Cvs().PruneEmptyDirs);
    // Another dialog's connection is not that of this working copy.
    EXPECT_FALSE(Operate([](TCvsObject& cvs) {
        cvs.ConnectionType = tandrel::cnLocal;
        cvs.UserName = "you";
        cvs.SetCVSROOT("C:\\elsewhere");
        return false;
    }));
    EXPECT_EQ(Form.Project()->Cvs().CVSROOT(), ":pserver:me@host:/repo");
    support::WriteBytes(Folder / "one\\CVS\\Root", ":pserver:host:/repo\r\n");
    Pick(Form, "&Refresh");
    EXPECT_EQ(Form.Project()->Cvs().CVSROOT(), ":pserver:host:/repo");
}

TEST_F(Projects, ShowWhatIsMissingAndCanGetItBack) {
    support::WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    support::WriteBytes(Folder / "one\\CVS\\Entries",
                        "/gone.c/1.2/Fri Mar  5 14:07:09 2004//\r\nD/sub////\r\n"
                        "/a.c/1.1/dummy//\r\n/taken.c/-1.3/dummy//\r\n");
    Form.OpenProject(Folder / "one");
    Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " arguments";
    auto& list = support::Part<TListView>(Form, "List");
    std::string rows;
    for (int i = 0; i < list.Count(); ++i)
        rows += list.Row(i).Caption + '=' + list.Row(i).SubItems[0] + ' ' +
                list.Row(i).SubItems[1] + ';';
    EXPECT_EQ(rows, "a.c=Changed 1.1;gone.c=Missing 1.2;taken.c=Removed -1.3;");
    const auto loads = [this] {
        const std::string told = Told(), message = "does not have";
        int count = 0;
        for (std::size_t at = 0; (at = told.find(message, at)) != std::string::npos; ++at)
            ++count;
        return count;
    };
    EXPECT_EQ(loads(), 1) << Told();
    EXPECT_NE(Told().find("does not have 2 of its entries: gone.c, sub"), std::string::npos)
        << Told();
    Select("gone.c");
    ExpectForm("CVS update", [](TForm& form) { Click(form, "BitBtn1"); });
    Pick(Form, "&Update");
    EXPECT_NE(Told().find("[update]\r\n[-P]\r\n[-d]\r\n[gone.c]\r\n"), std::string::npos) << Told();
    EXPECT_EQ(loads(), 2) << "the files are read once for an operation";
    Select("gone.c");
    Pick(Form, "&Remove");
    EXPECT_NE(Told().find("[remove]\r\n[gone.c]\r\n"), std::string::npos) << Told();
    EXPECT_EQ(loads(), 3);
}

TEST_F(Projects, ArePlacedAlsoWhenCalledLikeTheirParent) {
    const std::string folder = Folder / "projects\\proj", repository = Folder / "repository";
    support::WriteBytes(folder + "\\a.c", "a");
    EXPECT_EQ(
        support::RunProcess("cvs -Q -d \":local:" + repository + "\" init", Folder.Path()).ExitCode,
        0u);
    Form.OpenProject(folder);
    ExpectForm("Place project into CVS-step 1", [&](TForm& form) {
        support::Press(form, "BitBtn4");
        support::Type(support::StepOf(form), "Edit3", repository);
        ASSERT_TRUE(
            support::WaitUntil([&] { return support::Part<TButton>(form, "BitBtn4").Enabled(); }));
        support::Press(form, "BitBtn4");
        support::Press(form, "BitBtn4");
        support::Press(form, "BitBtn1");
    });
    ExpectForm("Tags of the project", [](TForm& form) { support::Press(form, "BitBtn1"); });
    ExpectForm("CVS PlaceProject", [](TForm& form) {
        EXPECT_TRUE(TextOf(form, "Label1").ends_with("successfuly completed"));
        Click(form, "BitBtn1");
    });
    Pick(Form, "&Place project...");
    EXPECT_EQ(support::ReadBytes(folder + "\\CVS\\Repository"), "proj\r\n") << Told();
    EXPECT_EQ(support::ReadBytes(folder + "\\a.c"), "a");
    EXPECT_EQ(Asked, "");
    EXPECT_TRUE(Operate(&TCvsObject::Status)) << "what was placed is known" << Told();
}

TEST_F(Projects, AskForWhatTheClientWants) {
    support::WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.CvsExecutable = support::FakeClient();
    for (const auto& [item, caption, inputs, command] :
         {std::tuple{"&Export...", "Export", std::vector<std::string>{"REL 1"},
                     " export -r \"REL 1\" one"},
          {"Changes of the m&odule...", "Changes of the module", {"A", ""}, " rdiff -r A one"},
          {"Changes of the m&odule...",
           "Changes of the module",
           {"A", "B"},
           " rdiff -r A -r B one"}}) {
        ExpectForm(caption, [&inputs](TForm& form) {
            for (std::size_t i = 0; i < inputs.size(); ++i)
                support::Type(form, "Input" + std::to_string(i + 1), inputs[i]);
            support::Press(form, "BitBtn1");
        });
        Pick(Form, item);
        EXPECT_EQ(cvs.CommandLine, command);
    }
}

TEST_F(Projects, AreNotMistakenForTheNeighbourCalledLikeTheirModule) {
    for (const char* folder : {"one", "two"}) {
        support::WriteBytes(Folder / (std::string(folder) + "\\CVS\\Root"),
                            std::string(folder) == "one" ? "C:\\none\r\n" : "strange\r\n");
        support::WriteBytes(Folder / (std::string(folder) + "\\CVS\\Repository"), "two\r\n");
    }
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.CvsExecutable = support::FakeClient() + " exit 0";
    ExpectForm("CVS release", [](TForm& form) { support::Press(form, "BitBtn1"); });
    Pick(Form, "&Release...");
    EXPECT_EQ(cvs.CommandLine, " release one");
    ExpectForm("CVS CheckOut", [](TForm& form) { Click(form, "BitBtn1"); });
    Pick(Form, "Check &out");
    EXPECT_EQ(cvs.CommandLine, " checkout -P -d one two");
    EXPECT_TRUE(SameText(cvs.WorkingDirectory(), Folder / "one"));
    // What is done in one is no word for the other.
    for (const auto& operation : {&TCvsObject::Status, &TCvsObject::Log})
        EXPECT_TRUE(Operate(operation));
    Form.Busily([&](TProject& project) {
        project.Operate([&](TCvsObject& obj) {
            obj.Set_WorkingDirectory(Folder / "two");
            return true;
        });
    });
    EXPECT_EQ(Settings.Read(Settings.ProjectKey(Folder / "two"), "TRUSTED", "no"), "no");
}

TEST_F(Projects, LeaveNothingOfAnOperationToTheNext) {
    Form.OpenProject(Folder / "one");
    EXPECT_FALSE(Operate([](TCvsObject& cvs) {
        cvs.DeleteLocalFiles = cvs.TagDelete = cvs.ExportInsteadOfCheckout = true;
        cvs.AnswerPrompts = true;
        Abort();
        return true;
    }));
    EXPECT_TRUE(Operate([](TCvsObject& cvs) {
        EXPECT_FALSE(cvs.DeleteLocalFiles || cvs.TagDelete || cvs.ExportInsteadOfCheckout);
        EXPECT_FALSE(cvs.AnswerPrompts);
        return true;
    }));
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
    // One that fails leaves nothing behind, but for what was there before.
    tests::ExpectForm("CVS Pull Project ", [](TForm& form) { tests::Click(form, "BitBtn1"); });
    EXPECT_FALSE(Operate([&](TCvsObject& cvs) {
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
    support::WriteBytes(Folder / "seed\\sub\\old.c", "first\r\n\r\nlast\r\n");
    client("import -m m module V R", Folder / "seed");
    client("checkout module", Folder.Path());
    const std::string file = Folder / "module\\sub\\old.c";
    support::WriteBytes(file, "second\r\n");
    client("commit -m m", Folder / "module");
    Form.OpenProject(Folder / "module");
    Answer(true);
    std::string bytes;
    EXPECT_TRUE(Form.Project()->Fetch(file, "1.1", bytes)) << Told();
    EXPECT_EQ(bytes, "first\r\n\r\nlast\r\n");
    EXPECT_TRUE(Form.Project()->Fetch(file, "R", bytes));
    EXPECT_EQ(bytes, "first\r\n\r\nlast\r\n");
    EXPECT_FALSE(Form.Project()->Fetch(file, "no_such", bytes));
    EXPECT_NE(Told().find("no such tag"), std::string::npos) << Told();
    EXPECT_FALSE(Form.Project()->Fetch(file, "-A", bytes));
    EXPECT_EQ(support::ReadBytes(file), "second\r\n");
    EXPECT_EQ(Form.Project()->Modules(), std::vector<std::string>{"module"});
    // To the client a difference is a failure; to the user it is none.
    auto& status = support::Part<TStatusBar>(Form, "Status");
    Operate([](TCvsObject& cvs) { return cvs.Diff(); });
    EXPECT_EQ(status.PartText(1), "There is no difference") << Told();
    support::WriteBytes(file, "third and longer\r\n");
    Operate([](TCvsObject& cvs) { return cvs.Diff(); });
    EXPECT_EQ(status.PartText(1), "There are differences");
}

TEST_F(Projects, WorkOnSeveralFilesAndFoldersInAsManyCommandsAsItTakes) {
    const std::string records = "\\CVS\\Entries", name(100, 'n');
    support::WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    support::WriteBytes(Folder / "one\\sub\\CVS\\Root", "C:\\none\r\n");
    std::string entries;
    for (int i = 0; i < 300; ++i) {
        support::WriteBytes(Folder / "one\\sub" + ("\\" + name + std::to_string(i)), "x");
        entries += "/" + name + std::to_string(i) + "/1.1/dummy//\r\n";
    }
    support::WriteBytes(Folder / "one\\sub" + records, entries);
    support::WriteBytes(Folder / "one" + records, "/a.c/1.1/dummy//\r\nD/sub////\r\n");
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.CvsExecutable = support::FakeClient() + " arguments";
    auto& list = support::Part<TListView>(Form, "List");
    list.SelectAll();
    // Of what it passes to the client, a folder is named by itself.
    Pick(Form, "&Status");
    EXPECT_NE(Told().find("[status]\r\n[sub]\r\n[a.c]\r\n"), std::string::npos) << Told();
    // To be removed are files: those in it, in parts, each of them once.
    Answer(true);
    const std::size_t before = Told().size();
    Pick(Form, "&Remove");
    const std::string told = Told().substr(before);
    std::size_t commands = 0, files = 0;
    for (std::size_t at = 0; (at = told.find("[remove]", at)) != std::string::npos; ++at)
        ++commands;
    for (std::size_t at = 0; (at = told.find("[sub\\" + name, at)) != std::string::npos; ++at)
        ++files;
    EXPECT_EQ(commands, 2u);
    EXPECT_EQ(files, 300u);
    EXPECT_NE(told.find("[a.c]"), std::string::npos);
    EXPECT_EQ(list.SelectedIndices().size(), 2u) << "what was chosen stays so";
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
    // Also one that has started another, which holds the pipe; and a second time.
    for (const char* client : {"sleep 600000", "with-grandchild 600000"}) {
        EXPECT_FALSE(Run(client));
        EXPECT_LT(::GetTickCount64() - start, 120000u);
        EXPECT_NE(Told().find("did not answer"), std::string::npos);
    }
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

TEST_F(Projects, KeepWhatIsNotSavedWhenTheSessionEnds) {
    Form.OpenProject(Folder / "one");
    EXPECT_TRUE(::SendMessageW(Form.Handle(), WM_QUERYENDSESSION, 0, 0))
        << "nothing stands against it";
    Select("a.c");
    Pick(Form, "O&pen");
    TDocumentForm* document = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), FindDocument, reinterpret_cast<LPARAM>(&document));
    ASSERT_TRUE(document);
    support::Part<TMemo>(*document, "Memo1").SetText("typed");
    EXPECT_FALSE(::SendMessageW(Form.Handle(), WM_QUERYENDSESSION, 0, 0));
    // The user goes on all the same.
    Form.Project()->Cvs().PruneEmptyDirs = false;
    ::SendMessageW(Form.Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(support::ReadBytes(Folder / "data\\Recovered\\1 a.c"), "typed");
    EXPECT_EQ(Settings.Read(Settings.ProjectKey(Folder / "one"), "PRUNE", ""), "0");
    TMainForm next(Settings, Packages);
    EXPECT_NE(support::Part<TRichEdit>(next, "Output").Text().find("Recovered"), std::string::npos);
    Answer(false);
    document->Close();
}

TEST_F(Projects, AskToSaveBeforeEachCommandOnce) {
    support::WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    Form.OpenProject(Folder / "one");
    Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " exit 0";
    Select("a.c");
    Pick(Form, "O&pen");
    TDocumentForm* document = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), FindDocument, reinterpret_cast<LPARAM>(&document));
    ASSERT_TRUE(document);
    for (const bool answer : {false, true}) {
        support::Part<TMemo>(*document, "Memo1").SetText("typed");
        for (const char* caption : {"Update &now", "&Commit..."}) {
            Asked.clear();
            Answer(answer);
            if (*caption == 'U')
                ExpectForm("CVS update", [](TForm& form) { Click(form, "BitBtn1"); });
            else
                ExpectForm("CVS commit-step 1", [](TForm& form) { PressKey(form, VK_ESCAPE); });
            Pick(Form, caption);
            EXPECT_EQ(Asked.empty(), answer && *caption == '&') << Asked;
            EXPECT_EQ(Asked.find("Save"), Asked.rfind("Save")) << Asked;
        }
    }
    EXPECT_EQ(support::ReadBytes(Folder / "one\\a.c"), "typed");
    // A file that is moved takes its document along.
    ExpectForm("Move a.c", [](TForm& form) {
        support::Type(form, "Input1", "b.c");
        support::Press(form, "BitBtn1");
    });
    Select("a.c");
    Pick(Form, "&Move...");
    EXPECT_EQ(document->Path(), Folder / "one\\b.c");
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
