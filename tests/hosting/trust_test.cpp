// Working copies, programs and names that are out to do harm.

#include "hosting/Trust.h"
#include "hosting/Programs.h"
#include "hosting/ToolRuns.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Japanese.h"

namespace {

using namespace tests;
using support::ReadBytes;
using support::WriteBytes;

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
    /// What is asked for a command in "one", and whether it ran.
    std::string AskedFor(bool answer, bool& ran) {
        Host.Asked.clear();
        Host.Say(answer);
        TProject project(Host, Settings, Folder / "one");
        EXPECT_EQ(Host.Asked, "") << "opening runs nothing";
        ran = false;
        project.Operate([&](TCvsObject&) { return ran = true; });
        return Host.Asked;
    }
};

TEST_F(Hostile, IsAskedAboutBeforeTheFirstCommand) {
    bool ran = false;
    Record("one", ":pserver:me@host:/repo");
    EXPECT_EQ(AskedFor(false, ran), "");
    EXPECT_TRUE(ran) << "a plain one";
    // The same folder with another root is not known any more.
    Record("one", ":ext;CVS_RSH=doc\\readme.exe:host:/repo");
    ExpectIn(AskedFor(false, ran), "doc\\readme.exe");
    EXPECT_FALSE(ran);
    EXPECT_NE(AskedFor(true, ran), "") << "No is not remembered";
    EXPECT_TRUE(ran);
    EXPECT_EQ(AskedFor(false, ran), "");
    EXPECT_TRUE(ran) << "Yes is";
    // Only in a folder below.
    Record("one", ":pserver:me@host:/repo");
    Record("one\\sub", ":ext:me@other:/repo");
    ExpectIn(AskedFor(false, ran), ":ext:me@other:/repo");
    EXPECT_FALSE(ran);
    // A repository on this machine may run programs of its own.
    support::DeleteFolder(Folder / "one\\sub");
    WriteBytes(Folder / "repository\\CVSROOT\\commitinfo", "# a comment\r\n");
    Record("one", Folder / "repository");
    EXPECT_EQ(AskedFor(false, ran), "");
    Record("one", Folder / "other");
    WriteBytes(Folder / "other\\CVSROOT\\commitinfo", "# a comment\r\nALL evil.exe\r\n");
    ExpectIn(AskedFor(false, ran), "programs of its own");
    EXPECT_FALSE(ran);
}

// --- programs ---------------------------------------------------------------------------------

TEST_F(Hostile, ProgramsInTheFolderAreNotStarted) {
    const std::string shell = support::ProgramBeside("fake_client.exe");
    for (const char* name : {"cvs.exe", "rsh.exe", "ssh.exe", "tool.exe"})
        WriteBytes(Folder / ("one\\" + std::string(name)), ReadBytes(shell));
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
    {
        const Japanese letters;
        EXPECT_EQ(FindRemoteShell("C:\\a.exe"), "C:\\a.exe");
        EXPECT_EQ(FindRemoteShell(Source), "") << "no backslash in it";
    }
    // The client itself would also look into the working copy for it.
    Record("one", ":ext:me@host:/repo");
    TProject project(Host, Settings, Folder / "one");
    project.Operate(&TCvsObject::Status);
    ExpectTold("neither ssh nor rsh");
    EXPECT_EQ(Host.Told.find("fake client"), std::string::npos) << Host.Told;
    // The one that the user has chosen is taken.
    project.Cvs().Set_CVS_RSH(shell);
    EXPECT_TRUE(Run(project, "surroundings CVS_RSH"));
    ExpectTold("CVS_RSH=" + shell);
    ::SetEnvironmentVariableA("PATH", path);
    ::SetCurrentDirectoryA(before);
}

class HostileTools : public Projects {
protected:
    /// Runs a tool on the file; what it says is in Host.Told.
    void RunTool(const std::string& command, const std::string& arguments) {
        Host.Told.clear();
        TToolRuns runs(Host, Settings);
        tandrel::TCommand& tool = runs.Tools.Commands.AddCommand("the tool");
        tool.FCommand = command;
        tool.FArguments = arguments;
        tool.FCaptureToolView = true;
        runs.Tools.SaveToRegistry();
        TProject project(Host, Settings, Folder / ExtractFileDir(File));
        runs.Run(0, &project, Folder / File, [] { ADD_FAILURE() << "It needs no console"; });
    }
    std::string File = "one\\a.c";
};

TEST_F(HostileTools, NamesAreNotCommands) {
    File = "one\\x&echo evil&.c";
    WriteBytes(Folder / "tool.bat", "@echo got %1\r\n");
    Host.Say(false);
    // However the user has written it.
    for (const auto& [command, arguments] : {std::pair{Folder / "tool.bat", "$(File)"},
                                             {"\"" + (Folder / "tool.bat") + "\"", "$(File)"},
                                             {Folder / "tool.bat ", "$[File)"},
                                             {std::string("cmd /c echo"), "$(FileName)"}}) {
        RunTool(command, arguments);
        EXPECT_NE(Host.Asked.find("x&echo evil&.c"), std::string::npos) << command << Host.Asked;
        EXPECT_EQ(Host.Told.find("evil"), std::string::npos) << Host.Told;
        Host.Asked.clear();
    }
    RunTool(Folder / "tool.bat", "plain");
    EXPECT_EQ(Host.Asked, "") << "it is not passed on";
    ExpectTold("got plain");

    File = "one\\half\x83.c";
    const Japanese letters;
    RunTool(Folder / "tool.bat", "$(File)");
    EXPECT_NE(Host.Asked.find("half\x83.c"), std::string::npos) << "it could take a quote along";
}

TEST_F(HostileTools, RunInTheProjectWhateverItIsCalled) {
    File = "app$2\\a.c";
    WriteBytes(Folder / File, "");
    RunTool(support::ProgramBeside("fake_client.exe"), "surroundings");
    ExpectTold("folder:" + (Folder / "app$2"));
}

TEST_F(HostileTools, BlanksInAPathLeadToNoOtherProgram) {
    const std::string program = ReadBytes(support::ProgramBeside("fake_client.exe"));
    WriteBytes(Folder / "My Tools\\real.exe", program);
    WriteBytes(Folder / "My.exe", program);
    RunTool(Folder / "My Tools\\real.exe", "arguments $(FileName)");
    EXPECT_EQ(Host.Told.find("fake client"), std::string::npos) << Host.Told;
    ExpectTold("\\one\\a.c]");
}

}  // namespace
