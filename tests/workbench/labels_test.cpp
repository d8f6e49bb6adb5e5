// The window with the labels and branches of a project, with the real client.

#include <gtest/gtest.h>

#include "tests/cvs/Sandbox.h"
#include "tests/workbench/Projects.h"
#include "workbench/ComparisonForm.h"
#include "workbench/LabelsForm.h"

namespace {

using namespace tests;

class LabelsWindow : public Projects {
protected:
    LabelsWindow() {
        Answer(true);
        Form.OpenProject(Copy);
        Pick(Form, "Lab&els and branches...");
        Own = Rows();
    }
    static TLabelsForm& Window() {
        const std::vector<TLabelsForm*> open = support::OpenForms<TLabelsForm>();
        if (open.size() != 1)
            throw std::runtime_error("there is no window");
        return *open.front();
    }
    static std::string Rows() {
        auto& list = support::Part<TListView>(Window(), "Labels");
        std::string rows;
        for (int i = 0; i < list.Count(); ++i)
            rows += list.Row(i).Caption + " " + list.Row(i).SubItems[0] + " " +
                    list.Row(i).SubItems[1] + "\n";
        return rows;
    }
    static std::string Status() {
        return support::Part<TStatusBar>(Window(), "Status").PartText(0);
    }
    static void Press(const std::string& button) { support::Press(Window(), button); }
    static void Choose(const std::string& name) { support::SelectRow(Window(), "Labels", name); }
    /// Creates one with the window's own dialog.
    static void Create(const std::string& name, bool branch, bool onlyCommitted) {
        ExpectForm("Create", [&](TForm& form) {
            support::Type(form, "Input1", name);
            support::Choose(form, "Input2", branch ? 1 : 0);
            support::Check(form, "Input3", onlyCommitted);
            Click(form, "BitBtn1");
        });
        Press("Create");
    }
    void Change(const std::string& name, const std::string& text) const {
        Sandbox.Write(Copy + "\\" + name, text);
        Touch(Copy + "\\" + name);
    }
    /// What a file's label stands for, such as "REL: 1.2"; empty for none.
    std::string NumberOf(const std::string& label, const std::string& file) const {
        const std::string log = Sandbox.Ask("rlog -h mod/" + file);
        const std::size_t at = log.find("\t" + label + ": ");
        return at == std::string::npos ? ""
                                       : log.substr(at + 1, log.find_first_of("\r\n", at) - at - 1);
    }
    void UpdateBy(const std::string& button) {
        ExpectForm("CVS update", [](TForm& form) { Click(form, "BitBtn1"); });
        Press(button);
    }

    const TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
    std::string Own;  // what an import leaves
};

TEST_F(LabelsWindow, PutsLabelsOnMovesThemAndTakesThemAway) {
    Change("a.c", "two\r\n");
    Create("REL", false, true);
    EXPECT_EQ(Rows(), Own) << "a.c is not committed";
    EXPECT_EQ(Status(), "Not done: the main window says why");
    Create("REL", false, false);
    EXPECT_EQ(Status(), "REL is created");
    ExpectIn(Rows(), "REL label 3\n");
    EXPECT_EQ(NumberOf("REL", "a.c"), "REL: 1.1.1.1");
    Create("REL", false, false);
    ExpectIn(Status(), "There is already a REL");
    Create("-bad name", false, false);
    EXPECT_EQ(Status(), "Not done: the main window says why");
    // Moved to what is committed now, when the user says so.
    Sandbox.Client("commit -m second", Copy);
    Answer(false);
    Choose("REL");
    Press("Move");
    Press("Delete");
    ExpectIn(Asked, "Delete the label REL of 3 files?");
    EXPECT_EQ(NumberOf("REL", "a.c"), "REL: 1.1.1.1");
    Answer(true);
    Press("Move");
    EXPECT_EQ(NumberOf("REL", "a.c"), "REL: 1.2");
    EXPECT_EQ(NumberOf("REL", "b.c"), "REL: 1.1.1.1");
    // Also off what is in the working copy no more.
    Sandbox.Client("remove -f b.c", Copy);
    Sandbox.Client("commit -m gone", Copy);
    EXPECT_NE(NumberOf("REL", "b.c"), "");
    Choose("REL");
    Press("Delete");
    EXPECT_EQ(Status(), "REL is deleted") << Told();
    EXPECT_EQ(Rows(), Own);
    for (const char* file : {"a.c", "b.c", "sub/c.c"})
        EXPECT_EQ(NumberOf("REL", file), "") << file;
    support::Part<TListView>(Window(), "Labels").Select(-1);
    Press("Delete");
    EXPECT_EQ(Status(), "Choose one label or branch to delete");
}

TEST_F(LabelsWindow, LeadsToABranchAndBack) {
    Create("START_OF_FIXES", false, true);
    Create("FIXES", true, true);
    ExpectIn(Rows(), "FIXES branch 3\n");
    EXPECT_EQ(NumberOf("FIXES", "a.c"), "FIXES: 1.1.1.1.0.2");
    Choose("FIXES");
    Press("Move");
    ExpectIn(Status(), "is a branch");
    Asked.clear();
    UpdateBy("Update");
    ExpectIn(Asked, "stays on the branch");
    EXPECT_EQ(Status(), "The working copy is at FIXES");
    ExpectIn(Sandbox.Read(Copy + "\\CVS\\Entries"), "//TFIXES");
    Change("a.c", "fixed\r\n");
    Sandbox.Client("commit -m fixed", Copy);
    UpdateBy("Trunk");
    EXPECT_EQ(Sandbox.Read(Copy + "\\CVS\\Entries").find("TFIXES"), std::string::npos);
    EXPECT_NE(Sandbox.Read(Copy + "\\a.c"), "fixed\r\n");
    // The one with the working copy, and two with each other, the older one first.
    support::Pick(Window(), "Menu1", "Re&fresh");
    Choose("FIXES");
    Press("Compare");
    const auto compared = support::OpenForms<TComparisonForm>();
    ASSERT_EQ(compared.size(), 1u) << Told();
    EXPECT_EQ(compared[0]->Text(), "a.c: FIXES and working copy");
    compared[0]->SetVisible(false);
    auto& list = support::Part<TListView>(Window(), "Labels");
    list.Select(-1);
    for (int i = 0; i < list.Count(); ++i)
        if (list.Row(i).Caption.ends_with("FIXES"))
            list.Select(i);
    Press("Compare");
    const auto both = support::OpenForms<TComparisonForm>();
    ASSERT_EQ(both.size(), 1u) << Told();
    EXPECT_EQ(both[0]->Text(), "a.c: START_OF_FIXES and FIXES");
    list.OnColumnClick(3);
    list.OnColumnClick(3);
    EXPECT_TRUE(Rows().starts_with("FIXES ")) << "the newest first: " << Rows();
    Choose("FIXES");
    Press("Delete");
    EXPECT_EQ(NumberOf("FIXES", "a.c"), "") << Told();
    EXPECT_NE(NumberOf("START_OF_FIXES", "a.c"), "");
}

}  // namespace
