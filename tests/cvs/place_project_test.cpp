// Placing moves all of a project's files: wherever it breaks off, each must still be somewhere,
// byte for byte, and the user must be told where.

#include <gtest/gtest.h>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/text.h"
#include "tests/cvs/PlaceProject.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Links.h"
#include "tests/support/Scanner.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using framework::FileHandle;
using framework::Format;
using namespace tests;

TEST_F(PlaceProject, MakesAWorkingCopyOfTheUsersFiles) {
    Obj.Load_WorkDirTree();
    Obj.WorkDirTree.ItemExist(Project, "out")->Included = false;
    const TWorkDirItem* const below = Obj.WorkDirTree.ItemExist(Project, "sub");
    ASSERT_TRUE(below);
    TWorkDirItem* const hidden = below->Children->ItemExist(Project + "\\sub", "private.x");
    ASSERT_TRUE(hidden);
    hidden->Included = false;
    int placing = 0;
    Obj.OnPlaceProject = [&](TCvsObject& sender) {
        EXPECT_TRUE(&sender == &Obj);
        EXPECT_EQ(Obj.Messages.All(), "");
        ExpectUntouched();
        ++placing;
    };
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    EXPECT_EQ(placing, 1);

    std::size_t at = 0;
    for (const std::string& text :
         {Format("Imorting directory(%s) into repository %s \r\n", {Project, Sandbox.Repository}),
          MovedAside(),
          Format("CheckOut project %s into directory(%s) from  repository %s \r\n",
                 {"pr\xF6 j", Sandbox.Folder.Path(), Sandbox.Repository})}) {
        at = Obj.Messages.All().find(text, at);
        ASSERT_NE(at, std::string::npos) << text << Obj.Messages.All();
    }
    TSnapshot after = Before;
    after[".cvsignore"] = "out\r\n.cvsignore\r\n";
    after["sub\\.cvsignore"] = "private.x\r\n.cvsignore\r\n";
    EXPECT_EQ(Snapshot(Project), after) << Obj.Messages.All();
    EXPECT_FALSE(DirectoryExists(Backup));
    EXPECT_TRUE(DirectoryExists(Project + "\\empty\\inner"));
    EXPECT_EQ(Obj.StikyType, stNone);
    EXPECT_EQ(Obj.StikyBranch, "VENDOR");

    // Files that came back unaltered, and those that did not, as the client sees them.
    const std::string state = support::RunProcess("cvs -nq update", Project).Output;
    EXPECT_EQ(state.find(" main.c"), std::string::npos) << state;
    EXPECT_EQ(state.find("private.x"), std::string::npos) << state;
    EXPECT_EQ(state.find("out"), std::string::npos) << state;
    EXPECT_STREQ(Obj.WorkDirTree.ItemExist(Project, "main.c")->StatusName(), "Not changed");
    const std::string list = Sandbox.Ask("rls -R \"pr\xF6 j\"");
    for (const char* name : {"private.x", "result.c", "main.o"})
        EXPECT_EQ(list.find(name), std::string::npos) << list;
    EXPECT_EQ(Sandbox.Ask("checkout -p \"pr\xF6 j/data.bin\""), Files.at("data.bin"));
    Obj.CommitMessage = "and on with \"it\"";
    EXPECT_TRUE(Obj.Commit(false)) << Obj.Messages.All();
}

TEST_F(PlaceProject, KeepsTheCopyWhenAskedTo) {
    Obj.KeepProjectCopy = true;
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    EXPECT_EQ(Snapshot(Project), Before);
    EXPECT_EQ(Snapshot(Backup), Before);
    EXPECT_FALSE(DirectoryExists(Backup + "\\CVS"));
    EXPECT_TRUE(DirectoryExists(Backup + "\\empty\\inner"));
}

TEST_F(PlaceProject, LetsTheUsersBytesWinOverAnOlderProject) {
    // The module is there already, with another text, and a file that the user does not have.
    Sandbox.Write(Sandbox.Folder / "old\\main.c", "old\r\n");
    Sandbox.Write(Sandbox.Folder / "old\\other.c", "other\r\n");
    Sandbox.Client("-Q import -m old \"pr\xF6 j\" OLD OLDSTART", Sandbox.Folder / "old");
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    TSnapshot after = Before;
    after["other.c"] = "other\r\n";
    EXPECT_EQ(Snapshot(Project), after);
}

TEST_F(PlaceProject, LeavesOtherRecordsAndLinksAside) {
    Sandbox.Write(Project + "\\sub\\CVS\\Entries", "/c.c/1.1///\r\n");
    Sandbox.Write(Sandbox.Folder / "outside\\a.c", "a\r\n");
    Sandbox.Write(Sandbox.Folder / "outside\\CVS\\Entries", "/a.c/1.1///\r\n");
    tests::MakeLink(Project, "link", "../outside");
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    ExpectNothingLost();
    EXPECT_EQ(Sandbox.Read(Backup + "\\sub\\CVS\\Entries"), "/c.c/1.1///\r\n");
    EXPECT_EQ(Sandbox.Read(Backup + "\\link\\a.c"), "a\r\n");
    EXPECT_EQ(Sandbox.Read(Sandbox.Folder / "outside\\CVS\\Entries"), "/a.c/1.1///\r\n");
    EXPECT_TRUE(WasSaid("Directory(" + Backup + ") is kept, there are files left in it"));
    tests::RemoveLink(Backup, "link");
}

TEST_F(PlaceProject, DoesNotMixFoldersOfTheSameNameWithTheRecords) {
    // To the system this is the client's folder, to the user it is not.
    for (const char* name : {"\\cvs\\Entries", "\\sub\\Cvs\\a.c"})
        Sandbox.Write(Project + name, "mine\r\n");
    Before = Snapshot(Project);
    PlaceInVain();
    ExpectNothingLost();
    EXPECT_EQ(Sandbox.Read(Project + "\\CVS\\Entries").find("mine"), std::string::npos);
    EXPECT_TRUE(WasSaid("\\cvs\\Entries is not moved back: ")) << Obj.Messages.All();
    EXPECT_TRUE(WasSaid("\\sub\\Cvs\\a.c is not moved back: "));
    EXPECT_TRUE(WasSaid("Your files are in directory(" + Backup + ")"));
}

// --- refusals ---------------------------------------------------------------------------------

TEST_F(PlaceProject, RefusesWhatIsAWorkingCopy) {
    const std::string copy = Sandbox.CheckOut("work");
    Obj.Set_WorkingDirectory(copy);
    PlaceInVain();
    EXPECT_EQ(Obj.Messages.All(), "Project already  in CVS \r\n");
    // The flag is of another folder than the one that was chosen last.
    Obj.IsVCSStoredFlag = false;
    Obj.Messages.Clear();
    PlaceInVain();
    EXPECT_EQ(Obj.Messages.All(), "Project already  in CVS \r\n");
    EXPECT_FALSE(DirectoryExists(copy + ".precvs"));
}

TEST_F(PlaceProject, RefusesWhatTheCheckOutWouldNotMake) {
    const auto refuse = [this](const std::string& reason) {
        Obj.Messages.Clear();
        PlaceInVain();
        EXPECT_TRUE(Obj.Messages.All().starts_with(reason)) << Obj.Messages.All();
        ExpectUntouched();
    };
    for (const char* name : {".precvs", ".precvs\\old.c"}) {  // a file, a folder
        ::DeleteFileA(Backup.c_str());
        Sandbox.Write(Project + name, "another copy");
        refuse("Directory(" + Backup + ") already exists, nothing was done");
        EXPECT_EQ(Sandbox.Read(Project + name), "another copy");
    }
    support::DeleteFolder(Backup);
    // The module's name also stands earlier in the path, and the root was taken from there.
    Sandbox.Write(Sandbox.Folder / "x\\deep\\x\\a.c", "a\r\n");
    Obj.Set_ProjectRoot(Sandbox.Folder.Path());
    Obj.Set_WorkingDirectory(Sandbox.Folder / "x\\deep\\x");
    ASSERT_NE(Obj.ProjectRoot(), Sandbox.Folder / "x\\deep");
    refuse("Working directory(" + (Sandbox.Folder / "x\\deep\\x") +
           ") is not the folder of project x");
    // But the host may still put that right.
    Obj.OnPlaceProject = [&](TCvsObject& sender) {
        sender.Set_ProjectRoot(Sandbox.Folder / "x\\deep");
    };
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    EXPECT_TRUE(DirectoryExists(Sandbox.Folder / "x\\deep\\x\\CVS"));
    EXPECT_EQ(Sandbox.Read(Sandbox.Folder / "x\\deep\\x\\a.c"), "a\r\n");
    Obj.OnPlaceProject = nullptr;
    Obj.Set_WorkingDirectory(Project + "\\");
    refuse("There is no name for a copy of directory(" + Project + "\\), nothing was done");
    Obj.Set_ProjectRoot(Project);
    Obj.Set_Modulename("");
    refuse("Working directory(" + Project);
}

TEST_F(PlaceProject, ChecksBeforeItWritesAnything) {
    const auto refuse = [this](const std::string& folder, const std::string& reason) {
        Obj.Load_WorkDirTree();
        Obj.WorkDirTree.ItemExist(Obj.WorkingDirectory(), "main.c")->Included = false;
        Obj.Set_Modulename(folder);
        Obj.Messages.Clear();
        PlaceInVain();
        EXPECT_EQ(Obj.Messages.All(), reason);
        EXPECT_EQ(Snapshot(Project), Before) << "and no list of what was excluded";
        Obj.Set_WorkingDirectory(Project);
    };
    // The model is that of the folder that was chosen before.
    const std::string gone = Sandbox.Folder / "gone";
    refuse("gone", "Directory(" + gone + ") does not exist, nothing was done\r\n");
    Sandbox.Write(Backup + "\\old.c", "");
    refuse("pr\xF6 j", "Directory(" + Backup + ") already exists, nothing was done\r\n");
}

TEST_F(PlaceProject, KeepsThePatternsOfIgnoreListsWhenAskedTo) {
    Obj.KeepIgnorePatterns = true;
    Obj.UseDefaultIgnore = true;
    Sandbox.Write(Project + "\\.cvsignore", "*.private\r\n.cvsignore\r\n");
    Sandbox.Write(Project + "\\sub\\.cvsignore", "*.private\r\n");
    for (const char* name : {"\\key.private", "\\sub\\key.private"})
        Sandbox.Write(Project + name, "secret");
    Before = Snapshot(Project);
    Obj.Load_WorkDirTree();
    Obj.WorkDirTree.ItemExist(Project, "sub")
        ->Children->ItemExist(Project + "\\sub", "private.x")
        ->Included = false;
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    TSnapshot after = Before;
    after["sub\\.cvsignore"] = "*.private\r\nprivate.x\r\n.cvsignore\r\n";
    EXPECT_EQ(Snapshot(Project), after);
    const std::string list = Sandbox.Ask("rls -R \"pr\xF6 j\"");
    EXPECT_EQ(list.find("private"), std::string::npos) << list;
}

// --- nothing is lost --------------------------------------------------------------------------

TEST_F(PlaceProject, TouchesNothingWhenTheImportFails) {
    struct {
        const char* Name;
        std::function<void()> Arrange;
        std::string Says;
    } const cases[] = {
        {"refused", [&] { Obj.VendorTag.clear(); }, "CVS command execute  with Exitcode 1"},
        {"not started", [&] { Obj.CvsExecutable = "no such client"; }, "Could not create process"},
        {"no root", [&] { Obj.SetCVSROOT(""); }, "CVSROOT variable is not set "},
    };
    for (const auto& [name, arrange, says] : cases) {
        SCOPED_TRACE(name);
        Obj.Messages.Clear();
        arrange();
        if (Obj.CVSROOT().empty())
            tests::ExpectForm("CVS PlaceProject",
                              [](framework::TForm& form) { tests::Click(form, "BitBtn1"); });
        else
            ExpectResult(false);
        EXPECT_FALSE(Obj.PlaceProjectAccepted());
        EXPECT_TRUE(WasSaid(says)) << Obj.Messages.All();
        ExpectUntouched();
        EXPECT_FALSE(DirectoryExists(Backup));
    }
}

TEST_F(PlaceProject, TouchesNothingWhenANameCouldNotBeBroughtBack) {
    // The client ignores these two by default: it is not the one who would notice.
    const std::wstring project = framework::ToWide(Project);
    const std::wstring file = project + L"\\sub\\\x4E2D.o", folder = project + L"\\\x4E2D.old";
    ASSERT_TRUE(::CopyFileW((project + L"\\main.c").c_str(), file.c_str(), TRUE));
    Before = Snapshot(Project);
    const auto refuse = [this](const std::string& name) {
        Obj.Messages.Clear();
        PlaceInVain();
        EXPECT_EQ(
            Obj.Messages.All(),
            "The name " + name + " is too long or not in the code page, nothing was done\r\n");
        ExpectUntouched();
        EXPECT_FALSE(DirectoryExists(Backup));
    };
    refuse(Project + "\\sub\\?.o");
    ::DeleteFileW(file.c_str());
    ASSERT_TRUE(::CreateDirectoryW(folder.c_str(), nullptr));
    Before = Snapshot(Project);
    refuse(Project + "\\?.old");
    ::RemoveDirectoryW(folder.c_str());
    // Not too long now, but in the backup.
    std::string deep = Project + "\\deep";
    while (deep.size() < 230)
        deep += "\\12345678";
    const std::string last = deep + "\\" + std::string(258 - deep.size(), 'x');
    Sandbox.Write(last, "far away");
    Before = Snapshot(Project);
    refuse(last);
}

TEST_F(PlaceProject, MakesAWholeWorkingCopyWhateverWasCheckedOutBefore) {
    Obj.UseTargetDir = Obj.ToStandardOutput = Obj.LocalOnly = true;
    Obj.TargetDir = "elsewhere";
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    EXPECT_TRUE(Obj.UseTargetDir && Obj.ToStandardOutput && Obj.LocalOnly) << "they stay set";
    EXPECT_TRUE(DirectoryExists(Project + "\\CVS") &&
                DirectoryExists(Project + "\\sub\\deep\\CVS"));
    EXPECT_FALSE(DirectoryExists(Sandbox.Folder / "elsewhere"));
    EXPECT_EQ(Snapshot(Project), Before);
}

TEST_F(PlaceProject, TouchesNothingWhenTheIgnoreListsCannotBeWritten) {
    Sandbox.Write(Project + "\\.cvsignore", "main.c\r\n");
    Before = Snapshot(Project);
    framework::FileFunctions().Write = WriteNothing;
    PlaceInVain();
    EXPECT_TRUE(Obj.Messages.All().starts_with(Project + "\\")) << Obj.Messages.All();
    EXPECT_FALSE(WasSaid("Imorting"));
    ExpectUntouched();
    EXPECT_FALSE(DirectoryExists(Backup));
}

TEST_F(PlaceProject, TouchesNothingWhenTheFolderCannotBeMovedAside) {
    framework::FileFunctions().Move = RefuseToMove;
    Victim = Project;
    EXPECT_THROW(Obj.PlaceProjectAccepted(), framework::EOSError);
    EXPECT_TRUE(WasSaid(Format("Copy directory(%s) to  %s is failed \r\n", {Project, Backup})));
    ExpectUntouched();
    EXPECT_FALSE(DirectoryExists(Backup));
}

TEST_F(PlaceProject, GoesThroughWhileAScannerIsAtWork) {
    const TScanner scanner(3);
    ExpectResult(true);
    EXPECT_TRUE(Obj.PlaceProjectAccepted()) << Obj.Messages.All();
    EXPECT_EQ(Snapshot(Project), Before);
    EXPECT_FALSE(DirectoryExists(Backup)) << Obj.Messages.All();
    EXPECT_TRUE(Obj.DeleteCVSDirs(Project)) << Obj.Messages.All();
    for (const char* name : {"\\CVS", "\\sub\\deep\\CVS"})
        EXPECT_FALSE(DirectoryExists(Project + name));
}

TEST_F(PlaceProject, LosesNothingWhenAFileIsOpenFromTheStart) {
    const TScanner noWaiting(0);
    // Whether the system moves the folder then, and whether the client can read the file, may
    // differ; what must come of it does not.
    FileHandle open;
    When(" CVS command execute", [&] {
        if (!open && DirectoryExists(Project))
            open = OpenForOneself(Project + "\\lf.c");
    });
    bool placed = true;
    try {
        ExpectResult(false);
        placed = Obj.PlaceProjectAccepted();
    } catch (const framework::EOSError&) {
        EXPECT_FALSE(DirectoryExists(Backup));
    }
    open.Reset();
    EXPECT_FALSE(placed);
    ExpectNothingLost();
}

}  // namespace
