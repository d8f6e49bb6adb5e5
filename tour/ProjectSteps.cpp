// From a folder to a project in a repository, and out of it again.

#include "framework/base/files.h"
#include "framework/ui/tree_view.h"
#include "support/Drive.h"
#include "tour/Tour.h"

namespace tour {

using namespace framework;
using support::Part;
using support::Press;
using support::StepOf;
using support::Type;

void TTour::OpenTheProject() {
    Form_ = std::make_unique<workbench::TMainForm>(Settings_, Packages_);
    Form_->Show();
    Expect(!MenuItem("Working copy/Commit...").Enabled(), "nothing to commit without a project");
    Form_->OpenProject(Project_);
    Expect(Settings_.RecentProjects().front() == Project_, "the project is remembered");
    Expect(MenuItem("Repository/Place project...").Enabled(), "it can be placed");
    Expect(!MenuItem("Working copy/Commit...").Enabled(), "it cannot be committed yet");
    Picture("host-new-project");
}

void TTour::CreateARepository() {
    CreateRepository(Repository_);
    Expect(FileExists(Repository_ + "\\CVSROOT\\modules"), "the repository is there");
}

void TTour::PlaceTheProject() {
    Play_.ExpectForm("Place project into CVS-step 1", [this](TForm& form) {
        Next(form);
        Next(form);
        Type(StepOf(form), "Memo1", "The project as it was found");
        Next(form);
        auto& tree = Part<TTreeView>(StepOf(form), "TreeView1");
        for (const auto& node : tree.Root().Children()) {
            if (node->Text() == "build.log")
                tree.OnStateClick(*node);
            if (node->Text() != "lib")
                continue;
            node->SetExpanded(true);
            tree.OnStateClick(*node->Children().back());
        }
        Play_.Picture(form.Handle(), "place");
        Press(form, "BitBtn1");
    });
    Play_.ExpectForm("Tags of the project", [this](TForm& form) {
        Play_.Picture(form.Handle(), "tags");
        Press(form, "BitBtn1");
    });
    ExpectSuccess("CVS PlaceProject");
    Choose("Repository/Place project...");
    const std::string names = Ask(Repository_, "rls -R \"my project\"");
    Expect(names.find("list.c") != std::string::npos, "list.c is in the repository: " + names);
    Expect(
        names.find("list.o") == std::string::npos && names.find("build.log") == std::string::npos,
        "what was left out is not: " + names);
    Expect(FileExists(Project_ + "\\lib\\list.o"), "the user's file is still there");
    Expect(MenuItem("Working copy/Commit...").Enabled(), "it can be committed now");
    Picture("host");
    Show("Repository/Options...", "Options", "options");
    Show("Repository/Preferences...", "Preferences", "working-copy");
    Show("Repository/Export...", "Export", "export");
    Show("Working copy/Changes of the module...", "Changes of the module", "compare-module");
}

void TTour::PullElsewhere() {
    const std::string elsewhere = Folder_ / "elsewhere", exported = Folder_ / "exported";
    Play_.ExpectForm("Pull a module", [this](TForm& form) {
        Play_.Picture(form.Handle(), "modules");
        support::Choose(form, "Input1", 0);
        Press(form, "BitBtn1");
    });
    Pull(elsewhere, "my project", "", "Repository/Pull a module...");
    Expect(FileExists(elsewhere + "\\my project\\CVS\\Entries"), "a working copy was made");
    Expect(Form_->Project()->Cvs().WorkingDirectory() == Project_, "the project is still itself");

    Pull(exported, "my project", "REL_1");
    Expect(FileExists(exported + "\\my project\\main.c"), "an export was made");
    Expect(!DirectoryExists(exported + "\\my project\\CVS"), "without records");
}

void TTour::ReleaseTheCopy() {
    const std::string copy = Folder_ / "elsewhere\\my project";
    Form_->OpenProject(copy);
    Play_.ExpectForm("CVS release", [](TForm& form) {
        support::Check(form, "CheckBox2");
        Press(form, "BitBtn1");
    });
    Play_.ExpectForm("CVS confirmation", [this](TForm& form) {
        Play_.Picture(form.Handle(), "confirmation");
        Press(form, "BitBtn1");
    });
    Choose("Working copy/Release...");
    Expect(!DirectoryExists(copy), "the working copy is gone");
    Choose("File/Close project");
}

void TTour::TakeOut() {
    Form_->OpenProject(Project_);
    ExpectSuccess("CVS ClearProjectData");
    Choose("Repository/Take out of version control");
    Expect(!DirectoryExists(Project_ + "\\CVS"), "no records are left");
    Expect(FileExists(Project_ + "\\main.c"), "all files are");
    Expect(MenuItem("Repository/Place project...").Enabled(), "it could be placed again");
}

}  // namespace tour
