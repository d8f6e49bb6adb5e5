// Projects in the host's window: what is stored, what reaches whom, how it closes.

#include <gtest/gtest.h>

#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/registry.h"
#include "framework/base/text.h"
#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/tool_bar.h"
#include "hosting/Trust.h"
#include "support/WaitUntil.h"
#include "tests/support/Tidy.h"
#include "tests/workbench/Projects.h"

namespace {

using namespace tests;
using support::ReadBytes;
using support::WriteBytes;

TEST_F(Projects, GoOnWithWhatCannotBeRead) {
    Form.OpenProject(Folder / "one");
    Select("a.c");
    Pick(Form, "O&pen");
    const FileHandle held(::CreateFileA((Folder / "one\\a.c").c_str(), GENERIC_READ, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held);
    Form.Operate([](TCvsObject&) { return true; }, false);
    ExpectTold("a.c: ");
    EXPECT_GT(support::Part<TListView>(Form, "List").Count(), 0) << "the files still show";
}

TEST_F(Projects, KeepWhatIsIgnoredAlready) {
    // In place of the editor comes a program that ends at once. The present folder comes before
    // the system's.
    const std::string editor = Folder / "notepad.exe";
    char before[MAX_PATH];
    ::GetCurrentDirectoryA(MAX_PATH, before);
    WriteBytes(editor, ReadBytes(support::ProgramBeside("fake_client.exe")));
    WriteBytes(Folder / "one\\.cvsignore", "*.obj\r\nold stuff\r\n.cvsignore\r\n");
    WriteBytes(Folder / "one\\sub\\x.c", "x");
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
    EXPECT_EQ(ReadBytes(Folder / "one\\sub\\.cvsignore"), "x.c\r\n.cvsignore\r\n");
    EXPECT_EQ(ReadBytes(Folder / "one\\.cvsignore"), "*.obj\r\nold stuff\r\na.c\r\n.cvsignore\r\n");
    EXPECT_TRUE(SameText(Form.Project()->Cvs().WorkingDirectory(), Folder / "one"));
    EXPECT_TRUE(support::WaitUntil([&] { return ::DeleteFileA(editor.c_str()) != FALSE; }));
}

TEST_F(Projects, WorkOnWhatIsSelected) {
    WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    WriteBytes(Folder / "one\\CVS\\Entries", "/gone.c/1.2/dummy//\r\n");
    WriteBytes(Folder / "one\\gone.c", "gone soon");
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.CvsExecutable = support::FakeClient();
    // Without the name it would be about the whole project.
    Select("gone.c");
    ::DeleteFileA((Folder / "one\\gone.c").c_str());
    for (const char* command : {"&Unedit", "&Update", "&Remove"}) {
        if (command[1] == 'U' && command[2] == 'p')
            ExpectForm("CVS update", [](TForm& form) { Click(form, "BitBtn1"); });
        Pick(Form, command);
        EXPECT_TRUE(cvs.CommandLine.ends_with(" gone.c")) << cvs.CommandLine;
        Select("gone.c");
    }
    // A bare name is one in the file's folder.
    Select("a.c");
    tests::ExpectForm("Move a.c", [](TForm& form) {
        support::Type(form, "Input1", "b.c");
        support::Press(form, "BitBtn1");
    });
    Pick(Form, "&Move...");
    EXPECT_EQ(ReadBytes(Folder / "one\\b.c"), "a");
}

TEST_F(Projects, NameBinaryFilesAndLetTheUserTakeThemForTexts) {
    WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    WriteBytes(Folder / "one\\pic.png", "p");
    WriteBytes(Folder / "one\\zero.txt", std::string(2, '\0'));
    WriteBytes(Folder / "one\\b.special", "s");
    ExpectForm("Options", [](TForm& form) {
        ExpectTidy(form);
        EXPECT_EQ(TextOf(form, "Input7"), "first shell");
        support::Type(form, "Input7", "C:\\my ssh.exe");
        ExpectIn(TextOf(form, "Input8"), "png");
        support::Type(form, "Input8", "png special");
        support::Press(form, "BitBtn1");
    });
    Form.OpenProject(Folder / "one");
    Form.Project()->Cvs().Set_CVS_RSH("first shell");
    Pick(Form, "Optio&ns...");
    EXPECT_EQ(Form.Project()->Cvs().CVS_RSH(), "C:\\my ssh.exe");
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
    ExpectIn(told, "2 files are kept as binary: pic.png, zero.txt\r\n");
    ExpectIn(told, "[add]\r\n[-m]\r\n[ no messages]\r\n[a.c]\r\n[b.special]\r\n");
    ExpectIn(told, "[ no messages]\r\n[-kb]\r\n[pic.png]\r\n[zero.txt]\r\n");
}

TEST_F(Projects, OfferTheToolsThatAreKept) {
    const auto configure = [&](const std::string& name, const std::string& button) {
        tests::ExpectForm("User Tools", [&](TForm& form) {
            support::Part<TToolButton>(form, "ToolButton1").Click();
            ::SetWindowTextA(::GetFocus(), name.c_str());
            support::Type(form, "Edit1", support::ProgramBeside("fake_client.exe"));
            support::Type(form, "Edit2", "arguments $(FileName)");
            support::Check(form, "CheckBox1");
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
    Form.OpenProject(Folder / "one");
    Select("a.c");
    Pick(Form, "kept");
    ExpectTold("\\one\\a.c]");
}

TEST_F(Projects, OfferOnlyWhatTheRecordsLeaveOpen) {
    Record("one", ":pserver:me@host:/repo", "", "the module");
    Form.OpenProject(Folder / "one");
    ExpectForm("Preferences", [](TForm& form) {
        ExpectTidy(form);
        ExpectIn(TextOf(form, "Input2"), ":pserver:me@host:/repo");
        ExpectIn(TextOf(form, "Input3"), "the module");
        support::Type(form, "Input4", "*.o");
        support::Check(form, "Input5", false);
        support::Press(form, "BitBtn1");
    });
    Pick(Form, "P&references...");
    TProject again(Form, Settings, Folder / "one");
    EXPECT_EQ(again.Cvs().CVSIGNORE(), "*.o");
    EXPECT_FALSE(again.Cvs().PruneEmptyDirs);
    WriteBytes(Folder / "one\\CVS\\Root", ":pserver:host:/repo\r\n");
    Pick(Form, "&Refresh");
    EXPECT_EQ(Form.Project()->Cvs().CVSROOT(), ":pserver:host:/repo");
}

TEST_F(Projects, SayThatThereIsNoClientAndAskForOne) {
    char path[32768];
    ::GetEnvironmentVariableA("PATH", path, sizeof path);
    ::SetEnvironmentVariableA("PATH", "C:\\windows");
    Answer(false);
    Form.OpenProject(Folder / "one");
    EXPECT_FALSE(Operate([](TCvsObject&) { return true; }));
    ExpectTold("looked for in C:\\windows");
    const std::string chosen = support::ProgramBeside("fake_client.exe");
    Answer(true);
    DialogFunctions().OpenFile = [&](const std::string&, std::string& file) {
        file = chosen;
        return true;
    };
    EXPECT_TRUE(Operate([](TCvsObject&) { return true; }));
    TProject another(Form, Settings, Folder / "two");
    EXPECT_EQ(another.Cvs().CvsExecutable, "\"" + chosen + "\"") << "it is stored";
    ::SetEnvironmentVariableA("PATH", path);
}

TEST_F(Projects, DeleteNoFolderThatIsNoModule) {
    WriteBytes(Folder / "victim\\documents\\letter.txt", "mine");
    WriteBytes(Folder / "victim\\CVSROOT\\modules,v", "");
    Answer(true);
    const auto takeOut = [&] {
        Record("one", Folder / "victim", "", "documents");
        Form.OpenProject(Folder / "one");
        Form.Project()->Options.RemoveFromRepository = true;
        ExpectForm("CVS ClearProjectData", [](TForm& form) { Click(form, "BitBtn1"); });
        Pick(Form, "&Take out of version control");
        EXPECT_FALSE(Form.Project()->Options.RemoveFromRepository) << "for one time only";
        Pick(Form, "&Close project");
    };
    takeOut();
    EXPECT_TRUE(FileExists(Folder / "victim\\documents\\letter.txt"));
    EXPECT_EQ(Asked.find("documents"), std::string::npos) << Asked;
    // One that is a module.
    ::DeleteFileA((Folder / "victim\\documents\\letter.txt").c_str());
    WriteBytes(Folder / "victim\\documents\\a.c,v", "archive");
    takeOut();
    EXPECT_FALSE(DirectoryExists(Folder / "victim\\documents"));
    ExpectIn(Asked, Folder / "victim\\documents");
    for (const char* module : {"", ".", "..", "..\\x", "CVSROOT", "a/../..", "C:\\x"})
        EXPECT_EQ(ModuleFolder(Folder / "victim", module), "") << module;
}

TEST_F(Projects, AskForWhatTheClientWants) {
    WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
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
        ExpectForm(caption, [&inputs = inputs](TForm& form) {
            for (std::size_t i = 0; i < inputs.size(); ++i)
                support::Type(form, "Input" + std::to_string(i + 1), inputs[i]);
            support::Press(form, "BitBtn1");
        });
        Pick(Form, item);
        EXPECT_EQ(cvs.CommandLine, command);
    }
}

TEST_F(Projects, AreNotMistakenForTheNeighbourCalledLikeTheirModule) {
    Record("one", "C:\\none", "", "two");
    Record("two", "strange", "", "two");
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

TEST_F(Projects, WorkOnSeveralFilesAndFoldersInAsManyCommandsAsItTakes) {
    const std::string records = "\\CVS\\Entries", name(100, 'n');
    WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    WriteBytes(Folder / "one\\sub\\CVS\\Root", "C:\\none\r\n");
    std::string entries;
    for (int i = 0; i < 300; ++i) {
        WriteBytes(Folder / "one\\sub" + ("\\" + name + std::to_string(i)), "x");
        entries += "/" + name + std::to_string(i) + "/1.1/dummy//\r\n";
    }
    WriteBytes(Folder / "one\\sub" + records, entries);
    WriteBytes(Folder / "one" + records, "/a.c/1.1/dummy//\r\nD/sub////\r\n");
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.CvsExecutable = support::FakeClient() + " arguments";
    auto& list = support::Part<TListView>(Form, "List");
    list.SelectAll();
    // Of what it passes to the client, a folder is named by itself.
    Pick(Form, "&Status");
    ExpectTold("[status]\r\n[sub]\r\n[a.c]\r\n");
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
    ExpectIn(told, "[a.c]");
    EXPECT_EQ(list.SelectedIndices().size(), 2u) << "what was chosen stays so";
}

TEST_F(Projects, KeepWhatIsNotSavedWhenTheSessionEnds) {
    Form.OpenProject(Folder / "one");
    EXPECT_TRUE(::SendMessageW(Form.Handle(), WM_QUERYENDSESSION, 0, 0))
        << "nothing stands against it";
    Select("a.c");
    Pick(Form, "O&pen");
    const auto open = support::OpenForms<TDocumentForm>();
    ASSERT_EQ(open.size(), 1u);
    TDocumentForm* const document = open.front();
    support::Part<TMemo>(*document, "Memo1").SetText("typed");
    EXPECT_FALSE(::SendMessageW(Form.Handle(), WM_QUERYENDSESSION, 0, 0));
    // The user goes on all the same.
    Form.Project()->Cvs().PruneEmptyDirs = false;
    ::SendMessageW(Form.Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(ReadBytes(Folder / "data\\Recovered\\1 a.c"), "typed");
    EXPECT_EQ(Settings.Read(Settings.ProjectKey(Folder / "one"), "PRUNE", ""), "0");
    TMainForm next(Settings, Packages);
    ExpectIn(TextOf(next, "Output"), "Recovered");
    Answer(false);
    document->Close();
}

TEST_F(Projects, AskToSaveBeforeEachCommandOnce) {
    WriteBytes(Folder / "one\\CVS\\Root", "C:\\none\r\n");
    Form.OpenProject(Folder / "one");
    Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " exit 0";
    Select("a.c");
    Pick(Form, "O&pen");
    const auto open = support::OpenForms<TDocumentForm>();
    ASSERT_EQ(open.size(), 1u);
    TDocumentForm* const document = open.front();
    Settings.SetCommitsByPackage(true);
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
    EXPECT_EQ(ReadBytes(Folder / "one\\a.c"), "typed");
    // What is to be committed is looked at when it is on disk.
    Settings.SetCommitsByPackage(false);
    support::Part<TMemo>(*document, "Memo1").SetText("typed again");
    Pick(Form, "&Commit...");
    EXPECT_EQ(ReadBytes(Folder / "one\\a.c"), "typed again");
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
    ExpectTold("working");
    Form.SetVisible(false);
}

}  // namespace
