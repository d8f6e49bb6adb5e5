// How the dialogs look: nothing cut off, nothing on top of each other, at the resolutions that
// people have; and what those hear who have them read aloud. With TANDREL_OUT set, a picture of
// each is left in that folder.

#include <gtest/gtest.h>

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "framework/base/datetime.h"
#include "framework/ui/list_view.h"
#include "framework/ui/page_control.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Looks.h"

namespace {

using namespace tandrel;
using namespace framework;

/// Looks at each step of a wizard, and cancels it.
void ExpectSteps(const std::string& caption, const std::string& name,
                 const std::vector<std::function<void(TForm& step)>>& fill) {
    tests::ExpectForm(caption, [name, fill](TForm& form) {
        for (std::size_t i = 0; i < fill.size(); ++i) {
            fill[i](support::StepOf(form));
            tests::Look(form, name + std::to_string(i + 1));
            if (i + 1 < fill.size())
                support::Press(form, "BitBtn4");
        }
        form.ModalResult = mrCancel;
    });
}

void ExpectDialog(const std::string& caption, const std::string& name) {
    tests::ExpectForm(caption, [name](TForm& form) {
        tests::Look(form, name);
        form.ModalResult = mrCancel;
    });
}

class Looks : public testing::Test {
protected:
    Looks() {
        support::WriteBytes(Folder / "repository\\CVSROOT\\config", "");
        for (const char* name : {"main.c", "notes.txt", "sub\\deeper.c"})
            support::WriteBytes(Folder / "project\\" + name, "text\r\n");
        Cvs.Path = Folder / "repository";
        Cvs.SetCVSROOT(Cvs.Path);
        Cvs.Set_WorkingDirectory(Folder / "project");
        Cvs.MergeSpec.Date1 = Cvs.MergeSpec.Date2 = Cvs.StikyDate = EncodeDate(2004, 3, 5) + 0.6;
        Cvs.MergeSpec.Kind = mtPlusRevTag;
        Cvs.MergeSpec.Rev1 = "REL_1_0";
        Cvs.MergeSpec.Rev2 = "REL_1_1";
        Cvs.MergeSpec.UseDate2 = true;
        for (const auto& [name, revision, label] : {std::tuple{"REL_1_0", "1.4", true},
                                                    {"REL_1_1", "1.7", true},
                                                    {"EXPERIMENT", "1.4.0.2", false}})
            Cvs.LogListA.Add(name, revision, label);
        Cvs.LogListB.Add("2004/03/05 14:07:09", "revision 1.4", false);
    }

    void Wizards() {
        const auto nothing = [](TForm&) {};
        ExpectSteps("Create CVS repository", "create", {nothing});
        Init_Prepare(Cvs);
        ExpectSteps("CVS commit-step 1", "commit",
                    {nothing, [](TForm& step) {
                         support::Type(step, "Memo1", "What was changed,\r\nand why.");
                     }});
        Commit_Prepare(Cvs);
        ExpectSteps("CVS update-step 1", "update",
                    {nothing,
                     [](TForm& step) {
                         support::Choose(step, "ComboBox1", stDate);
                         EXPECT_TRUE(support::WaitUntil([&] {
                             return support::Part<TControl>(step, "MaskEdit2").Color() ==
                                    COLOR_WINDOW;
                         }));
                     },
                     nothing});
        Update_Prepare(Cvs);
        ExpectSteps("Place project into CVS-step 1", "place", {nothing, nothing, nothing, nothing});
        PlaceProject_Prepare(Cvs);
        ExpectSteps("Pull project from CVS-step 1", "pull", {nothing, nothing, nothing});
        PullProject_Prepare(Cvs);
        ExpectSteps("CVS login -step 1", "login",
                    {[](TForm& step) { support::Type(step, "Edit3", "secret"); }, nothing});
        Login_Prepare(Cvs);
        ExpectSteps("CVS logout", "logout", {nothing});
        Logout_Prepare(Cvs);
    }

    void Dialogs() {
        ExpectDialog("CVS preferences", "preferences");
        CVSProperty_Frm(Cvs);
        ExpectDialog("CVS release", "release");
        sh_Release_Form(Cvs);
        Cvs.DiffSpec.Kind = dctTwoRevision;
        ExpectDialog("CVS diff", "diff");
        sh_Diff_Form(Cvs);
        ExpectDialog("Create Version Label", "create-label");
        sh_CrLabel_Form(Cvs);
        ExpectDialog("Delete Branch", "delete-branch");
        sh_DelBranch_Form(Cvs);
        std::string name;
        ExpectDialog("Select version label or branch", "select-label");
        Get_ProjectTag(Cvs, tsoAll, name);
        ExpectDialog("Select revisions date", "select-date");
        Get_FileRevDate(Cvs);
        ExpectDialog("CVS update", "result");
        Show_OkForm("CVS update", "CVS update  \"mod\"", 1);
        ExpectDialog("CVS confirmation", "confirmation");
        Sh_Confirm_Form("Are you sure you want to release (and delete) directory `mod':");
        Browser();
    }

    /// With the states that a file can have, and the comparison of one.
    void Browser() {
        const tests::TSandbox sandbox;
        const std::string copy = sandbox.CheckOut("work");
        sandbox.Write(copy + "\\a.c", "one\r\nTWO\r\nthree\r\n");
        for (const char* name : {"stray.txt", "left.o", "new.c"})
            sandbox.Write(copy + "\\" + name, "text\r\n");
        sandbox.Write(copy + "\\.cvsignore", "left.o\r\n");
        sandbox.Client("-Q add new.c", copy);
        tests::TSandboxObject cvs(sandbox, copy);
        cvs.OutputListLimit = 1000;
        cvs.Load_WorkDirTree();
        cvs.WorkDirTree.ItemExist(copy, "a.c")->Changed = true;
        tests::ExpectForm("StatusBrowser", [](TForm& form) {
            TForm& page = support::StepOf(form);
            auto& pages = support::Part<TPageControl>(page, "PageControl1");
            support::SelectRow(page, "ListView1", "a.c");
            EXPECT_TRUE(support::WaitUntil([&] { return pages.Page(2).TabVisible(); }));
            tests::Look(form, "browser-status");
            pages.SetActivePageIndex(2);
            tests::Look(form, "browser-difference");
            support::Part<TPageControl>(form, "PageControl1").SetActivePageIndex(1);
            tests::Look(form, "browser-files");
            form.ModalResult = mrCancel;
        });
        Sh_StatusBrowser(cvs);
    }

    const support::TTempFolder Folder{"looks"};
    TCvsObject Cvs;
};

TEST_F(Looks, AreTidy) {
    Wizards();
    Dialogs();
}

TEST(LooksAtHighResolution, AreTidy) {
    tests::RunAtHighResolution("Looks.*");
}

}  // namespace
