// Whole operations through their dialogs, with the real client: what a dialog hands back has to
// arrive in the repository.

#include <gtest/gtest.h>

#include <utility>

#include "core/Cvsroot.h"
#include "framework/base/datetime.h"
#include "framework/base/files.h"
#include "framework/base/text.h"
#include "framework/ui/edits.h"
#include "framework/ui/list_view.h"
#include "framework/ui/tree_view.h"
#include "support/Drive.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/forms/Answers.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace tandrel;
using namespace framework;
using support::Check;
using support::Choose;
using support::Part;
using support::Press;
using support::StepOf;
using support::Type;
using support::WaitUntil;
using tests::ExpectChoice;
using tests::ExpectForm;
using tests::ExpectResult;
using tests::SelectRow;
using tests::TextOf;
using tests::TSandboxObject;

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class Interactive : public testing::Test {
protected:
    tests::TSandbox Sandbox;
};

TEST_F(Interactive, CreatesCommitsAndMerges) {
    TSandboxObject fresh(Sandbox);
    const std::string path = Sandbox.Folder / "new one";
    ExpectForm("Create CVS repository", [&](TForm& form) {
        Type(StepOf(form), "Edit3", path);
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS init", "CVS init " + path + " successfuly completed");
    fresh.StrictQuoting = true;
    fresh.Set_WorkingDirectory(Sandbox.Folder.Path());
    EXPECT_TRUE(fresh.CreateLocalRepository()) << fresh.Messages.All();
    EXPECT_TRUE(FileExists(path + "\\CVSROOT\\modules"));
    ExpectForm("Create CVS repository", [](TForm& form) { form.ModalResult = mrCancel; });
    EXPECT_FALSE(fresh.CreateLocalRepository());

    const std::string copy = Sandbox.CheckOut("work");
    Sandbox.Client("-Q tag -b BR", copy);
    TSandboxObject obj(Sandbox, copy);
    obj.StrictQuoting = true;
    Sandbox.Write(copy + "\\a.c", "one\r\nTWO\r\n");
    ExpectForm("CVS commit-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        Type(StepOf(form), "Memo1", "said \"so\" & 100%\r\nin two lines");
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS commit", "CVS commit  \"mod\" successfuly completed");
    EXPECT_TRUE(obj.Commit(true)) << obj.Messages.All();
    EXPECT_TRUE(Contains(Sandbox.Ask("rlog mod/a.c"), "said \"so\" & 100%")) << obj.CommandLine;

    // Over to the branch, with what was just committed merged into it.
    ExpectForm("CVS update-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        Choose(StepOf(form), "ComboBox1", stBranch);
        support::WaitUntil([&] { return Part<TButton>(StepOf(form), "Button1").Enabled(); });
        ExpectChoice("Select version label or branch", "BR");
        Press(StepOf(form), "Button1");
        EXPECT_EQ(TextOf(StepOf(form), "Edit3"), "BR");
        Press(form, "BitBtn4");
        Choose(StepOf(form), "ComboBox1", mtThisRev);
        support::WaitUntil([&] { return Part<TButton>(StepOf(form), "Button1").Enabled(); });
        Type(StepOf(form), "Edit3", "HEAD");
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS update", "CVS update  \"mod\" successfuly completed");
    EXPECT_TRUE(obj.UpdateSpecial()) << obj.Messages.All();
    EXPECT_TRUE(Contains(Sandbox.Client("status a.c", copy), "BR (branch"));
    EXPECT_EQ(Sandbox.Read(copy + "\\a.c"), "one\r\nTWO\r\n");
    ExpectForm("CVS update-step 1", [](TForm& form) { form.ModalResult = mrCancel; });
    EXPECT_FALSE(obj.UpdateSpecial()) << "and no result is shown";
}

TEST_F(Interactive, LabelsAndBranchesComeAndGo) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    obj.OutputListLimit = 100000;
    ExpectForm("Create Version Label", [](TForm& form) {
        EXPECT_FALSE(Part<TButton>(form, "BitBtn1").Enabled());
        EXPECT_EQ(Part<TListView>(form, "ListView1").Count(), 1) << "START, not the branch VENDOR";
        Type(form, "Edit1", "REL_1");
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS create label", "CVS create label REL_1 successfuly completed");
    EXPECT_TRUE(obj.Create_Tag(true)) << obj.Messages.All();
    EXPECT_TRUE(obj.TagCheckUncommitted == false);
    EXPECT_TRUE(Contains(Sandbox.Ask("rlog -h mod/a.c"), "REL_1: 1.1.1.1"));

    ExpectForm("Create Branch", [](TForm& form) {
        Type(form, "Edit1", "BR");
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS create branch", "CVS create branch BR successfuly completed");
    EXPECT_TRUE(obj.Create_Rtag(true));
    EXPECT_TRUE(Contains(Sandbox.Ask("rlog -h mod/a.c"), "BR: 1.1.1.1.0.2"));

    // The delete dialogs list what "Scan" finds; the name comes from a row.
    const auto chooses = [](const std::string& name) {
        return [name](TForm& form) {
            EXPECT_TRUE(Part<TEdit>(form, "Edit1").ReadOnly());
            EXPECT_FALSE(Part<TCheckBox>(form, "CheckBox1").Visible());
            Press(form, "Button1");
            SelectRow(form, name);
            EXPECT_TRUE(WaitUntil([&] { return TextOf(form, "Edit1") == name; }));
            Press(form, "BitBtn1");
        };
    };
    obj.TagBranch = false;
    ExpectForm("Delete Branch", chooses("BR"));
    ExpectResult("CVS delete branch", "CVS delete branch BR successfuly completed");
    EXPECT_TRUE(obj.Del_Rtag(true)) << obj.Messages.All();
    obj.TagDeleteBranch = false;
    ExpectForm("Delete Version Label", chooses("REL_1"));
    ExpectResult("CVS delete label", "CVS delete label REL_1 successfuly completed");
    EXPECT_TRUE(obj.Del_Tag(true)) << obj.Messages.All();
    const std::string log = Sandbox.Ask("rlog -h mod/a.c");
    EXPECT_FALSE(Contains(log, "REL_1") || Contains(log, "BR:")) << log;
    ExpectForm("Delete Version Label", [](TForm& form) { form.ModalResult = mrCancel; });
    EXPECT_FALSE(obj.Del_Tag(true));
}

TEST_F(Interactive, ComparesWithWhatWasChosen) {
    const std::string copy = Sandbox.CheckOut("work");
    Sandbox.Client("-Q tag OLD", copy);
    Sandbox.Write(copy + "\\a.c", "one\r\nTWO\r\n");
    Sandbox.Client("-Q commit -m change", copy);
    Sandbox.Write(copy + "\\a.c", "three\r\nTWO\r\n");
    TSandboxObject obj(Sandbox, copy);
    obj.OutputListLimit = 100000;
    const auto diff = [&] {
        obj.Messages.Clear();
        obj.DiffFile(true, copy + "\\a.c");
        return obj.Messages.All();
    };
    ExpectForm("CVS diff", [](TForm& form) { Press(form, "BitBtn1"); });
    EXPECT_TRUE(Contains(diff(), "< one\r\n---\r\n> three\r\n"));
    ExpectForm("CVS diff", [](TForm& form) {
        Choose(form, "ComboBox1", dctRevision);
        WaitUntil([&] { return Part<TButton>(form, "Button1").Enabled(); });
        ExpectChoice("Select version label or branch", "OLD");
        Press(form, "Button1");
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(Contains(diff(), "< one\r\n< two\r\n")) << obj.CommandLine;
    // The date of a revision, chosen from the file's own.
    ExpectForm("CVS diff", [](TForm& form) {
        Check(form, "CheckBox1");
        WaitUntil([&] { return Part<TButton>(form, "Button3").Enabled(); });
        ExpectForm("Select revisions date", [](TForm& dates) {
            auto& list = Part<TListView>(dates, "ListView1");
            EXPECT_EQ(list.Count(), 2);
            list.Select(0);
            tests::PressKey(dates, VK_F5);
            EXPECT_TRUE(WaitUntil([&] { return !list.Selected(); })) << "filled anew";
            EXPECT_EQ(list.Count(), 2);
            list.Select(0);
            Press(dates, "BitBtn1");
        });
        Press(form, "Button3");
        Press(form, "BitBtn1");
    });
    const std::string text = diff();
    // Before one o'clock the time is left out of the command, which then asks for an earlier
    // moment.
    const bool early = DecodeTime(obj.DiffSpec.Date1).Hour == 0;
    EXPECT_TRUE(early || Contains(text, "< one\r\n---\r\n> three\r\n")) << text;
    EXPECT_TRUE(Contains(obj.CommandLine, " -D \"20")) << obj.CommandLine;
    // A cancelled dialog runs nothing and forgets the file.
    ExpectForm("CVS diff", [](TForm& form) { form.ModalResult = mrCancel; });
    EXPECT_EQ(diff(), "");
    EXPECT_TRUE(obj.FileItems.Empty());
}

TEST_F(Interactive, PlacesAndPullsAProject) {
    const std::string project = Sandbox.Folder / "my project";
    for (const char* name : {"main.c", "secret.txt", "sub\\deep.c", "sub\\deep.o"})
        Sandbox.Write(project + "\\" + name, name);
    TSandboxObject obj(Sandbox);
    obj.StrictQuoting = true;
    obj.Set_WorkingDirectory(project);
    obj.OnPlaceProject = [](TCvsObject& sender) {
        sender.VendorTag = "V";
        sender.ReleaseTag = "R";
    };
    ExpectForm("Place project into CVS-step 1", [&](TForm& form) {
        Press(form, "BitBtn4");
        Press(form, "BitBtn4");
        Type(StepOf(form), "Memo1", "placed");
        Press(form, "BitBtn4");
        auto& tree = Part<TTreeView>(StepOf(form), "TreeView1");
        for (const auto& node : tree.Root().Children()) {
            if (node->Text() == "secret.txt")
                tree.OnStateClick(*node);
            if (node->Text() != "sub")
                continue;
            node->SetExpanded(true);
            tree.OnStateClick(*node->Children().back());
        }
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS PlaceProject", "project \"my project\" place into repository " +
                                         obj.CVSROOT() + " successfuly completed");
    EXPECT_TRUE(obj.PlaceProject()) << obj.Messages.All();
    const std::string listed = Sandbox.Ask("rls -R \"my project\"");
    EXPECT_TRUE(Contains(listed, "main.c") && Contains(listed, "deep.c")) << listed;
    EXPECT_FALSE(Contains(listed, "secret.txt") || Contains(listed, "deep.o")) << listed;
    EXPECT_EQ(Sandbox.Read(project + "\\secret.txt"), "secret.txt") << "the user's own stays";
    EXPECT_TRUE(Contains(Sandbox.Ask("rlog \"my project/main.c\""), "placed"));
    obj.Set_WorkingDirectory(project);
    ExpectResult("CVS PlaceProject", "project \"my project\" place into repository " +
                                         obj.CVSROOT() + " execute with Exitcode 1");
    EXPECT_FALSE(obj.PlaceProject()) << "twice";

    TSandboxObject other(Sandbox);
    other.StrictQuoting = true;
    ForceDirectories(Sandbox.Folder / "elsewhere");
    ExpectForm("Pull project from CVS-step 1", [&](TForm& form) {
        Type(StepOf(form), "Edit3", Sandbox.Folder / "elsewhere");
        Check(StepOf(form), "CheckBox1");
        Press(form, "BitBtn4");
        Type(StepOf(form), "Edit5", "my project");
        Press(form, "BitBtn4");
        Choose(StepOf(form), "ComboBox1", stHead);
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS Pull Project ", "project \"my project\" pull into directory " +
                                          (Sandbox.Folder / "elsewhere") +
                                          " successfuly completed");
    EXPECT_TRUE(other.PullProject()) << other.Messages.All();
    EXPECT_TRUE(FileExists(Sandbox.Folder / "elsewhere\\my project\\main.c"));
    EXPECT_FALSE(DirectoryExists(Sandbox.Folder / "elsewhere\\my project\\CVS"));
}

TEST_F(Interactive, ReleasesWhenTheUserAgrees) {
    const std::string copy = Sandbox.CheckOut("work");
    TSandboxObject obj(Sandbox, copy);
    ExpectForm("CVS release", [](TForm& form) { form.ModalResult = mrCancel; });
    EXPECT_FALSE(obj.Release());
    for (const bool agrees : {false, true}) {
        ExpectForm("CVS release", [](TForm& form) {
            Check(form, "CheckBox2");
            Press(form, "BitBtn1");
        });
        ExpectForm("CVS confirmation",
                   [agrees](TForm& form) { Press(form, agrees ? "BitBtn1" : "BitBtn2"); });
        // What the client says behind its question is put to the user, too.
        obj.OnMessage = [&, before = obj.OnMessage](TObject* sender, const std::string& text) {
            before(sender, text);
            if (Contains(text, "are you sure") || Contains(text, "Are you sure"))
                obj.AnswerPrompts = false;
        };
        obj.Release();
        EXPECT_EQ(DirectoryExists(copy), !agrees) << obj.Messages.All();
    }
}

TEST_F(Interactive, LogsInAndOut) {
    TSandboxObject obj(Sandbox);
    tests::ConnectToServer(obj);
    const std::string right = std::exchange(obj.Password, "");
    for (const std::string& password : {std::string("wrong"), right}) {
        ExpectForm("CVS login -step 1", [&](TForm& form) {
            Type(StepOf(form), "Edit3", password);
            Press(form, "BitBtn4");
            Press(form, "BitBtn1");
        });
        ExpectForm("CVS login", [&](TForm& form) {
            EXPECT_TRUE(TextOf(form, "Label1")
                            .ends_with(password == right ? " successfuly completed"
                                                         : " execute with Exitcode 1"));
            Press(form, "BitBtn1");
        });
        EXPECT_EQ(obj.Login(true), password == right) << obj.Messages.All();
    }
    ExpectForm("CVS logout", [](TForm& form) { Press(form, "BitBtn1"); });
    ExpectForm("CVS logout", [](TForm& form) { Press(form, "BitBtn1"); });
    EXPECT_TRUE(obj.Logout(true)) << obj.Messages.All();

    obj.ConnectionType = cnLocal;
    obj.Path = Sandbox.Repository;
    ExpectForm("CVS logout", [](TForm& form) { Press(form, "BitBtn1"); });
    EXPECT_FALSE(obj.Logout(true)) << "nobody is logged in to a folder";
}

}  // namespace
