// Whole operations with the real client, checked in the repository.

#include <gtest/gtest.h>

#include "core/CvsExecute.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace tandrel;
using framework::FileExists;
using framework::Format;
using tests::TSandboxObject;

constexpr const char* Success = " CVS command execute successful  with Exitcode 0\r\n";

class Operations : public testing::Test {
protected:
    /// The next result form says this; it is closed.
    static void ExpectResult(const std::string& caption, const std::string& text) {
        tests::ExpectForm(caption, [text](framework::TForm& form) {
            EXPECT_EQ(tests::TextOf(form, "Label1"), text);
            tests::Click(form, "BitBtn1");
        });
    }

    tests::TSandbox Sandbox;
};

TEST_F(Operations, CreateARepository) {
    TCvsObject obj;
    const tests::TMessageLog log(obj);
    obj.Path = Sandbox.Folder / "new";
    EXPECT_FALSE(obj.CreateLocalRepositoryAccepted()) << "without a root, and no result to show";
    obj.SetCVSROOT(obj.Path);
    ExpectResult("CVS init", "CVS init " + obj.Path + " successfuly completed");
    EXPECT_TRUE(obj.CreateLocalRepositoryAccepted()) << log.All();
    EXPECT_EQ(log.All(), "CVSROOT variable is not set \r\nCreating new repository (" + obj.Path +
                             ")\r\n" + Success);
    EXPECT_TRUE(FileExists(obj.Path + "\\CVSROOT\\modules"));
}

TEST_F(Operations, CheckOutTellsAndShowsItsResult) {
    TSandboxObject obj(Sandbox);
    ExpectResult("CVS CheckOut", "CVS project mod successfuly completed");
    EXPECT_TRUE(obj.CheckOut(true));
    EXPECT_TRUE(obj.Messages.All().starts_with(
        Format("CheckOut project mod into directory(%s) from  repository %s \r\n",
               {Sandbox.Folder.Path(), Sandbox.Repository})));
    EXPECT_TRUE(obj.Messages.All().ends_with(Success));
    EXPECT_EQ(Sandbox.Read(Sandbox.Folder / "mod\\sub\\c.c"), "c\r\n");

    obj.Set_Modulename("no such module");
    ExpectResult("CVS CheckOut", "CVS project no such module execute with Exitcode 1");
    EXPECT_FALSE(obj.CheckOut(true));
    EXPECT_FALSE(obj.CheckOut(false)) << "and no form";
}

TEST_F(Operations, ImportPutsAProjectIn) {
    TSandboxObject obj(Sandbox);
    Sandbox.Write(Sandbox.Folder / "proj\\main.c", "text\r\n");
    Sandbox.Write(Sandbox.Folder / "proj\\main.o", "object\r\n");
    obj.Set_Modulename("proj");
    obj.VendorTag = "V";
    obj.ReleaseTag = "R";
    obj.CommitMessage = "first import";
    obj.UseDefaultIgnore = true;
    ExpectResult("CVS import",
                 "CVS import " + (Sandbox.Folder / "proj") + " successfuly completed");
    EXPECT_TRUE(obj.Import(true));
    EXPECT_TRUE(
        obj.Messages.All().starts_with(Format("Imorting directory(%s) into repository %s \r\n",
                                              {Sandbox.Folder / "proj", Sandbox.Repository})));
    EXPECT_EQ(Sandbox.Ask("checkout -p proj/main.c"), "text\r\n");
    EXPECT_EQ(Sandbox.Ask("rls proj").find("main.o"), std::string::npos);
    // Without tags the client refuses.
    obj.VendorTag.clear();
    EXPECT_FALSE(obj.Import(false));
}

TEST_F(Operations, ADayOnAWorkingCopy) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    Sandbox.Write(copy + "\\new\\deep\\d.c", "d\r\n");
    obj.FileItems.AddFile(copy + "\\new\\deep\\d.c", Km_none);
    EXPECT_TRUE(obj.Add());
    obj.FileItems.Clear();
    EXPECT_TRUE(obj.RemoveFile(copy + "\\b.c", true));

    int committing = 0;
    obj.OnCommit = [&](TCvsObject& sender) {
        EXPECT_EQ(&sender, &obj);
        sender.CommitMessage = "set by the host";
        ++committing;
    };
    obj.Messages.Clear();
    EXPECT_TRUE(obj.Commit(false));
    EXPECT_EQ(committing, 1);
    EXPECT_TRUE(obj.Messages.All().starts_with(
        Format("Commit  project from  directory(%s) into repository %s \r\n",
               {copy, Sandbox.Repository})));
    EXPECT_NE(Sandbox.Ask("rlog mod/new/deep/d.c").find("set by the host"), std::string::npos);
    EXPECT_EQ(Sandbox.Ask("rls mod").find("b.c"), std::string::npos);

    obj.TagName = "REL";
    int labelling = 0;
    obj.OnCreateLabel = [&](TCvsObject&) { ++labelling; };
    EXPECT_TRUE(obj.Create_Tag(false));
    EXPECT_EQ(labelling, 1);
    EXPECT_EQ(obj.CommandLine, " tag \"REL\"") << "neither a branch nor a deletion";
    obj.TagName = "BRANCH";
    int branching = 0;
    obj.OnCreateBranch = [&](TCvsObject&) { ++branching; };
    EXPECT_TRUE(obj.Create_Rtag(false));
    EXPECT_EQ(branching, 1);
    EXPECT_TRUE(obj.TagBranch) << "and stays so";
    const std::string log = Sandbox.Ask("rlog -h mod/a.c");
    EXPECT_NE(log.find("REL: 1.1.1.1\r\n"), std::string::npos) << log;
    EXPECT_NE(log.find("BRANCH: 1.1.1.1.0.2"), std::string::npos) << log;

    std::string events;
    obj.OnDeleteLabel = [&](TCvsObject&) { events += "label "; };
    obj.OnDeleteBranch = [&](TCvsObject&) { events += "branch "; };
    EXPECT_TRUE(obj.Del_Rtag(false));
    EXPECT_EQ(obj.CommandLine, " rtag -d -B \"BRANCH\" mod");
    EXPECT_TRUE(obj.TagDelete) << "and stays so";
    obj.TagName = "REL";
    // The client refuses to delete a label with the option for branches.
    obj.TagDeleteBranch = false;
    EXPECT_TRUE(obj.Del_Tag(false));
    EXPECT_EQ(events, "branch label ");
    EXPECT_EQ(Sandbox.Ask("rlog -h mod/a.c").find("REL: "), std::string::npos);

    const std::string other = Sandbox.CheckOut("other");
    EXPECT_EQ(Sandbox.Read(other + "\\new\\deep\\d.c"), "d\r\n");
}

TEST_F(Operations, UpdateAlwaysShowsItsResult) {
    const std::string copy = Sandbox.CheckOut("work"), other = Sandbox.CheckOut("other");
    Sandbox.Write(other + "\\a.c", "changed\r\n");
    Sandbox.Client("-Q commit -m change", other);
    TSandboxObject obj(Sandbox, copy);
    ExpectResult("CVS update", "CVS update  \"mod\" successfuly completed");
    EXPECT_TRUE(obj.Update());
    EXPECT_TRUE(obj.Messages.All().starts_with(Format(
        "Update project mod directory(%s) from  repository %s \r\n", {copy, Sandbox.Repository})));
    EXPECT_EQ(Sandbox.Read(copy + "\\a.c"), "changed\r\n");
    ExpectResult("CVS update", "CVS update  \"mod\" successfuly completed");
    obj.OnUpdate = [](TCvsObject& sender) { sender.ResetSticky = true; };
    EXPECT_TRUE(obj.UpdateSpecialAccepted());
    EXPECT_EQ(obj.CommandLine, " update -A -P");

    // A file of another project: told, and the form does not call it a success.
    obj.Messages.Clear();
    obj.FileItems.AddFile(other + "\\a.c", Km_none);
    ExpectResult("CVS update", "CVS update  \"mod\" execute with Exitcode 1");
    EXPECT_FALSE(obj.Update());
    EXPECT_EQ(obj.Messages.All(),
              "File " + other + "\\a.c is not locating in  working direktory \r\n");
}

TEST_F(Operations, SimpleOperationsRunWithTheOptionsAsTheyStand) {
    const std::string copy = Sandbox.CheckOut("work");
    Sandbox.Write(copy + "\\a.c", "other text\r\n");
    TSandboxObject obj(Sandbox, copy);
    EXPECT_TRUE(obj.Status());
    EXPECT_NE(obj.Messages.All().find("Locally Modified"), std::string::npos);
    EXPECT_FALSE(obj.Diff()) << "the client's way of saying that there are differences";
    EXPECT_EQ(obj.ExitCode, 1);
    std::string commands;
    for (const auto operation : {&TCvsObject::Log, &TCvsObject::Annotate, &TCvsObject::Editors,
                                 &TCvsObject::watch, &TCvsObject::Watchers, &TCvsObject::Edit}) {
        obj.Messages.Clear();
        EXPECT_TRUE((obj.*operation)()) << obj.CommandLine << obj.Messages.All();
        commands += obj.CommandLine + ";";
    }
    EXPECT_EQ(commands, " log; annotate; editors; watch on; watchers; edit;");
    EXPECT_TRUE(obj.RLog());
    EXPECT_EQ(obj.CommandLine, " rlog mod");
    obj.FileItems.AddFile(copy + "\\b.c", Km_none);
    EXPECT_TRUE(obj.Unedit());
    EXPECT_TRUE(obj.Admin());
    EXPECT_EQ(obj.CommandLine, " admin b.c");
    obj.History();  // this client's local repositories keep none
    EXPECT_EQ(obj.CommandLine, " history b.c");
    obj.FileItems.Clear();
    obj.StikyType = stHead;
    EXPECT_TRUE(obj.Rdiff());
    EXPECT_FALSE(FileExists(Sandbox.Folder / "exported\\mod\\a.c"));
    obj.Set_ProjectRoot(Sandbox.Folder / "exported");
    framework::ForceDirectories(obj.ProjectRoot());
    EXPECT_TRUE(obj.Export_cmd(true)) << "no dialog, no result form";
    EXPECT_TRUE(FileExists(Sandbox.Folder / "exported\\mod\\a.c"));
    EXPECT_FALSE(framework::DirectoryExists(Sandbox.Folder / "exported\\mod\\CVS"));
}

// --- what cannot be done ----------------------------------------------------------------------

TEST_F(Operations, NeedARoot) {
    TSandboxObject obj(Sandbox, Sandbox.CheckOut("work"));
    EXPECT_TRUE(obj.Status());
    obj.SetCVSROOT("   ");
    obj.Messages.Clear();
    EXPECT_FALSE(obj.Status());
    const std::string complaint = "CVSROOT variable is not set \r\n";
    EXPECT_EQ(obj.Messages.All(), complaint);
    // The code of the command before, which succeeded, is not theirs.
    ASSERT_EQ(obj.ExitCode, 0);
    const std::string failed = " execute with Exitcode 1";
    ExpectResult("CVS update", "CVS update  \"mod\"" + failed);
    EXPECT_FALSE(obj.Update());
    ExpectResult("CVS import", "CVS import " + obj.WorkingDirectory() + failed);
    EXPECT_FALSE(obj.Import(true));
    obj.ExitCode = 7;
    ExpectResult("CVS CheckOut", "CVS project mod" + failed);
    EXPECT_FALSE(obj.CheckOut(true));
    EXPECT_FALSE(obj.CheckOut(false)) << "and no form";
    EXPECT_EQ(obj.ExitCode, 7);
}

TEST_F(Operations, StayWhatTheyAreWhateverTheHostRunsBefore) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    obj.TagName = "REL";
    obj.OnCommit = obj.OnCreateLabel = [&](TCvsObject& sender) { EXPECT_TRUE(sender.Status()); };
    EXPECT_TRUE(obj.Commit(false));
    EXPECT_EQ(obj.CommandLine, " commit -m \" no messages\"");
    EXPECT_TRUE(obj.Create_Tag(false));
    EXPECT_EQ(obj.CommandLine, " tag \"REL\"");
}

TEST_F(Operations, LetWhatAHandlerRaisesThrough) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    int told = 0;
    obj.OnMessage = [&](framework::TObject*, const std::string&) {
        ++told;
        throw framework::Exception("the host's own");
    };
    EXPECT_THROW(obj.Commit(false), framework::Exception);  // what begins
    EXPECT_EQ(told, 1) << "it is not told of its own error";
    EXPECT_THROW(obj.Create_Tag(false), framework::Exception);  // a label without a name
    obj.FileItems.AddFile(Sandbox.Folder / "elsewhere.c", Km_none);
    obj.ExitCode = 0;
    EXPECT_THROW(obj.Status(), framework::Exception);  // bad input
    EXPECT_EQ(obj.ExitCode, 1);
    EXPECT_EQ(told, 3);
    obj.FileItems.Clear();
    obj.OnCommit = [](TCvsObject&) { throw framework::EInOutError(5, "a file of the host"); };
    EXPECT_THROW(obj.Commit(false), framework::EInOutError);
    EXPECT_EQ(told, 3);
}

TEST_F(Operations, AddInOneCommandUnlessQuotingIsStrict) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    obj.ConnectionType = cnPServer;
    obj.Set_ServerOnline(true);
    obj.CvsExecutable = support::FakeClient();
    obj.FileItems.AddFile(copy + "\\new\\n.c", Km_none);
    std::vector<std::string> runs;
    obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) {
        runs.push_back(obj.CommandLine);
        obj.ExitCode = 0;
    };
    const std::string whole = " add -m \" no messages\" new new\\n.c";
    EXPECT_TRUE(obj.Add());
    EXPECT_EQ(runs, std::vector<std::string>{whole});
    runs.clear();
    obj.StrictQuoting = true;
    EXPECT_TRUE(obj.Add());
    EXPECT_EQ(runs, (std::vector<std::string>{" add -m \" no messages\" new", whole}));
    runs.clear();
    obj.ConnectionType = cnLocal;
    EXPECT_TRUE(obj.Add());
    EXPECT_EQ(runs, std::vector<std::string>{whole});
}

TEST_F(Operations, NeedFilesToAddOrRemove) {
    TSandboxObject obj(Sandbox, Sandbox.CheckOut("work"));
    obj.ExitCode = 0;
    EXPECT_TRUE(obj.Add()) << "the state is that of the last command";
    obj.ExitCode = 5;
    EXPECT_FALSE(obj.Remove());
    EXPECT_EQ(obj.Messages.All(), "No files in FileList \r\nNo files in  FileList \r\n");
    EXPECT_EQ(obj.ExitCode, 5);
}

TEST_F(Operations, FailInTheOpen) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    obj.SetCVSROOT(Sandbox.Folder / "no repository");
    obj.Messages.Clear();
    EXPECT_FALSE(obj.CheckOut(false));
    EXPECT_NE(obj.Messages.All().find("no repository"), std::string::npos) << obj.Messages.All();
    EXPECT_TRUE(obj.Messages.All().ends_with(" CVS command execute  with Exitcode 1\r\n"));

    obj.Set_WorkingDirectory(Sandbox.Folder / "gone");
    obj.Messages.Clear();
    EXPECT_FALSE(obj.Status());
    EXPECT_TRUE(obj.Messages.All().starts_with("Could not create process \r\n"));
}

// --- around the command -----------------------------------------------------------------------

TEST_F(Operations, SetTheChildsEnvironment) {
    TSandboxObject obj(Sandbox);
    obj.SetCVSROOT("  :pserver:me@host:/repo  ");
    obj.Set_CVS_RSH(" rsh ");
    obj.Set_CVSIGNORE("*.o *.x");
    obj.Set_CVSREAD("1");
    EXPECT_EQ(obj.GetEnvVariable(),
              "CVSROOT=:pserver:me@host:/repo; CVS_RSH= rsh ; "
              "CVSIGNORE=*.o *.x; CVSREAD=1; PATH=");
    obj.CvsExecutable = support::FakeClient();
    obj.CommandLine = " surroundings CVSROOT CVS_RSH CVSIGNORE CVSREAD";
    obj.Execute("C:\\");
    EXPECT_EQ(obj.Messages.Texts.front(),
              "folder:C:\\;CVSROOT=:pserver:me@host:/repo;CVS_RSH= rsh ;"
              "CVSIGNORE=*.o *.x;CVSREAD=1;");
    // An empty value takes the variable away: to the client an empty CVSREAD is a set one.
    obj.Set_CVS_RSH("");
    obj.Set_CVSIGNORE("");
    obj.Set_CVSREAD("");
    EXPECT_EQ(::GetEnvironmentVariableA("CVSREAD", nullptr, 0), 0u);
    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_ENVVAR_NOT_FOUND));
}

TEST_F(Operations, RunWhereTheirCommandBelongs) {
    TSandboxObject obj(Sandbox);
    const std::string root = Sandbox.Folder.Path();
    for (const auto operation : {otCheckOut, otRelease, otRlog, otUpdate, otImport, otRtag}) {
        obj.Operation = operation;
        const bool names_module =
            operation == otCheckOut || operation == otRelease || operation == otRlog;
        EXPECT_EQ(obj.Get_CurrentProcDirectory(), names_module ? root : root + "\\mod");
    }
    EXPECT_EQ(obj.Get_Version(), "1.1b");
}

}  // namespace
