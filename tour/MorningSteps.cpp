// A morning's work on a project with many changes, and how many keys and clicks it takes.

#include <algorithm>
#include <cstdio>

#include "framework/base/files.h"
#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/status_bar.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "tour/Tour.h"
#include "workbench/ComparisonForm.h"

namespace tour {

using namespace framework;
using support::Part;
using support::Type;

namespace {

constexpr int Folders = 12;

std::string FolderName(int number) {
    char name[8];
    std::snprintf(name, sizeof name, "d%02d", number);
    return name;
}

/// What stands in a file at first.
std::string TextOf(const std::string& file) {
    return file + ", line 1\r\nline 2\r\nline 3\r\n";
}

void Client(const std::string& arguments, const std::string& folder) {
    const auto result = support::RunProcess("cvs -Q " + arguments, folder);
    if (result.ExitCode != 0)
        throw std::runtime_error("cvs " + arguments + ": " + result.Output);
}

}  // namespace

void TTour::PrepareTheMorning(const std::string& repository, const std::string& project) {
    const std::string root = "-d \"" + repository + "\" ";
    Client(root + "init", Folder_.Path());
    const auto forAll = [](const std::function<void(const std::string& file)>& action) {
        for (int i = 0; i < Folders; ++i)
            for (const char* name : {"\\a.txt", "\\b.txt", "\\c.txt", "\\d.txt"})
                action(FolderName(i) + name);
    };
    const std::string seed = Folder_ / "seed";
    forAll([&](const std::string& file) { support::WriteBytes(seed + "\\" + file, TextOf(file)); });
    support::WriteBytes(seed + "\\old one.txt", "old\r\n");
    support::WriteBytes(seed + "\\old two.txt", "old\r\n");
    Client(root + "import -m seed morning V R", seed);
    Client(root + "checkout morning", Folder_.Path());
    // A colleague has changed a file, and two on a branch.
    const std::string theirs = Folder_ / "theirs";
    ForceDirectories(theirs);
    Client(root + "checkout morning", theirs);
    const std::string copy = theirs + "\\morning";
    support::WriteBytes(copy + "\\d05\\d.txt", TextOf("theirs"));
    Client("commit -m theirs", copy);
    Client("tag -b FEATURE", copy);
    Client("update -r FEATURE", copy);
    for (const char* file : {"\\d00\\a.txt", "\\d01\\a.txt"})
        support::WriteBytes(copy + file, TextOf("their feature"));
    Client("commit -m feature", copy);
    // Forty files are changed here: three in each folder, four in the first.
    forAll([&](const std::string& file) {
        if (!file.ends_with("d.txt") || file < "d04")
            support::WriteBytes(project + "\\" + file, TextOf("mine in " + file) + "more\r\n");
    });
    for (int i = 1; i <= 5; ++i)
        support::WriteBytes(project + "\\new" + std::to_string(i) + ".txt", "new\r\n");
    for (int i = 1; i <= 3; ++i)
        support::WriteBytes(project + "\\left" + std::to_string(i) + ".tmp", "left\r\n");
}

void TTour::Key(const std::string& path) {
    ++Keys_;
    Choose(path);
}

void TTour::SelectRows(const std::vector<std::string>& names) {
    auto& list = Part<TListView>(*Form_, "List");
    list.Select(-1);
    for (const std::string& name : names)
        for (int i = 0; i < list.Count(); ++i)
            if (list.Row(i).Caption == name) {
                ++Clicks_;
                list.Select(i);
            }
    Expect(list.SelectedIndices().size() == names.size(), "all are selected");
}

void TTour::ShowOnly(const std::string& filter) {
    ++Clicks_;
    Keys_ += static_cast<int>(filter.size());
    Type(*Form_, "Filter", filter);
}

void TTour::CommitAs(const std::string& message, const std::string& item,
                     const std::string& picture) {
    Keys_ += static_cast<int>(message.size()) + 1;
    Commit(message, item, picture);
}

void TTour::ResolveInTheEditor(const std::string& path) {
    Key("Selection/Open");
    const auto editors = support::OpenForms<workbench::TDocumentForm>();
    const auto found = std::ranges::find(editors, path, &workbench::TDocumentForm::Path);
    Expect(found != editors.end(), "the editor has " + path);
    workbench::TDocumentForm& editor = **found;
    const auto choose = [&](const std::string& caption) {
        ++Keys_;
        support::Pick(editor, "Menu1", caption);
    };
    choose("&Next");
    Play_.Picture(editor.Handle(), "conflict");
    choose("Take &both");
    choose("&Save");
    choose("&Close");
    Expect(support::ReadBytes(path).find("<<<<<<<") == std::string::npos, "it is resolved");
}

void TTour::WorkAMorning() {
    const std::string repository = Folder_ / "morning repository", project = Folder_ / "morning";
    PrepareTheMorning(repository, project);
    auto& list = Part<TListView>(*Form_, "List");
    auto& status = Part<TStatusBar>(*Form_, "Status");
    Keys_ = Clicks_ = 0;
    Form_->OpenProject(project);
    Clicks_ += 3;

    ExpectSuccess("CVS update");
    Key("Working copy/Update now");
    ++Keys_;  // Enter in the box
    Expect(status.PartText(1).starts_with("1 updated, 40 changed here"), status.PartText(1));

    // Look through what has changed.
    support::Check(*Form_, "WithFolders");
    support::Check(*Form_, "ChangedOnly");
    Clicks_ += 2;
    Expect(list.Count() == 48, std::to_string(list.Count()) + " rows");
    Picture("changed");
    Key("Selection/Select all");
    Key("Selection/Compare");
    const auto comparisons = support::OpenForms<workbench::TComparisonForm>();
    Expect(comparisons.size() == 1, "what differs is shown");
    const int files = Part<TListView>(*comparisons.front(), "FileList").Count();
    Expect(files == 40, std::to_string(files) + " files differ");
    ::SendMessageW(comparisons.front()->Handle(), WM_CLOSE, 0, 0);
    ++Keys_;

    ShowOnly("*.tmp");
    Key("Selection/Select all");
    // In place of the editor comes a program that ends at once.
    support::WriteBytes(Folder_ / "editor\\notepad.exe",
                        support::ReadBytes(support::ProgramBeside("fake_client.exe")));
    ::SetCurrentDirectoryA((Folder_ / "editor").c_str());
    Choose("Selection/Ignore");
    Clicks_ += 2;
    ::SetCurrentDirectoryA("C:\\");
    ShowOnly("new?.txt");
    Key("Selection/Select all");
    Key("Selection/Add");
    ShowOnly("");
    support::Check(*Form_, "WithFolders", false);
    support::Check(*Form_, "ChangedOnly", false);
    Clicks_ += 2;
    SelectRows({"old one.txt", "old two.txt"});
    Key("Selection/Remove and delete");
    ++Keys_;  // the answer

    // Three commits: some folders, some more, all the rest.
    for (const int first : {0, 4}) {
        SelectRows({FolderName(first), FolderName(first + 1), FolderName(first + 2),
                    FolderName(first + 3)});
        CommitAs("part " + std::to_string(first), "Selection/Commit...");
        ++Clicks_;
    }
    CommitAs("the rest", "Working copy/Commit...", "commit");
    ++Keys_;
    Expect(status.PartText(1).find("committed") != std::string::npos, status.PartText(1));

    // A colleague's branch, with two conflicts.
    Play_.ExpectForm("CVS update-step 1", [this](TForm& form) {
        Next(form);
        Next(form);
        MergeAndFinish(form, "FEATURE");
    });
    ExpectSuccess("CVS update");
    Key("Working copy/Update...");
    Clicks_ += 6;
    Keys_ += 8;
    Expect(status.PartText(1).find("2 conflicts: d00/a.txt") != std::string::npos,
           status.PartText(1));
    for (const char* folder : {"d00", "d01"}) {
        SelectRows({folder});
        Key("Selection/Open");
        SelectRows({"a.txt"});
        Expect(list.Row(list.SelectedIndex()).SubItems[0] == "Conflict", "it is a conflict");
        ResolveInTheEditor(project + "\\" + folder + "\\a.txt");
        Part<TTreeView>(*Form_, "Tree").Root().Children().front()->SetSelected(true);
        ++Clicks_;
    }
    CommitAs("merged", "Working copy/Commit...");
    ++Keys_;
    const std::string left = support::RunProcess("cvs -n -q update", project).Output;
    Expect(left.empty(), "nothing is left to do: " + left);
    Expect(Ask(repository, "rls morning").find("old one") == std::string::npos, "it is removed");
    Play_.Tell(std::to_string(Keys_) + " keys, " + std::to_string(Clicks_) + " clicks\r\n");
    Choose("File/Close project");
}

}  // namespace tour
