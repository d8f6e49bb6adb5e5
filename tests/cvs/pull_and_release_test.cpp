// Projects come out of the repository, and working copies are given up.

#include <gtest/gtest.h>

#include "tests/cvs/PlaceProject.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using framework::FileExists;
using namespace tests;

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
        tests::ExpectForm(
            "CVS Pull Project ", [&, module = module, says = says](framework::TForm& form) {
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
            tests::ExpectForm("CVS confirmation", [button = button](framework::TForm& form) {
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
