// The steps of the working day. Each ends with a look at the repository or the files by other means
// than those of the step itself.

#include <string>

#include "core/Cvs_utils.h"
#include "framework/base/files.h"
#include "support/Process.h"
#include "workday/Sample.h"
#include "workday/Workday.h"

namespace workday {

using tandrel::SlashSep;
using tandrel::TCvsObject;

void TWorkday::ExpectExit(const TCvsObject& cvs, int code) {
    Expect(cvs.ExitCode == code, "exit code " + std::to_string(cvs.ExitCode) + " instead of " +
                                     std::to_string(code));
}

void TWorkday::CreateRepository() {
    TCvsObject creator;
    Connect(creator, "");
    creator.Set_WorkingDirectory("");
    creator.TCustomCvsObj::CreateLocalRepository();
    Expect(creator.ParseCommand(), "there is no command to run");
    creator.Execute(creator.Get_CurrentProcDirectory());
    ExpectExit(creator, 0);
    Expect(Contains(AskClient("rls CVSROOT"), "modules"),
           "the client finds no administrative files in the repository");
}

void TWorkday::ImportProject() {
    const std::string project = Folder_ / Module;
    support::WriteBytes(SlashSep(project, "main.c"), MainFile);
    support::WriteBytes(SlashSep(project, "notes.txt"), "one\r\ntwo\r\n");
    support::WriteBytes(SlashSep(project, "doc\\guide.txt"), "guide\r\n");
    TCvsObject importer;
    Connect(importer, "");
    importer.Set_ProjectRoot(Folder_.Path());
    importer.CommitMessage = "first import";
    importer.VendorTag = "SAMPLE";
    importer.ReleaseTag = "START";
    importer.Import(false);
    ExpectExit(importer, 0);
    const std::string listing = AskClient("rls -R sample");
    for (const char* name : {"main.c", "notes.txt", "guide.txt"})
        Expect(Contains(listing, name), std::string(name) + " is not in the repository");
}

void TWorkday::CheckOut(TCvsObject& who) {
    who.CheckOut(false);
    ExpectExit(who, 0);
    Expect(support::ReadBytes(SlashSep(who.WorkingDirectory(), "main.c")) == MainFile,
           "main.c did not come as it was imported");
    Expect(framework::FileExists(SlashSep(who.WorkingDirectory(), "doc\\guide.txt")),
           "the folder doc did not come");
    who.Set_WorkingDirectory(who.WorkingDirectory());
    Expect(who.IsVCSStoredFlag, "the working copy is not recognised as one");
}

void TWorkday::ChangeFile() {
    support::WriteBytes(SlashSep(Alice_.WorkingDirectory(), "main.c"), ChangedMainFile);
    const auto update = support::RunProcess("cvs -nq update", Alice_.WorkingDirectory());
    Write(update.Output);
    Expect(Contains(update.Output, "M main.c"), "the client does not see the change");
}

void TWorkday::AddFiles() {
    const std::string folder = Alice_.WorkingDirectory();
    support::WriteBytes(SlashSep(folder, "README"), "read me\r\n");
    support::WriteBytes(SlashSep(folder, "lib\\util.c"), "int util;\r\n");
    Alice_.CommitMessage = "more files";
    Alice_.FileItems.AddFile(SlashSep(folder, "README"), tandrel::Km_none);
    Alice_.FileItems.AddFile(SlashSep(folder, "lib\\util.c"), tandrel::Km_none);
    Alice_.Add();
    Alice_.FileItems.Clear();
    ExpectExit(Alice_, 0);
    const std::string entries = support::ReadBytes(SlashSep(folder, "lib\\CVS\\Entries"));
    Expect(Contains(entries, "/util.c/0/"), "util.c is not marked as added");
}

void TWorkday::ShowStatus() {
    Alice_.StatusFile(SlashSep(Alice_.WorkingDirectory(), "main.c"));
    ExpectExit(Alice_, 0);
    Expect(Contains(Messages_, "Locally Modified"), "the status does not tell of the change");
}

void TWorkday::ShowDiff() {
    Alice_.FileItems.AddFile(SlashSep(Alice_.WorkingDirectory(), "main.c"), tandrel::Km_none);
    Alice_.Diff();
    Alice_.FileItems.Clear();
    // The client's way of saying that there are differences.
    ExpectExit(Alice_, 1);
    Expect(Contains(Messages_, "> int main() { return 42; }"), "the new line is not shown");
}

void TWorkday::Commit() {
    Alice_.CommitMessage = "answer, and more files";
    Alice_.Commit(false);
    ExpectExit(Alice_, 0);
    Expect(Contains(AskClient("checkout -p sample/main.c"), "return 42;"),
           "the repository does not have the change");
    Expect(Contains(AskClient("rls -R sample"), "util.c"), "the repository does not have util.c");
}

void TWorkday::Tag() {
    Alice_.TagName = "REL_1_0";
    Alice_.Create_Tag(false);
    ExpectExit(Alice_, 0);
    Expect(Contains(AskClient("rlog -h sample/main.c"), "REL_1_0: 1.2"),
           "the repository does not have the tag");
}

void TWorkday::ShowLog() {
    Alice_.LogFile(SlashSep(Alice_.WorkingDirectory(), "main.c"));
    ExpectExit(Alice_, 0);
    Expect(Contains(Messages_, "answer, and more files"), "the log lacks the commit's message");
    Expect(Contains(Messages_, "REL_1_0"), "the log lacks the tag");
}

void TWorkday::UpdateSecondCopy() {
    Bob_.CreateDirs = true;
    Bob_.Update();
    ExpectExit(Bob_, 0);
    const std::string folder = Bob_.WorkingDirectory();
    Expect(support::ReadBytes(SlashSep(folder, "main.c")) == ChangedMainFile,
           "main.c is not up to date");
    Expect(framework::FileExists(SlashSep(folder, "lib\\util.c")), "the new folder did not come");
}

void TWorkday::RemoveFile() {
    const std::string file = SlashSep(Alice_.WorkingDirectory(), "notes.txt");
    Alice_.RemoveFile(file, true);
    ExpectExit(Alice_, 0);
    Alice_.CommitMessage = "notes are no longer needed";
    Alice_.Commit(false);
    ExpectExit(Alice_, 0);
    Expect(!framework::FileExists(file), "notes.txt is still in the working copy");
    Expect(!Contains(AskClient("rls sample"), "notes.txt"), "notes.txt is still in the repository");
}

}  // namespace workday
