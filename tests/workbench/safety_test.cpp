// Working copies, servers and names that are out to do harm.

#include <cstdlib>
#include <cstring>

#include "framework/base/files.h"
#include "framework/base/registry.h"
#include "framework/base/text.h"
#include "framework/ui/edits.h"
#include "hosting/KeptOutput.h"
#include "hosting/PasswordMask.h"
#include "hosting/Programs.h"
#include "hosting/Trust.h"
#include "tests/support/Japanese.h"
#include "tests/support/Unique.h"
#include "tests/workbench/Projects.h"
#include "workbench/OutputPane.h"

namespace {

using namespace tests;
using support::ReadBytes;
using support::WriteBytes;

// --- passwords --------------------------------------------------------------------------------

TEST(Passwords, AreNeverShown) {
    for (const auto& [text, masked] :
         {std::pair{"cvs -d :pserver:me:secret@host:/repo  login",
                    "cvs -d :pserver:me:***@host:/repo  login"},
          {":pserver:me:a@b:c@host:2401/repo", ":pserver:me:***@host:2401/repo"},
          {":pserver:me@host:/repo", ":pserver:me@host:/repo"},
          {":pserver:host:/repo of you@there", ":pserver:host:/repo of you@there"},
          {":ext:me:pw@host:/r and :pserver:you:x@h:/r",
           ":ext:me:***@host:/r and :pserver:you:***@h:/r"},
          {":pserver:me:a b/c;\"d\\@host:/r\r\nnext", ":pserver:me:***@host:/r\r\nnext"},
          {":PServer;proxy=x:me:pw@host:/r", ":PServer;proxy=x:me:***@host:/r"},
          {":sserver:me:pw@host:/r", ":sserver:me:***@host:/r"},
          {"a mail to me@host: nothing", "a mail to me@host: nothing"},
          {"12:30:00 me@host:/x C:\\a@b", "12:30:00 me@host:/x C:\\a@b"},
          {":pserver:", ":pserver:"}})
        EXPECT_EQ(MaskPasswords(text), masked);
    EXPECT_EQ(MaskPasswords("it is tops3cret", "tops3cret"), "it is ***");
    EXPECT_EQ(MaskPasswords("as it was", "as"), "as it was") << "too short to be told from words";
}

TEST(Passwords, AreNotShownInPiecesEither) {
    const std::string text = "root :pserver:me:pass word@host:/repo\r\nand topsecret, C:\\x: done";
    for (std::size_t cut = 1; cut < text.size(); ++cut)
        for (std::size_t second = cut; second < text.size(); second += 7) {
            TMaskedPieces pieces;
            std::string shown = pieces.Next(text.substr(0, cut), "topsecret");
            shown += pieces.Next(text.substr(cut, second - cut), "topsecret");
            shown += pieces.Next(text.substr(second), "topsecret");
            shown += pieces.Rest("topsecret");
            ASSERT_EQ(shown, "root :pserver:me:***@host:/repo\r\nand ***, C:\\x: done") << cut;
        }
    TMaskedPieces pieces;
    EXPECT_EQ(pieces.Next("CVS password: ", ""), "CVS password: ") << "a question is not held back";
}

TEST(Passwords, KnowLettersOfTwoBytes) {
    const Japanese letters;
    EXPECT_EQ(MaskPasswords(":pserver:\x83@me:pw@host:/r"), ":pserver:\x83@me:***@host:/r");
    EXPECT_EQ(CutPassword(":pserver:me:pw@host:/r\x83@x"), ":pserver:me@host:/r\x83@x");
    EXPECT_EQ(CutPassword(":pserver:me@host:/r\x83@x"), ":pserver:me@host:/r\x83@x");
    EXPECT_TRUE(IsPlainRoot(":pserver:me@host:/r\x83@x"));
    EXPECT_FALSE(IsPlainRoot(":ext:a\x83@-oProxyCommand=x@host:/r"));
    // What is held back begins like a password, with the second half of a letter.
    TMaskedPieces pieces;
    EXPECT_EQ(pieces.Next("a\x83X", "Xsecret"), "a");
    EXPECT_EQ(pieces.Next("b", "Xsecret"), "\x83Xb");
}

/// All values below a key.
std::string ValuesBelow(HKEY root, const std::string& key) {
    RegistryKey opened;
    if (::RegOpenKeyExA(root, key.c_str(), 0, KEY_READ, opened.Receive()) != ERROR_SUCCESS)
        return {};
    std::string all;
    char name[1024];
    for (DWORD i = 0, size = sizeof name;
         ::RegEnumKeyExA(opened.Get(), i, name, &size, nullptr, nullptr, nullptr, nullptr) ==
         ERROR_SUCCESS;
         ++i, size = sizeof name)
        all += ValuesBelow(root, key + "\\" + name);
    BYTE data[4096];
    for (DWORD i = 0, size = sizeof name, bytes = sizeof data;
         ::RegEnumValueA(opened.Get(), i, name, &size, nullptr, nullptr, data, &bytes) ==
         ERROR_SUCCESS;
         ++i, size = sizeof name, bytes = sizeof data)
        all += std::string(name) + "=" + std::string(data, data + bytes) + "\n";
    return all;
}

/// All files below a folder.
std::string FilesBelow(const std::string& folder) {
    std::string all;
    TFileSearch search(folder + "\\*.*", faAnyFile);
    for (TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        const std::string path = folder + "\\" + entry.Name;
        all += entry.IsDirectory() ? FilesBelow(path) : ReadBytes(path) + "\n";
    }
    return all;
}

std::string WholeEnvironment() {
    std::string all;
    const LPCH block = ::GetEnvironmentStringsA();
    for (const char* at = block; *at; at += std::strlen(at) + 1)
        if (!std::string_view(at).starts_with("TANDREL_"))
            all += std::string(at) + "\n";
    ::FreeEnvironmentStringsA(block);
    return all;
}

TEST_F(Projects, LeaveNoPasswordAnywhere) {
    const std::string password = std::getenv("TANDREL_PSERVER_PASSWORD");
    Form.OpenProject(Folder / "one");
    TCvsObject& cvs = Form.Project()->Cvs();
    cvs.ConnectionType = tandrel::cnPServer;
    cvs.Server = "127.0.0.1";
    cvs.UserName = std::getenv("TANDREL_PSERVER_USER");
    cvs.Path =
        std::string(std::getenv("TANDREL_PSERVER_PORT")) + std::getenv("TANDREL_PSERVER_PATH");
    std::string commands;
    const auto close = [&](const std::string& caption) {
        ExpectForm(caption, [&](TForm& form) {
            commands += cvs.CommandLine + TextOf(form, "Label1") + "\n";
            Click(form, "BitBtn1");
        });
    };
    for (const std::string& typed : {"wrong " + password, password}) {
        ExpectForm("CVS login -step 1", [&](TForm& form) {
            support::Type(support::StepOf(form), "Edit3", typed);
            support::Press(form, "BitBtn4");
            support::Press(form, "BitBtn1");
        });
        close("CVS login");
        EXPECT_EQ(Operate([](TCvsObject& obj) { return obj.Login(true); }), typed == password)
            << Told();
        EXPECT_EQ(WholeEnvironment().find(password), std::string::npos);
        // What the program starts next gets the environment as it is now.
        EXPECT_TRUE(Run("surroundings CVSROOT"));
        cvs.CvsExecutable = "cvs";
    }
    const std::string module = "safe " + tests::UniqueWord();
    support::WriteBytes(Folder / (module + "\\x.c"), "x");
    const TProjectState connection = TProjectState::Of(cvs);
    Form.OpenProject(Folder / module);
    TCvsObject& placed = Form.Project()->Cvs();
    connection.PutInto(placed);
    ExpectForm("Tags of the project", [](TForm& form) { support::Press(form, "BitBtn1"); });
    close("CVS PlaceProject");
    EXPECT_TRUE(Operate([](TCvsObject& obj) { return obj.PlaceProjectAccepted(); })) << Told();
    // Pulled from the first one's window.
    Form.OpenProject(Folder / "one");
    close("CVS Pull Project ");
    EXPECT_TRUE(Operate([&](TCvsObject& obj) {
        obj.Password = password;  // as a wizard leaves it
        obj.SetCVSROOT(":pserver:" + obj.UserName + ":" + password + "@127.0.0.1:" + obj.Path);
        obj.Set_ProjectRoot(Folder / "pulled");
        obj.Set_Modulename(module);
        return obj.PullProjectAccepted();
    })) << Told();
    EXPECT_TRUE(FileExists(Folder / ("pulled\\" + module + "\\x.c")));
    ExpectForm("CVS logout", [](TForm& form) { support::Press(form, "BitBtn1"); });
    close("CVS logout");
    EXPECT_TRUE(Operate([](TCvsObject& obj) { return obj.Logout(true); })) << Told();

    for (const auto& [where, text] : {std::pair{"messages", Told()},
                                      {"commands and results", commands},
                                      {"the registry", ValuesBelow(HostRegistryKey, Key)},
                                      {"files", FilesBelow(Folder.Path())},
                                      {"the environment", WholeEnvironment()}}) {
        EXPECT_EQ(text.find(password), std::string::npos) << "in " << where << ": " << text;
        EXPECT_FALSE(text.empty()) << where;
    }
}

TEST_F(Projects, TakeOldPasswordsOutOfTheRecords) {
    for (const char* folder : {"one", "one\\sub"})
        WriteBytes(Folder / (std::string(folder) + "\\CVS\\Root"),
                   ":pserver:me:a@b@host:/repo\r\n");
    Answer(true);
    Form.OpenProject(Folder / "one");
    EXPECT_NE(Asked.find("hold a password"), std::string::npos);
    EXPECT_EQ(ReadBytes(Folder / "one\\sub\\CVS\\Root"), ":pserver:me@host:/repo\r\n");
    EXPECT_EQ(Told().find("a@b"), std::string::npos);
}

// --- what a folder may do ---------------------------------------------------------------------

TEST(Roots, ArePlainOrToBeAskedAbout) {
    for (const char* root :
         {"C:\\repo", "c:/repo/x", ":local:C:\\my repo", ":pserver:me@host:/cvs",
          ":pserver:host.example.org:2402/cvs", ":pserver:me@host:2401:/cvs", ":ext:me@host:/cvs",
          ":PSERVER:me@10.0.0.1:/cvs", ":pserver:host/cvs", ":ext:host:C:/cvs"})
        EXPECT_TRUE(IsPlainRoot(root)) << root;
    for (const char* root : {"",
                             "repo",
                             "..\\repo",
                             "C:repo",
                             "C:\\a\\..\\b",
                             "\\\\host\\share",
                             "//host/share",
                             "host:/cvs",
                             "me@host:/cvs",
                             ":ext;CVS_RSH=doc\\readme.exe:me@host:/cvs",
                             ":ext:-oProxyCommand=x@host:/cvs",
                             ":ext:me@-host:/cvs",
                             ":ext:me@ho st:/cvs",
                             ":fork:C:\\repo",
                             ":server:me@host:/cvs",
                             ":local:\\\\host\\share",
                             ":ext:",
                             ":pserver:x",
                             ":ext:me@host:relative",
                             ":ext:me@host://other/share",
                             ":ext:me@host:/a\x01",
                             ":ext"})
        EXPECT_FALSE(IsPlainRoot(root)) << root;
}

class Hostile : public Projects {
protected:
    /// Makes "one" a working copy of this root.
    void Root(const std::string& root, const std::string& below = "one") {
        WriteBytes(Folder / (below + "\\CVS\\Root"), root + "\r\n");
        WriteBytes(Folder / (below + "\\CVS\\Repository"), "one\r\n");
        WriteBytes(Folder / (below + "\\CVS\\Entries"), "/a.c/1.1/dummy//\r\nD/sub////\r\n");
    }
    /// What is asked for a command in "one", and whether it ran.
    std::string AskedFor(bool answer, bool& ran) {
        Asked.clear();
        Answer(answer);
        TMainForm form(Settings, Packages);
        form.OpenProject(Folder / "one");
        EXPECT_EQ(Asked, "") << "opening runs nothing";
        ran = false;
        form.Operate([&](TCvsObject&) { return ran = true; }, false);
        Application().SetMainWindow(nullptr);
        return Asked;
    }
};

TEST_F(Hostile, IsAskedAboutBeforeTheFirstCommand) {
    bool ran = false;
    Root(":pserver:me@host:/repo");
    EXPECT_EQ(AskedFor(false, ran), "");
    EXPECT_TRUE(ran) << "a plain one";
    // The same folder with another root is not known any more.
    Root(":ext;CVS_RSH=doc\\readme.exe:host:/repo");
    EXPECT_NE(AskedFor(false, ran).find("doc\\readme.exe"), std::string::npos) << Asked;
    EXPECT_FALSE(ran);
    EXPECT_NE(AskedFor(true, ran), "") << "No is not remembered";
    EXPECT_TRUE(ran);
    EXPECT_EQ(AskedFor(false, ran), "");
    EXPECT_TRUE(ran) << "Yes is";
    // Only in a folder below.
    Root(":pserver:me@host:/repo");
    Root(":ext:me@other:/repo", "one\\sub");
    EXPECT_NE(AskedFor(false, ran).find(":ext:me@other:/repo"), std::string::npos) << Asked;
    EXPECT_FALSE(ran);
}

TEST_F(Hostile, RepositoryOnThisMachineRunsNoProgramsUnasked) {
    const std::string repository = Folder / "repository";
    WriteBytes(repository + "\\CVSROOT\\commitinfo", "# a comment\r\n");
    Root(repository);
    bool ran = false;
    EXPECT_EQ(AskedFor(false, ran), "");
    Root(Folder / "other");
    WriteBytes(Folder / "other\\CVSROOT\\commitinfo", "# a comment\r\nALL evil.exe\r\n");
    EXPECT_NE(AskedFor(false, ran).find("programs of its own"), std::string::npos) << Asked;
    EXPECT_FALSE(ran);
}

TEST_F(Hostile, FolderIsNotTakenForAModuleToDelete) {
    WriteBytes(Folder / "victim\\documents\\letter.txt", "mine");
    WriteBytes(Folder / "victim\\CVSROOT\\modules,v", "");
    Root(Folder / "victim");
    WriteBytes(Folder / "one\\CVS\\Repository", "documents\r\n");
    Answer(true);
    const auto takeOut = [&] {
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
    Root(Folder / "victim");
    WriteBytes(Folder / "one\\CVS\\Repository", "documents\r\n");
    takeOut();
    EXPECT_FALSE(DirectoryExists(Folder / "victim\\documents"));
    EXPECT_NE(Asked.find(Folder / "victim\\documents"), std::string::npos) << Asked;
    for (const char* module : {"", ".", "..", "..\\x", "CVSROOT", "a/../..", "C:\\x"})
        EXPECT_EQ(ModuleFolder(Folder / "victim", module), "") << module;
}

// --- programs ---------------------------------------------------------------------------------

TEST_F(Hostile, ProgramsInTheFolderAreNotStarted) {
    const std::string client = support::FakeClient();
    const std::string planted = ReadBytes(client.substr(1, client.rfind('"') - 1));
    for (const char* name : {"cvs.exe", "rsh.exe", "ssh.exe", "tool.exe"})
        WriteBytes(Folder / ("one\\" + std::string(name)), planted);
    char path[32768], before[MAX_PATH];
    ::GetEnvironmentVariableA("PATH", path, sizeof path);
    ::GetCurrentDirectoryA(MAX_PATH, before);
    ::SetCurrentDirectoryA((Folder / "one").c_str());
    ::SetEnvironmentVariableA("PATH", (".;one;;" + std::string(path)).c_str());
    EXPECT_EQ(FindProgram("tool"), "");
    EXPECT_TRUE(SameText(LeaveCurrentDirectory(), Folder / "one"));
    EXPECT_FALSE(FileExists("cvs.exe"));
    const std::string found = FindClient(Settings);
    EXPECT_TRUE(FileExists(found) && !SameText(found, Folder / "one\\cvs.exe")) << found;
    EXPECT_EQ(FindRemoteShell(""), "") << "there is none in the PATH";
    // The client itself would also look into the working copy for it.
    Root(":ext:me@host:/repo");
    Form.OpenProject(Folder / "one");
    Form.Operate([](TCvsObject& cvs) { return cvs.Status(); }, false);
    EXPECT_NE(Told().find("neither ssh nor rsh"), std::string::npos) << Told();
    EXPECT_EQ(Told().find("fake client"), std::string::npos) << Told();
    // The one that the user has chosen is taken.
    const std::string shell = client.substr(1, client.rfind('"') - 1);
    Form.Project()->Cvs().Set_CVS_RSH(shell);
    EXPECT_TRUE(Run("surroundings CVS_RSH"));
    EXPECT_NE(Told().find("CVS_RSH=" + shell), std::string::npos) << Told();
    ::SetEnvironmentVariableA("PATH", path);
    ::SetCurrentDirectoryA(before);
}

TEST(RemoteShells, WithoutAFolderAreLookedFor) {
    const Japanese letters;
    EXPECT_EQ(FindRemoteShell("C:\\a.exe"), "C:\\a.exe");
    EXPECT_EQ(FindRemoteShell(Source), "") << "no backslash in it";
}

TEST_F(Projects, SayThatThereIsNoClientAndAskForOne) {
    char path[32768];
    ::GetEnvironmentVariableA("PATH", path, sizeof path);
    ::SetEnvironmentVariableA("PATH", "C:\\windows");
    Answer(false);
    Form.OpenProject(Folder / "one");
    EXPECT_FALSE(Operate([](TCvsObject&) { return true; }));
    EXPECT_NE(Told().find("looked for in C:\\windows"), std::string::npos) << Told();
    const std::string client = support::FakeClient(),
                      chosen = client.substr(1, client.rfind('"') - 1);
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

class HostileTools : public Projects {
protected:
    /// Adds a tool and runs it.
    void RunTool(const std::string& command, const std::string& arguments) {
        tandrel::TToolsClass tools;
        tools.RootKey = HostRegistryKey;
        tools.Keyname = Settings.ToolsKey();
        tandrel::TCommand& tool = tools.Commands.AddCommand("the tool");
        tool.FCommand = command;
        tool.FArguments = arguments;
        tool.FCaptureToolView = true;
        tools.SaveToRegistry();
        TMainForm form(Settings, Packages);
        form.OpenProject(Folder / Opened);
        auto& list = support::Part<TListView>(form, "List");
        list.Select(0);
        Pick(form, "the tool");
        Shown = support::Part<TRichEdit>(form, "Output").Text();
        Application().SetMainWindow(nullptr);
        ::RegDeleteKeyA(HostRegistryKey, Settings.ToolsKey().c_str());
    }
    std::string Opened = "one";
    std::string Shown;
};

TEST_F(HostileTools, NamesAreNotCommands) {
    ::DeleteFileA((Folder / "one\\a.c").c_str());
    WriteBytes(Folder / "one\\x&echo evil&.c", "");
    WriteBytes(Folder / "tool.bat", "@echo got %1\r\n");
    Answer(false);
    // However the user has written it.
    for (const auto& [command, arguments] : {std::pair{Folder / "tool.bat", "$(File)"},
                                             {"\"" + (Folder / "tool.bat") + "\"", "$(File)"},
                                             {Folder / "tool.bat ", "$[File)"},
                                             {std::string("cmd /c echo"), "$(FileName)"}}) {
        RunTool(command, arguments);
        EXPECT_NE(Asked.find("x&echo evil&.c"), std::string::npos) << command << Asked;
        EXPECT_EQ(Shown.find("evil"), std::string::npos) << Shown;
        Asked.clear();
    }
    RunTool(Folder / "tool.bat", "plain");
    EXPECT_EQ(Asked, "") << "it is not passed on";
    EXPECT_NE(Shown.find("got plain"), std::string::npos) << Shown;

    ::DeleteFileA((Folder / "one\\x&echo evil&.c").c_str());
    WriteBytes(Folder / "one\\half\x83.c", "");
    const Japanese letters;
    RunTool(Folder / "tool.bat", "$(File)");
    EXPECT_NE(Asked.find("half\x83.c"), std::string::npos) << "it could take a quote along";
}

TEST_F(HostileTools, RunInTheProjectWhateverItIsCalled) {
    WriteBytes(Folder / "app$2\\a.c", "");
    Opened = "app$2";
    const std::string client = support::FakeClient(),
                      program = client.substr(1, client.rfind('"') - 1);
    RunTool(program, "surroundings");
    EXPECT_NE(Shown.find("folder:" + (Folder / "app$2")), std::string::npos) << Shown;
}

TEST_F(HostileTools, BlanksInAPathLeadToNoOtherProgram) {
    const std::string client = support::FakeClient();
    const std::string program = ReadBytes(client.substr(1, client.rfind('"') - 1));
    WriteBytes(Folder / "My Tools\\real.exe", program);
    WriteBytes(Folder / "My.exe", program);
    RunTool(Folder / "My Tools\\real.exe", "arguments $(FileName)");
    EXPECT_EQ(Shown.find("fake client"), std::string::npos) << Shown;
    EXPECT_NE(Shown.find("\\one\\a.c]"), std::string::npos) << Shown;
}

// --- floods -----------------------------------------------------------------------------------

TEST_F(Projects, ShowTheEndOfAFloodAndKeepAllOfIt) {
    Form.OpenProject(Folder / "one");
    constexpr int Lines = 100000;  // of 64 bytes
    EXPECT_TRUE(Run("flood " + std::to_string(Lines)));
    const std::string told = Told();
    EXPECT_LE(told.size(), TOutputPane::MostShown + 1000);
    EXPECT_NE(told.find("not shown"), std::string::npos);
    EXPECT_NE(told.find(std::to_string(Lines - 1) + "...."), std::string::npos);
    EXPECT_GT(FilesBelow(Folder / "data\\Output").size(), 64u * Lines);
    // It goes on from there.
    EXPECT_TRUE(Run("say-and-sleep afterwards 0 1"));
    EXPECT_NE(Told().find("afterwards"), std::string::npos);
}

TEST(KeptOutput, HoldsTheNewestTwenty) {
    const support::TTempFolder folder("output");
    for (int i = 0; i < 25; ++i)
        WriteBytes(folder / ("20200101-0000" + std::to_string(10 + i) + "-000.txt"), "old");
    TKeptOutput output(folder.Path());
    output.Add("before any command");
    EXPECT_EQ(output.Path(), "");
    output.Begin();
    output.Add("first, ");
    output.Add("second");
    output.Begin();
    EXPECT_EQ(ReadBytes(output.Path()), "first, second");
    std::size_t files = 0;
    TFileSearch search(folder / "*.txt", faAnyFile);
    for (TSearchRec entry; search.Next(entry);)
        ++files;
    EXPECT_EQ(files, TKeptOutput::MostKept);
    EXPECT_FALSE(FileExists(folder / "20200101-000010-000.txt"));
    EXPECT_TRUE(FileExists(folder / "20200101-000034-000.txt"));
}

}  // namespace
