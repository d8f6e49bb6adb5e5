// Something goes wrong after placing has moved the user's files aside.

#include <gtest/gtest.h>

#include <functional>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "tests/cvs/PlaceProject.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Scanner.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using framework::FileHandle;
using namespace tests;

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
    const TScanner noWaiting(0);
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

// --- whose folder it is -----------------------------------------------------------------------

TEST_F(PlaceProject, LeavesABackupAloneThatIsNotItsOwn) {
    // Somebody makes a folder of that name, and then something goes wrong.
    When("Imorting directory", [this] {
        Sandbox.Write(Backup + "\\main.c", "older");
        throw framework::Exception("the host breaks off");
    });
    EXPECT_THROW(Obj.PlaceProjectAccepted(), framework::Exception);
    ExpectUntouched();
    EXPECT_EQ(Sandbox.Read(Backup + "\\main.c"), "older");
    // The same, later: the folder cannot be moved there.
    support::DeleteFolder(Backup);
    Obj.OnMessage = [this](framework::TObject*, const std::string& said) {
        if (said.starts_with(" CVS command execute successful"))
            Sandbox.Write(Backup + "\\main.c", "older");
    };
    EXPECT_THROW(Obj.PlaceProjectAccepted(), framework::EOSError);
    ExpectUntouched();
    EXPECT_EQ(Sandbox.Read(Backup + "\\main.c"), "older");
}

TEST_F(PlaceProject, BringsItsFilesBackWhateverTheHostTurnsTo) {
    Sandbox.Write(Sandbox.Folder / "other\\o.c", "other");
    Sandbox.Write(Sandbox.Folder / "other.precvs\\main.c", "another's copy");
    When("CheckOut project", [this] { Obj.Set_WorkingDirectory(Sandbox.Folder / "other"); });
    tests::ExpectForm("CVS PlaceProject",
                      [](framework::TForm& form) { tests::Click(form, "BitBtn1"); });
    Obj.PlaceProjectAccepted();
    EXPECT_EQ(Snapshot(Project), Before);
    EXPECT_FALSE(DirectoryExists(Backup));
    EXPECT_EQ(Sandbox.Read(Sandbox.Folder / "other.precvs\\main.c"), "another's copy");
}

TEST_F(PlaceProject, BringsAllItsFilesBackBeforeTheHostCanBreakOff) {
    const TScanner noWaiting(0);
    FileHandle open;
    const auto raise = [] { throw framework::EInOutError(ERROR_DISK_FULL, "a protocol"); };
    When("CheckOut project", [&] { open = OpenForOneself(Backup + "\\lf.c"); });
    When("File " + Backup, raise);
    EXPECT_THROW(Obj.PlaceProjectAccepted(), framework::EInOutError);
    open.Reset();
    EXPECT_EQ(Snapshot(Backup).size(), 1u) << "the one that is held open";
    ExpectNothingLost();
}

TEST_F(PlaceProject, BringsItsFilesBackWhenTheHostBreaksOffAtOnce) {
    When("For directory", [] { throw framework::EInOutError(ERROR_DISK_FULL, "a protocol"); });
    EXPECT_THROW(Obj.PlaceProjectAccepted(), framework::EInOutError);
    EXPECT_EQ(Snapshot(Project), Before);
    EXPECT_FALSE(DirectoryExists(Backup));
}

}  // namespace
