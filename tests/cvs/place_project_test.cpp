// Placing moves all of a project's files: wherever it breaks off, each must still be somewhere,
// byte for byte, and the user must be told where.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "framework/base/text.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Links.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using framework::FileExists;
using framework::FileHandle;
using framework::Format;

/// The bytes of all files below a folder, by their relative names.
using TSnapshot = std::map<std::string, std::string>;

TSnapshot Snapshot(const std::string& folder) {
    namespace fs = std::filesystem;
    TSnapshot snapshot;
    const fs::path top(framework::ToWide(folder));
    if (!fs::exists(top))
        return snapshot;
    for (fs::recursive_directory_iterator entry(top), end; entry != end; ++entry) {
        if (entry->path().filename() == "CVS") {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file()) {
            std::ifstream file(entry->path(), std::ios::binary);
            EXPECT_TRUE(file) << entry->path();
            snapshot[framework::FromWide(entry->path().lexically_relative(top).wstring())] =
                std::string(std::istreambuf_iterator(file), {});
        }
    }
    return snapshot;
}

FileHandle OpenForOneself(const std::string& path) {
    FileHandle file(
        ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(file) << path;
    return file;
}

// What the disk does instead of the system's own functions.

std::string Victim;  // the calls for names that end like this fail

BOOL WINAPI RefuseToMove(const char* from, const char* to, DWORD flags) {
    if (!std::string(from).ends_with(Victim))
        return ::MoveFileExA(from, to, flags);
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI CopyHalf(const char* from, const char* to, BOOL failIfExists) {
    if (!std::string(from).ends_with(Victim))
        return ::CopyFileA(from, to, failIfExists);
    const std::string bytes = support::ReadBytes(from);
    support::WriteBytes(to, std::string_view(bytes).substr(0, bytes.size() / 2));
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI WriteNothing(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*) {
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

class WholeProject : public testing::Test {
protected:
    ~WholeProject() override { framework::FileFunctions() = {}; }

    /// The next form that tells how placing ended says so; it is closed.
    void ExpectResult(bool success) const {
        const std::string text = "project \"" + Obj.Modulename() + "\" place into repository " +
                                 Sandbox.Repository +
                                 (success ? " successfuly completed" : " execute with Exitcode 1");
        tests::ExpectForm("CVS PlaceProject", [text](framework::TForm& form) {
            EXPECT_EQ(tests::TextOf(form, "Label1"), text);
            tests::Click(form, "BitBtn1");
        });
    }
    /// Acts when the user is told something that begins like this.
    void When(const std::string& text, std::function<void()> action) {
        Obj.OnMessage = [text, action, before = Obj.OnMessage](framework::TObject* sender,
                                                               const std::string& said) {
            before(sender, said);
            if (said.starts_with(text))
                action();
        };
    }
    bool WasSaid(const std::string& text) const {
        return Obj.Messages.All().find(text) != std::string::npos;
    }

    tests::TSandbox Sandbox;
    tests::TSandboxObject Obj{Sandbox};
};

class PlaceProject : public WholeProject {
protected:
    PlaceProject() {
        Obj.Set_Modulename("pr\xF6 j");
        Obj.StrictQuoting = true;
        Obj.VendorTag = "VENDOR";
        Obj.ReleaseTag = "START";
        Obj.CommitMessage = "as it was";
        Obj.UseDefaultIgnore = true;
        // The client wants the mode of a pattern in its own quotes.
        Obj.FileItems.AddExt("*.bin -k 'b'", false, Km_none);
        for (const auto& [name, bytes] : Files)
            Sandbox.Write(Project + "\\" + name, bytes);
        framework::ForceDirectories(Project + "\\empty\\inner");
        ::SetFileAttributesA((Project + "\\read only.c").c_str(), FILE_ATTRIBUTE_READONLY);
        ::SetFileAttributesA((Project + "\\hidden.c").c_str(), FILE_ATTRIBUTE_HIDDEN);
        Before = Snapshot(Project);
    }

    /// Runs it; its form is to tell of a failure.
    void PlaceInVain() {
        ExpectResult(false);
        EXPECT_FALSE(Obj.PlaceProjectAccepted());
    }
    void ExpectNothingLost() const {
        const TSnapshot project = Snapshot(Project), backup = Snapshot(Backup);
        for (const auto& [name, bytes] : Before) {
            const auto here = project.find(name), aside = backup.find(name);
            EXPECT_TRUE((here != project.end() && here->second == bytes) ||
                        (aside != backup.end() && aside->second == bytes))
                << name;
        }
    }
    void ExpectUntouched() const {
        EXPECT_EQ(Snapshot(Project), Before);
        EXPECT_FALSE(DirectoryExists(Project + "\\CVS"));
    }
    /// What the user reads when the files were moved aside.
    std::string MovedAside() const {
        return Format("For directory(%s) created copy =  %s  \r\n", {Project, Backup});
    }

    const TSnapshot Files{
        {"main.c", "main\r\n"},
        {"lf.c", "line\nline\n"},
        {"mixed.c", "\r\na\nb\r\r\nlast"},
        {"keyword.c", "$Id$ $Revision$\r\n"},
        {"data.bin", std::string("\r\n\0\x1A\n\xFF$Id$", 11)},
        {"nothing.c", ""},
        {"read only.c", "mine\r\n"},
        {"hidden.c", "hidden\r\n"},
        {"gr\xFC\xDF e 100%.c", "\xE4\r\n"},
        {"main.o", "ignored by default"},
        {"sub\\private.x", "ignored\r\n"},
        {"out\\result.c", "in an ignored folder\r\n"},
        {"sub\\deep\\c.c", "c\r\n"},
    };
    const std::string Project = Sandbox.Folder / "pr\xF6 j", Backup = Project + ".precvs";
    TSnapshot Before;
};

TEST_F(PlaceProject, MakesAWorkingCopyOfTheUsersFiles) {
    Obj.Load_WorkDirTree();
    Obj.WorkDirTree.ItemExist(Project, "out")->Included = false;
    Obj.WorkDirTree.ItemExist(Project, "sub")
        ->Children->ItemExist(Project + "\\sub", "private.x")
        ->Included = false;
    int placing = 0;
    Obj.OnPlaceProject = [&](TCvsObject& sender) {
        EXPECT_EQ(&sender, &Obj);
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
    Obj.OnPlaceProject = [](TCvsObject&) { ADD_FAILURE() << "nothing is to be placed"; };
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
    Obj.OnPlaceProject = [](TCvsObject&) { ADD_FAILURE() << "nothing is to be placed"; };
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
    Obj.Set_WorkingDirectory(Project + "\\");
    refuse("There is no name for a copy of directory(" + Project + "\\), nothing was done");
    Obj.Set_ProjectRoot(Project);
    Obj.Set_Modulename("");
    refuse("Working directory(" + Project);
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

TEST_F(PlaceProject, LosesNothingWhenAFileIsOpenFromTheStart) {
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

/// Something goes wrong once the files are aside.
struct TMishap {
    const char* Name;
    /// The fixture is not complete here, so what it offers is handed over.
    std::function<void(TCvsObject& obj, const std::string& project, const std::string& backup)>
        Happens;
    const char* Says;
    bool FilesAreBack;  ///< The project is complete again; otherwise some files are aside.
};

void PrintTo(const TMishap& mishap, std::ostream* out) {
    *out << mishap.Name;
}

class PlaceProjectMishap : public PlaceProject, public testing::WithParamInterface<TMishap> {};

/// Held open until the test is over.
FileHandle& HeldOpen() {
    static FileHandle file;
    return file;
}

void CheckOutHalf(TCvsObject& obj, const std::string& arguments) {
    obj.CvsExecutable = support::FakeClient();
    obj.CommandLine = " half-check-out " + arguments;
}

const TMishap Mishaps[] = {
    {"ClientIsMissing",
     [](TCvsObject& obj, const std::string&, const std::string&) {
         obj.CvsExecutable = "no such client";
     },
     "Could not create process", true},
    {"ClientFailsHalfWay",
     [](TCvsObject& obj, const std::string&, const std::string&) {
         CheckOutHalf(obj, "\"pr\xF6 j\" main.c 0");
     },
     "CVS command execute  with Exitcode 1", true},
    {"ClientIsKilledHalfWay",
     [](TCvsObject& obj, const std::string&, const std::string&) {
         CheckOutHalf(obj, "\"pr\xF6 j\" main.c 60000");
         obj.OnMessage = [&obj, before = obj.OnMessage](framework::TObject* sender,
                                                        const std::string& said) {
             before(sender, said);
             // The client waits; nothing more is said that could make the run look at it.
             if (said.starts_with("U "))
                 obj.Aborted = true;
         };
     },
     "User cancel execute command", true},
    {"ClientMakesAnotherFolder",
     [](TCvsObject& obj, const std::string&, const std::string&) {
         obj.CommandLine = " -Q checkout -d elsewhere CVSROOT";
     },
     "is not made by the check-out of project pr\xF6 j", true},
    {"HostBreaksOff",
     [](TCvsObject&, const std::string&, const std::string&) { throw framework::EAbort(); }, "",
     true},
    {"FileInTheWayOfAFolder",
     [](TCvsObject& obj, const std::string&, const std::string&) {
         CheckOutHalf(obj, "\"pr\xF6 j\" sub 0");
     },
     "\\sub: ", false},
    {"FileIsOpen",
     [](TCvsObject&, const std::string&, const std::string& backup) {
         HeldOpen() = OpenForOneself(backup + "\\lf.c");
     },
     "\\lf.c is not moved back: ", false},
    {"UnalteredFileIsOpen",
     [](TCvsObject&, const std::string&, const std::string& backup) {
         HeldOpen() = OpenForOneself(backup + "\\main.c");
     },
     "\\main.c is not moved back: ", false},
    {"NoSpaceToMove",
     [](TCvsObject&, const std::string&, const std::string&) {
         framework::FileFunctions().Move = RefuseToMove;
         Victim = "\\main.o";
     },
     "\\main.o is not moved back: ", false},
    {"NoSpaceToCopy",
     [](TCvsObject& obj, const std::string&, const std::string&) {
         obj.KeepProjectCopy = true;
         framework::FileFunctions().Copy = CopyHalf;
         Victim = "\\keyword.c";
     },
     "\\keyword.c is not moved back: ", false},
};

TEST_P(PlaceProjectMishap, LosesNothing) {
    When("CheckOut project", [this] { GetParam().Happens(Obj, Project, Backup); });
    if (GetParam().Name == std::string("HostBreaksOff"))
        EXPECT_THROW(Obj.PlaceProjectAccepted(), framework::EAbort);
    else
        PlaceInVain();
    HeldOpen().Reset();
    ExpectNothingLost();
    EXPECT_TRUE(WasSaid(MovedAside()));
    EXPECT_TRUE(WasSaid(GetParam().Says)) << Obj.Messages.All();
    if (GetParam().FilesAreBack) {
        EXPECT_EQ(Snapshot(Project), Before);
        EXPECT_FALSE(DirectoryExists(Backup));
        EXPECT_TRUE(WasSaid("Your files are in directory(" + Project + ")"));
    } else {
        EXPECT_TRUE(WasSaid("Your files are in directory(" + Backup + ")"));
    }
}

INSTANTIATE_TEST_SUITE_P(, PlaceProjectMishap, testing::ValuesIn(Mishaps),
                         [](const auto& info) { return std::string(info.param.Name); });

// --- pulling and releasing --------------------------------------------------------------------

TEST_F(WholeProject, PullsByCheckOutOrExport) {
    int pulling = 0;
    Obj.OnPullProject = [&](TCvsObject& sender) {
        EXPECT_EQ(&sender, &Obj);
        ++pulling;
    };
    struct {
        bool Export;
        std::string Module, Says;
    } const cases[] = {
        {false, "mod", " successfuly completed"},
        {false, "none", " execute with Exitcode 1"},
        {true, "mod", " successfuly completed"},
        {true, "none", " execute with Exitcode 1"},
    };
    Obj.StikyType = stHead;
    for (const auto& [exporting, module, says] : cases) {
        const std::string root = Sandbox.Folder / (exporting ? "exported" : "checked out");
        framework::ForceDirectories(root);
        Obj.Set_ProjectRoot(root);
        Obj.Set_Modulename(module);
        Obj.ExportInsteadOfCheckout = exporting;
        Obj.Messages.Clear();
        tests::ExpectForm("CVS Pull Project ", [&](framework::TForm& form) {
            EXPECT_EQ(tests::TextOf(form, "Label1"),
                      "project \"" + module + "\" pull into directory " + root + says);
            tests::Click(form, "BitBtn1");
        });
        EXPECT_EQ(Obj.PullProjectAccepted(), module == "mod") << Obj.Messages.All();
        EXPECT_EQ(WasSaid("CheckOut project " + module), !exporting);
        EXPECT_EQ(FileExists(root + "\\mod\\sub\\c.c"), true);
        EXPECT_EQ(DirectoryExists(root + "\\mod\\CVS"), !exporting);
        if (module != "mod")
            continue;
        if (Obj.WorkDirTree.Empty())
            Obj.Load_WorkDirTree();
        EXPECT_EQ(Obj.WorkDirTree.GetItem(0).Directory, root + "\\mod") << "once it is loaded";
    }
    EXPECT_EQ(pulling, 4);
    // Nothing was run: the code of the command before is not its own.
    Obj.ExitCode = 0;
    Obj.SetCVSROOT("");
    tests::ExpectForm("CVS Pull Project ", [](framework::TForm& form) {
        EXPECT_TRUE(tests::TextOf(form, "Label1").ends_with(" execute with Exitcode 1"));
        tests::Click(form, "BitBtn1");
    });
    EXPECT_FALSE(Obj.PullProjectAccepted());
}

TEST_F(WholeProject, ReleasesWithTheUsersAnswerOrByForce) {
    const std::string copy = Sandbox.CheckOut("work");
    Obj.Set_WorkingDirectory(copy);
    int releasing = 0;
    Obj.OnRelease = [&](TCvsObject& sender) {
        EXPECT_EQ(&sender, &Obj);
        EXPECT_EQ(Obj.Operation, otRelease);
        ++releasing;
    };
    std::string command;
    When("Release directory", [&] {
        command = std::exchange(Obj.CommandLine, " ask 2");
        Obj.CvsExecutable = support::FakeClient();
    });
    // All that is said before the end counts as a question; this host lets one be asked.
    When("Are you sure? ", [&] { Obj.AnswerPrompts = false; });
    struct {
        const char *Button, *Answer;
    } const cases[] = {{"BitBtn1", "Yes"}, {"BitBtn2", "No"}, {nullptr, "Yes"}};
    for (const auto& [button, answer] : cases) {
        Obj.Messages.Clear();
        Obj.ReleaseDelete = Obj.ReleaseForce = button == nullptr;
        if (button)
            tests::ExpectForm("CVS confirmation", [&](framework::TForm& form) {
                EXPECT_NE(tests::TextOf(form, "Label1").find("Are you sure? "), std::string::npos);
                tests::Click(form, button);
            });
        EXPECT_TRUE(Obj.ReleaseAccepted()) << Obj.Messages.All();
        EXPECT_EQ(command, button ? " release mod" : " release -d -f mod");
        EXPECT_TRUE(Obj.Messages.All().starts_with("Release directory(" + copy + ")  \r\n"));
        EXPECT_TRUE(WasSaid(std::string("answer:") + answer + "\r\n;")) << Obj.Messages.All();
        EXPECT_FALSE(Obj.AnswerPrompts);
    }
    EXPECT_EQ(releasing, 3);
}

TEST_F(WholeProject, LeavesNoAnswerToTheNextCommand) {
    Obj.Set_WorkingDirectory(Sandbox.CheckOut("work"));
    When("Release directory", [] { throw framework::EAbort(); });
    EXPECT_THROW(Obj.ReleaseAccepted(), framework::EAbort);
    EXPECT_FALSE(Obj.AnswerPrompts);
    Obj.SetCVSROOT("");
    EXPECT_FALSE(Obj.ReleaseAccepted());
    EXPECT_FALSE(Obj.AnswerPrompts);
}

}  // namespace
