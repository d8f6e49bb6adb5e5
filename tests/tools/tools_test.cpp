// The tools: macros, folders, checks, the menu and what a run does.

#include "framework/base/files.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Japanese.h"
#include "tests/tools/ToolsFixture.h"
#include "tools/tools_frm.h"

namespace {

using framework::TObject;
using tandrel::TCommand;

class UserTools : public tests::TToolsTest {
protected:
    TCommand& AddTool(const std::string& arguments) {
        TCommand& tool = Tools.Commands.AddCommand("a tool");
        tool.FCommand = support::FakeClient();
        tool.FArguments = arguments;
        tool.FInitDir = "C:\\";
        return tool;
    }

    /// A variable of this process for the time of a test.
    struct TPathVariable {
        explicit TPathVariable(const std::string& value) {
            char before[32768];
            Before.assign(before, ::GetEnvironmentVariableA("Path", before, sizeof before));
            ::SetEnvironmentVariableA("Path", value.c_str());
        }
        ~TPathVariable() { ::SetEnvironmentVariableA("Path", Before.c_str()); }
        std::string Before;
    };
};

TEST_F(UserTools, ReplaceMacrosOnce) {
    Tools.SetArgValue("File", "C:\\a b.txt");
    Tools.SetArgValue("Odd", "$(File) %s $");
    Tools.SetArgValue("x", "short");
    Tools.Arguments.AddArg("again", "File", "not the first");
    Tools.SetArgValue("File", "f");
    EXPECT_EQ(Tools.Arguments.Count(), 4);
    EXPECT_EQ(Tools.Arguments.GetItem(2).FCaption, "x");
    TCommand& tool = AddTool({});
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"no) macro (", "no) macro ("},
        {"-x $(File) -y", "-x f -y"},
        {"-x $(Unknown) -y", "-x  -y"},
        {"-x $(file)", "-x "},
        {"a $(File", "a "},
        {"$(File)$(File)", "ff"},
        {"$(Odd)", "$(File) %s $"},
        {"$[x)!", "short!"},
        {"$)(x) $y)", "(x) "},
        {"$(a$(x)", ""},
        {"((x)) $", "((x)) "},
    };
    for (const auto& [text, expected] : cases) {
        tool.FArguments = text;
        EXPECT_EQ(tool.ReplaseArgument(), expected) << text;
    }
}

TEST_F(UserTools, ChooseTheFolder) {
    TCommand& tool = AddTool({});
    tool.FCommand = "C:\\T\\x.exe";
    char folder[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof folder, folder);
    const std::string current =
        std::string(folder) + (std::string(folder).ends_with('\\') ? "" : "\\");
    const std::pair<const char*, std::string> cases[] = {
        {"", current},
        {"C:\\windows", "C:\\windows\\"},
        {"C:\\", "C:\\"},
        {"FileDir", "FileDir\\"},
        {"$(FileDir)", "C:\\T\\"},
        {"$(CurDir)", current},
        {"$(CurDir)$(FileDir)", current},
        {"$(ProjectDir)", current},
        {"$(Unknown)", current},
    };
    for (const auto& [text, expected] : cases) {
        tool.FInitDir = text;
        EXPECT_EQ(tool.GetInitDir(), expected) << text;
    }
    tool.FProjectDir = "C:\\project";
    tool.FInitDir = "$(ProjectDir) before FileDir and CurDir";
    EXPECT_EQ(tool.GetInitDir(), "C:\\project\\");
    const tests::Japanese letters;
    tool.FInitDir = "C:\\\x83\\";
    EXPECT_EQ(tool.GetInitDir(), "C:\\\x83\\\\") << "half a letter ends no folder";
}

TEST_F(UserTools, CheckTheirCommands) {
    const support::TTempFolder folder("tools");
    support::WriteBytes(folder / "a\\in-a.exe", "");
    support::WriteBytes(folder / "b\\in-b.exe", "");
    support::WriteBytes(folder / "b\\hidden.exe", "");
    support::WriteBytes(folder / "b\\system.exe", "");
    support::WriteBytes(folder / "b\\folder.exe\\x", "");
    ::SetFileAttributesA((folder / "b\\hidden.exe").c_str(), FILE_ATTRIBUTE_HIDDEN);
    ::SetFileAttributesA((folder / "b\\system.exe").c_str(), FILE_ATTRIBUTE_SYSTEM);
    TCommand& tool = AddTool({});
    tool.FName = "x";
    const auto check = [&](const std::string& command) {
        tool.FCommand = command;
        std::string message = "passed";
        const bool passed = tool.CheckedCommand(message);
        EXPECT_EQ(passed, message == "passed");
        return message;
    };
    const TPathVariable closed(";" + folder / "a" + ";;" + folder / "b" + "\\;");
    EXPECT_EQ(check(""), "Menu Item \"x\" must have command ");
    EXPECT_EQ(check(folder / "a\\in-a.exe"), "passed");
    for (const char* found : {"in-a.exe", "in-b.exe", "hidden.exe", "folder.exe"})
        EXPECT_EQ(check(found), "passed") << found;
    EXPECT_EQ(check("system.exe"), "Menu Item \"x\",system.exe is not exist");
    EXPECT_EQ(check("a\\in-a.exe"), "Menu Item \"x\",a\\in-a.exe is not exist");
    EXPECT_EQ(check(folder / "a"), "Menu Item \"x\"," + folder / "a" + " is not exist");

    const TPathVariable open(folder / "a" + ";" + folder / "b");
    EXPECT_EQ(check("in-a.exe"), "passed");
    EXPECT_EQ(check("in-b.exe"), "Menu Item \"x\",in-b.exe is not exist") << "nothing follows it";

    Tools.Commands.AddCommand("y").FDeleted = true;
    std::string all = "before";
    EXPECT_FALSE(Tools.Commands.CheckedCommand(all));
    EXPECT_EQ(all,
              "Menu Item \"x\",in-b.exe is not exist\n\r"
              "Menu Item \"y\" must have command \n\r");
    Tools.Commands.Delete();
    EXPECT_EQ(Tools.Commands.Count(), 1);
    tool.FCommand = "in-a.exe";
    EXPECT_TRUE(Tools.Commands.CheckedCommand(all));
}

TEST_F(UserTools, AreLoadedForTheMenu) {
    AddTool("exit 3");
    Tools.Commands.AddCommand("deleted").FDeleted = true;
    Tools.SaveToRegistry();
    Tools.Commands.Clear();
    Tools.GetMenuList(nullptr);
    EXPECT_TRUE(Tools.Commands.Empty());
    framework::TStringList list;
    list.Add("before");
    Tools.GetMenuList(&list);
    EXPECT_EQ(list.Text(), "before\r\na tool\r\ndeleted\r\n");
    Tools.Commands.GetItem(0).FName = "edited";
    Tools.GetMenuList(&list);
    EXPECT_EQ(list[3], "edited") << "loaded only once";
    Tools.Commands.Clear();
    Tools.ExecuteMenu(2);
    Tools.ExecuteMenu(-1);
    EXPECT_EQ(Tools.Commands.Count(), 2);
    EXPECT_EQ(Tools.FCurrent, nullptr);
    Tools.Commands.Clear();
    Tools.SaveToRegistry();
    EXPECT_EQ(tests::MessageOf([&] { Tools.ExecuteMenu(0); }), " no data  loaded");
}

TEST_F(UserTools, GiveTheirOutputToTheHost) {
    TCommand& tool = AddTool("exit 0");
    Tools.SetArgValue("Out", "out\x84");
    std::string told, kept;
    Tools.OnStartExecute = [&](TObject* sender) { told += sender == &tool ? "<" : "?"; };
    Tools.OnOutPutMessage = [&](TObject* sender, const std::string& text,
                                const std::string& title) {
        EXPECT_EQ(sender, &tool);
        told += title + ":" + text + ";";
    };
    Tools.OnFinishExecute = [&](TCommand& cmd, framework::TMemoryStream* stream) {
        EXPECT_EQ(&cmd, &tool);
        told += ">";
        kept = stream ? stream->Bytes() : "none";
    };
    Tools.ExecuteMenu(0);
    EXPECT_EQ(told, "<>") << "no output is asked for";
    EXPECT_EQ(kept, "none");
    told.clear();
    tool.FCaptureToolView = true;
    tool.FArguments = "say-both $(Out) err 0";
    Tools.ExecuteMenu(0);
    // What the tool got in the code page of windows comes back as if it was that of consoles.
    std::string converted = "out\x84";
    ::OemToCharA(converted.c_str(), converted.data());
    EXPECT_EQ(told, "<a tool:" + converted + ";>");
    told.clear();
    Tools.OnOutPutErrorMessage = Tools.OnOutPutMessage;
    Tools.OnOutPutMessage = nullptr;
    tool.FCaptureNewDoc = true;
    Tools.ExecuteMenu(0);
    EXPECT_EQ(told, "<a tool:err;>");
    EXPECT_EQ(kept.size(), 7u);
    EXPECT_NE(kept.find("out\x84"), std::string::npos) << "the bytes are kept as they came";
    told.clear();
    tool.FCaptureToolView = false;
    Tools.ExecuteMenu(0);
    EXPECT_EQ(told, "<>") << "it goes to the kept bytes alone";

    tool.FInitDir = "C:\\windows";
    tool.FArguments = "surroundings";
    Tools.ExecuteMenu(0);
    EXPECT_EQ(kept, "folder:C:\\windows;");
    tool.FCommand = "no-such-tool";
    told.clear();
    tool.FCaptureToolView = true;
    Tools.ExecuteMenu(0);
    EXPECT_TRUE(told.starts_with("<a tool:Could not create process ;a tool:")) << told;
}

TEST_F(UserTools, AskForArguments) {
    TCommand& tool = AddTool("arguments $(x) [$(y)]");
    tool.FPromptArgs = tool.FCaptureNewDoc = true;
    Tools.SetArgValue("x", "X");
    std::string kept = "not run";
    Tools.OnFinishExecute = [&](TCommand&, framework::TMemoryStream* stream) {
        kept = stream->Bytes();
    };
    const auto prompt = [](std::function<void(framework::TForm&)> answer) {
        tests::ExpectForm("Enter Arguments", std::move(answer));
    };
    prompt([](framework::TForm& form) {
        EXPECT_EQ(tests::TextOf(form, "Label2"), support::FakeClient());
        EXPECT_EQ(tests::TextOf(form, "Edit1"), "arguments X []");
        support::Type(form, "Edit1", "arguments $(x) %d");
        tests::Click(form, "BitBtn1");
    });
    Tools.ExecuteMenu(0);
    EXPECT_EQ(kept, "[$(x)]\r\n[%d]\r\n") << "what the user wrote is no template";
    prompt([](framework::TForm& form) { tests::Click(form, "BitBtn2"); });
    kept = "not run";
    Tools.ExecuteMenu(0);
    EXPECT_EQ(kept, "not run");
    EXPECT_TRUE(tool.FCancelled);
    // Nothing here takes that back.
    prompt([](framework::TForm& form) { tests::Click(form, "BitBtn1"); });
    Tools.ExecuteMenu(0);
    EXPECT_EQ(kept, "not run");
    tool.FCancelled = false;
    prompt([](framework::TForm& form) { tests::Click(form, "BitBtn1"); });
    Tools.ExecuteMenu(0);
    EXPECT_EQ(kept, "[X]\r\n[[]]\r\n");
}

TEST_F(UserTools, ShowTheirOutputInTheViewer) {
    EXPECT_EQ(Tools.FViewer, "explorer.exe ");
    const support::TTempFolder folder("viewer");
    const std::string viewer = support::FakeClient() + " show " + folder / "seen.txt" + " ";
    Tools.FViewer = viewer;
    TCommand& tool = AddTool("all-bytes");
    tool.FPreviewExternal = true;
    Tools.ExecuteMenu(0);
    ASSERT_TRUE(Tools.FTempFile.starts_with(viewer));
    const std::string file = Tools.FTempFile.substr(viewer.size());
    ASSERT_TRUE(support::WaitUntil([&] { return framework::FileExists(folder / "seen.txt"); }));
    const std::string seen = support::ReadBytes(folder / "seen.txt");
    EXPECT_EQ(seen.substr(0, file.size() + 1), file + "\n");
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    EXPECT_EQ(seen.substr(file.size() + 1), bytes);
    char temporary[MAX_PATH];
    ::GetTempPathA(sizeof temporary, temporary);
    EXPECT_TRUE(file.starts_with(temporary + std::string("TXT"))) << file;
    ::DeleteFileA(file.c_str());

    // A tool that is not to be previewed leaves it alone.
    ::DeleteFileA((folder / "seen.txt").c_str());
    tool.FPreviewExternal = false;
    tool.FArguments = "exit 0";
    Tools.ExecuteMenu(0);
    EXPECT_EQ(Tools.FTempFile, viewer + file);
}

TEST_F(UserTools, AreSavedOnlyWhenTheDialogIsConfirmed) {
    tandrel::TToolsClass unset;
    for (HKEY root : {HKEY(nullptr), HKEY_CURRENT_USER}) {
        unset.RootKey = root;
        unset.Keyname = root ? "" : "Key";
        EXPECT_EQ(tests::MessageOf([&] { unset.ShowDialog(); }),
                  " \"RootKey\" and \"Keyname\" not initialize");
    }
    AddTool("stored").FCommand = "C:\\windows\\explorer.exe";
    Tools.SaveToRegistry();
    const std::string before = Stored();
    Tools.Commands.GetItem(0).FArguments = "to be forgotten";
    const auto edit = [&](const std::string& button) {
        tests::ExpectForm("User Tools", [&, button](framework::TForm& form) {
            EXPECT_EQ(static_cast<framework::TForm*>(Tools.Form), &form);
            EXPECT_EQ(tests::TextOf(form, "Edit2"), "stored") << "loaded anew";
            Tools.Commands.GetItem(0).FDeleted = true;
            Tools.Commands.AddCommand("new").FCommand = "C:\\windows\\explorer.exe";
            tests::Click(form, button);
        });
        Tools.ShowDialog();
        EXPECT_EQ(Tools.Form, nullptr);
    };
    edit("BitBtn2");
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Tools.Commands.Count(), 2) << "the edited tools stay until they are loaded again";
    edit("BitBtn1");
    EXPECT_EQ(Tools.Commands.Count(), 1);
    Tools.LoadFromRegistry();
    ASSERT_EQ(Tools.Commands.Count(), 1);
    EXPECT_EQ(Tools.Commands.GetItem(0).FName, "new");
}

}  // namespace
