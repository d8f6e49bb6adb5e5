// What is done with a working copy from day to day.

#include <functional>

#include "framework/base/files.h"
#include "framework/ui/edits.h"
#include "framework/ui/page_control.h"
#include "framework/ui/timer.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "tour/Tour.h"
#include "workbench/AnnotationForm.h"
#include "workbench/LabelsForm.h"

namespace tour {

using namespace framework;
using support::Part;
using support::Press;
using support::StepOf;
using support::Type;
using support::WaitUntil;

void TTour::EditAndCommit() {
    support::WriteBytes(Project_ + "\\main.c", "int main(void) {\r\n    return 1;\r\n}\r\n");
    Commit("Answer \"one\",\r\nnot nought");
    Expect(
        Ask(Repository_, "rlog \"my project/main.c\"").find("Answer \"one\"") != std::string::npos,
        "the message is in the log");
}

void TTour::AddAndRemoveFiles() {
    support::WriteBytes(Project_ + "\\new file.txt", "new\r\n");
    support::WriteBytes(Project_ + "\\old.txt", "old\r\n");
    support::WriteBytes(Project_ + "\\moving.txt", "moving\r\n");
    const std::string picture("\x89PNG\r\n\x1A\n\0\n", 10);
    support::WriteBytes(Project_ + "\\logo.png", picture);
    Choose("File/Refresh");
    for (const char* name : {"new file.txt", "old.txt", "moving.txt"}) {
        Select(name);
        Choose("Selection/Add");
    }
    Play_.ExpectForm("Binary files", [this](TForm& form) {
        Play_.Picture(form.Handle(), "binary");
        Press(form, "BitBtn1");
    });
    Select("logo.png");
    Choose("Selection/Add");
    Commit();
    Expect(Ask(Repository_, "checkout -p \"my project/logo.png\"") == picture,
           "the picture is there byte for byte");
    Select("old.txt");
    Choose("Selection/Remove and delete");
    Select("moving.txt");
    Play_.ExpectForm("Move moving.txt", [this](TForm& form) {
        Play_.Picture(form.Handle(), "move");
        Type(form, "Input1", Project_ + "\\lib\\moved.txt");
        Press(form, "BitBtn1");
    });
    Choose("Selection/Move...");
    Commit();
    const std::string names = Ask(Repository_, "rls -R \"my project\"");
    for (const char* name : {"new file.txt", "moved.txt"})
        Expect(names.find(name) != std::string::npos, std::string(name) + " is in: " + names);
    for (const char* name : {"old.txt", "moving.txt"})
        Expect(names.find(name) == std::string::npos, std::string(name) + " is not in: " + names);
}

void TTour::CreateALabelAndABranch() {
    const auto create = [this](const char* item, const char* form, const char* name,
                               const char* result) {
        Play_.ExpectForm(form, [this, name](TForm& dialog) {
            Type(dialog, "Edit1", name);
            Press(dialog, "BitBtn1");
        });
        ExpectSuccess(result);
        Choose(item);
    };
    const auto remove = [this](const char* item, const char* form, const char* name,
                               const char* result) {
        Play_.ExpectForm(form, [name](TForm& dialog) {
            support::SelectRow(dialog, "ListView1", name);
            WaitUntil([&] { return Part<TEdit>(dialog, "Edit1").Text() == name; });
            Press(dialog, "BitBtn1");
        });
        ExpectSuccess(result);
        Choose(item);
    };
    create("Working copy/Create label...", "Create Version Label", "REL_1", "CVS create label");
    create("Working copy/Create label...", "Create Version Label", "WRONG", "CVS create label");
    create("Working copy/Create branch...", "Create Branch", "FIXES", "CVS create branch");
    create("Working copy/Create branch...", "Create Branch", "DEAD_END", "CVS create branch");
    Choose("Working copy/Labels and branches...");
    const auto windows = support::OpenForms<workbench::TLabelsForm>();
    Expect(windows.size() == 1, "labels and branches are shown");
    support::SelectRow(*windows.front(), "Labels", "REL_1");
    Play_.Picture(windows.front()->Handle(), "labels");
    ::SendMessageW(windows.front()->Handle(), WM_CLOSE, 0, 0);
    remove("Working copy/Delete label...", "Delete Version Label", "WRONG", "CVS delete label");
    remove("Working copy/Delete branch...", "Delete Branch", "DEAD_END", "CVS delete branch");
    for (const tandrel::TLogClass& name : Form_->Project()->Cvs().LogListA)
        Play_.Tell("  " + name.Name + "  " + name.Value + (name.IsLabel ? "  label" : "  branch") +
                   "\r\n");
    const std::string log = Ask(Repository_, "rlog -h \"my project/main.c\"");
    Expect(log.find("REL_1:") != std::string::npos && log.find("FIXES:") != std::string::npos,
           "both are there: " + log);
    Expect(log.find("WRONG") == std::string::npos && log.find("DEAD_END") == std::string::npos,
           "the others are gone: " + log);
}

void TTour::UpdateToTheBranch() {
    // Something new on the trunk, which the branch is to have, too.
    const std::string other = Folder_ / "other";
    ForceDirectories(other);
    support::RunProcess("cvs -Q -d \"" + Repository_ + "\" checkout \"my project\"", other);
    support::WriteBytes(other + "\\my project\\notes.txt", "Noted.\r\n");
    support::RunProcess("cvs -Q commit -m noted", other + "\\my project");
    Play_.ExpectForm("CVS update-step 1", [this](TForm& form) {
        Next(form);
        support::Choose(StepOf(form), "ComboBox1", tandrel::stBranch);
        Play_.ExpectForm("Select version label or branch", [this](TForm& names) {
            support::SelectRow(names, "ListView1", "FIXES");
            Play_.Picture(names.Handle(), "branches");
            Press(names, "BitBtn1");
        });
        Press(StepOf(form), "Button1");
        Play_.Picture(form.Handle(), "update");
        Next(form);
        MergeAndFinish(form, "HEAD");
    });
    ExpectSuccess("CVS update");
    Choose("Working copy/Update...");
    Expect(support::ReadBytes(Project_ + "\\notes.txt") == "Noted.\r\n", "the change was merged");
    Expect(support::RunProcess("cvs -Q status main.c", Project_).Output.find("FIXES (branch") !=
               std::string::npos,
           "the working copy is on the branch");
}

void TTour::Compare() {
    support::WriteBytes(Project_ + "\\main.c", "int main(void) {\r\n    return 2;\r\n}\r\n");
    Choose("File/Refresh");
    Select("main.c");
    const auto compare = [this](const std::function<void(TForm&)>& choose) {
        Select("main.c");
        Play_.ExpectForm("CVS diff", [this, choose](TForm& form) {
            choose(form);
            Play_.PictureOf(form);
            Press(form, "BitBtn1");
        });
        Choose("Selection/Compare as text...");
        Play_.Tell("command: cvs" + Form_->Project()->Cvs().CommandLine + "\r\n");
    };
    const auto kind = [](TForm& form, int index) {
        support::Choose(form, "ComboBox1", index);
        WaitUntil([&] { return !Part<TTimer>(form, "Timer1").Enabled(); });
    };
    // With the newest revision, with what it was an hour ago, two labels, and one label.
    compare([](TForm&) {});
    compare([&](TForm& form) {
        kind(form, tandrel::dctRevision);
        support::Check(form, "CheckBox1");
        WaitUntil([&] { return !Part<TTimer>(form, "Timer1").Enabled(); });
    });
    compare([&](TForm& form) {
        kind(form, tandrel::dctTwoRevision);
        support::Check(form, "CheckBox1", false);
        Type(form, "Edit3", "START");
        Type(form, "Edit1", "REL_1");
    });
    ExpectTold(">     return 1;");
    compare([&](TForm& form) {
        kind(form, tandrel::dctRevision);
        Type(form, "Edit3", "REL_1");
    });
    ExpectTold("<     return 1;");
    ExpectTold(">     return 2;");
}

void TTour::Browse() {
    TellModel(Form_->Project()->Cvs().WorkDirTree);
    Play_.ExpectForm("StatusBrowser", [this](TForm& browser) {
        TForm& form = StepOf(browser);
        // The tree's own selection fills the list once more.
        WaitUntil([&] { return !Part<TTimer>(form, "Timer1").Enabled(); });
        support::SelectRow(form, "ListView1", "main.c");
        Expect(WaitUntil([&] { return !Part<TRichEdit>(form, "DiffEdit").Text().empty(); }),
               "the difference is shown");
        Expect(Part<TRichEdit>(form, "StatusEdit").Text().find("Locally Modified") !=
                   std::string::npos,
               "the status is shown");
        Play_.Picture(browser.Handle(), "browser-status");
        auto& pages = Part<TPageControl>(form, "PageControl1");
        pages.SetActivePageIndex(2);
        Play_.Picture(browser.Handle(), "browser-diff");
        ::PostMessageW(Part<TListView>(form, "ListView1").Handle(), WM_KEYDOWN, VK_F5, 1);
        Press(browser, "BitBtn2");
    });
    Choose("Working copy/Status browser...");
}

void TTour::Annotate() {
    Form_->OpenProject(Project_);
    Select("notes.txt");
    Choose("Selection/Annotate");
    const auto annotations = support::OpenForms<workbench::TAnnotationForm>();
    Expect(annotations.size() == 1, "who wrote it is shown");
    ::SendMessageW(annotations.front()->Handle(), WM_CLOSE, 0, 0);
    for (const char* item : {"Selection/Log", "Selection/Status", "Editing/Edit", "Editing/Editors",
                             "Editing/Watch", "Editing/Watchers", "Editing/Unedit"}) {
        Select("notes.txt");
        Choose(item);
    }
    ExpectTold("Working revision:");
    Play_.ExpectForm("Get notes.txt", [this](TForm& form) {
        Play_.Picture(form.Handle(), "get-revision");
        Type(form, "Input1", "1.1");
        Press(form, "BitBtn1");
    });
    Select("notes.txt");
    Choose("Selection/Get a revision...");
    const auto documents = support::OpenForms<workbench::TDocumentForm>();
    Expect(documents.size() == 1 && documents.front()->Text() == "notes.txt 1.1", "it is shown");
    Play_.Picture(documents.front()->Handle(), "revision");
    documents.front()->Close();
    Choose("Working copy/Log of the module");
    ExpectTold("Answer \"one\"");
    Picture("host-log");
}

void TTour::WorkInTwoProjects() {
    const std::string second = Folder_ / "second";
    const std::string repository = Folder_ / "second repository";
    support::WriteBytes(second + "\\second.c", "second\r\n");
    Form_->OpenProject(second);
    CreateRepository(repository);
    Place();
    for (const std::string& folder : {Project_, second}) {
        const std::string name = folder == second ? "second.c" : "main.c";
        support::WriteBytes(folder + "\\" + name, "changed in " + name + "\r\n");
        Form_->OpenProject(folder);
        if (folder == second)
            CommitByWizard("By the wizard");
        else
            Commit();
    }
    Expect(Ask(repository, "checkout -p second/second.c") == "changed in second.c\r\n",
           "the second project is in its repository");
    Expect(!DirectoryExists(Repository_ + "\\second"), "and not in the other");
    Expect(
        Ask(Repository_, "checkout -p -r FIXES \"my project/main.c\"") == "changed in main.c\r\n",
        "the first one is in its own");
    Form_->OpenProject(second);
    Choose("File/Close project");
    Form_->OpenProject(Project_);
}

}  // namespace tour
