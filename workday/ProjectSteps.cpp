// The steps that handle whole projects.

#include <algorithm>
#include <string>

#include "core/Cvs_utils.h"
#include "framework/base/files.h"
#include "workday/Sample.h"
#include "workday/Workday.h"

namespace workday {

using framework::DirectoryExists;
using framework::FileExists;
using tandrel::SlashSep;
using tandrel::TCvsObject;

namespace {

constexpr const char* OldProject = "legacy";

/// The model as a text tree, with what it knows of each file.
void WriteTree(const tandrel::TWorkDirTree& tree, const std::string& indent) {
    for (const tandrel::TWorkDirItem& item : tree) {
        std::string line = indent + item.Name + (item.IsDirectory ? "\\" : "");
        line.resize(std::max<std::size_t>(line.size() + 1, 32), ' ');
        Write(line + item.StatusName() +
              (item.Revision.empty() ? "" : "  " + item.Revision + "  " + item.TimeStamp) + "\n");
        WriteTree(*item.Children, indent + "  ");
    }
}

}  // namespace

void TWorkday::PlaceOldProject() {
    const std::string project = Folder_ / OldProject;
    support::WriteBytes(SlashSep(project, "main.c"), MainFile);
    support::WriteBytes(SlashSep(project, "main.o"), "object");
    support::WriteBytes(SlashSep(project, "src\\deep\\part.c"), "int part;\r\n");
    support::WriteBytes(SlashSep(project, "out\\legacy.exe"), "program");
    Connect(Placer_, "");
    Placer_.Set_WorkingDirectory(project);
    Placer_.Load_WorkDirTree();
    for (const char* name : {"main.o", "out"})
        Placer_.WorkDirTree.ItemExist(project, name)->Included = false;
    Placer_.OnPlaceProject = [](TCvsObject& cvs) {
        cvs.VendorTag = "LEGACY";
        cvs.ReleaseTag = "PLACED";
        cvs.CommitMessage = "placed";
    };
    Expect(Placer_.PlaceProjectAccepted(), "the project was not placed");
    ExpectExit(Placer_, 0);
    const std::string listing = AskClient("rls -R legacy");
    for (const char* name : {"main.c", "part.c"})
        Expect(Contains(listing, name), std::string(name) + " is not in the repository");
    for (const char* name : {"main.o", "legacy.exe"})
        Expect(!Contains(listing, name), std::string(name) + " was not ignored");
    for (const char* name : {"main.c", "main.o", "src\\deep\\part.c", "out\\legacy.exe"})
        Expect(FileExists(SlashSep(project, name)), std::string(name) + " is gone");
    Expect(!DirectoryExists(project + ".precvs"), "the backup was left behind");
}

void TWorkday::ShowModel() {
    const std::string folder = Placer_.WorkingDirectory();
    support::WriteBytes(SlashSep(folder, "new.c"), "int fresh;\r\n");
    Placer_.Load_WorkDirTree();
    WriteTree(Placer_.WorkDirTree, "  ");
    const auto state = [&](const char* name) -> std::string {
        const auto* item = Placer_.WorkDirTree.ItemExist(folder, name);
        return item ? item->StatusName() : "unknown";
    };
    Expect(state("main.c") == "Not changed", "main.c counts as " + state("main.c"));
    Expect(state("main.o") == "Ignore", "main.o counts as " + state("main.o"));
    Expect(state("src") == "Directory", "src counts as " + state("src"));
    Expect(state("new.c") == "Not in repository", "new.c counts as " + state("new.c"));
}

void TWorkday::ShowNames() {
    Alice_.TagName = "STABLE";
    Expect(Alice_.Create_Rtag(false), "the branch was not made");
    // The capture ends after the first pieces; a whole log needs more of them.
    Alice_.OutputListLimit = 10000;
    Alice_.FileItems.AddFile(SlashSep(Alice_.WorkingDirectory(), "main.c"), tandrel::Km_none);
    Expect(Alice_.ParseLogInfo(), "the log was not given");
    Alice_.FileItems.Clear();
    std::string names;
    for (const tandrel::TLogClass& item : Alice_.LogListA)
        names += (item.IsLabel ? "  label   " : "  branch  ") + item.Name + " (" + item.Value + ")\n";
    Write(names);
    Expect(Contains(names, "  label   REL_1_0 (1.2)"), "the label is not among the names");
    Expect(Contains(names, "  branch  STABLE (1.2.0.2)"), "the branch is not among the names");
}

void TWorkday::PullByExport() {
    TCvsObject puller;
    Connect(puller, "export");
    puller.StikyType = tandrel::stTag;
    puller.StikyTag = "REL_1_0";
    puller.ExportInsteadOfCheckout = true;
    Expect(puller.PullProjectAccepted(), "the project was not pulled");
    ExpectExit(puller, 0);
    const std::string folder = Folder_ / "export\\sample";
    Expect(support::ReadBytes(SlashSep(folder, "main.c")) == ChangedMainFile,
           "main.c is not that of the label");
    Expect(FileExists(SlashSep(folder, "lib\\util.c")), "the folder lib did not come");
    Expect(!DirectoryExists(SlashSep(folder, "CVS")), "the client's records came, too");
}

void TWorkday::TakeOldProjectOut() {
    const std::string folder = Placer_.WorkingDirectory();
    Expect(Placer_.RemoveProjectFrom(), "not all records were deleted");
    Expect(!DirectoryExists(SlashSep(folder, "src\\deep\\CVS")), "records are left");
    Expect(!Placer_.GetIsVCSstored(), "it still counts as a working copy");
    Expect(support::ReadBytes(SlashSep(folder, "src\\deep\\part.c")) == "int part;\r\n",
           "part.c is not what it was");
    Expect(Contains(AskClient("rls legacy"), "main.c"), "the repository lost the project");
}

}  // namespace workday
