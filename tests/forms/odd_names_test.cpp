// The dialogs' operations from the first to the last day of a project, with names that a command
// line makes something else of.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "cvs/Dialogs.h"
#include "framework/base/files.h"
#include "framework/ui/list_view.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/timer.h"
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

constexpr const char* Message = "he said \"no\", 100% & 'why' \xF6 \\";
constexpr const char* Done = " successfuly completed";

class OddDialogs : public testing::TestWithParam<bool> {
protected:
    OddDialogs() {
        Obj.StrictQuoting = true;
        Obj.OutputListLimit = 1000000;
        Obj.OnPlaceProject = [](TCvsObject& cvs) {
            cvs.VendorTag = "V";
            cvs.ReleaseTag = "R";
        };
        for (const std::string& name : Names)
            Sandbox.Write(Project + "\\" + name, "first\r\n");
    }

    /// What a bare client says about the repository.
    std::string Ask(const std::string& arguments) const {
        const auto result = support::RunProcess("cvs -Q -d \"" + Obj.CVSROOT() + "\" " + arguments,
                                                Sandbox.Folder.Path());
        EXPECT_EQ(result.ExitCode, 0u) << arguments << result.Output;
        return result.Output;
    }
    template <class Operation>
    void Do(Operation operation) {
        Obj.Messages.Clear();
        // As hosts do: names are read once, and what one file was asked stays set.
        Obj.LogListA.Clear();
        Obj.LocalOnly = false;
        EXPECT_TRUE(operation()) << Obj.CommandLine << Obj.Messages.All();
    }
    void Do(bool (TCustomCvsObj::*operation)()) {
        Do([&] { return (Obj.*operation)(); });
    }
    void Do(bool (TCustomCvsObj::*operation)(bool)) {
        Do([&] { return (Obj.*operation)(true); });
    }
    void MakeRepository();
    void LogIn();
    void Place();
    void Commit();
    void LabelAndBranch();
    void Compare();
    void Browse();
    void GoToTheBranch();
    void DeleteLabels();
    void Pull(bool exported);
    void Release(const std::string& copy);

    tests::TSandbox Sandbox;
    tests::TSandboxObject Obj{Sandbox};
    const std::string Module = std::string(GetParam() ? 0 : 100, 'm') + "it's 100% p\xF6 & co" +
                               std::to_string(::GetCurrentProcessId());
    const std::string Project = Sandbox.Folder / Module;
    const std::vector<std::string> Names{"it's 100% n\xF6w & odd.c",
                                         std::string(GetParam() ? 148 : 40, 'l') + ".c",
                                         "[a]{b};,=~^`!@$HOME(#).c",
                                         "s\xFC"
                                         "b 5% & 'x'\\it's in.c"};
};

void OddDialogs::MakeRepository() {
    const std::string path = Sandbox.Folder / "r\xE9po 5% & it's";
    ExpectForm("Create CVS repository", [&](TForm& form) {
        Type(StepOf(form), "Edit3", path);
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS init", "CVS init " + path + Done);
    Obj.Set_WorkingDirectory(Sandbox.Folder.Path());
    Do(&TCustomCvsObj::CreateLocalRepository);
}

void OddDialogs::LogIn() {
    tests::ConnectToServer(Obj);
    const std::string password = std::exchange(Obj.Password, "");
    ExpectForm("CVS login -step 1", [&](TForm& form) {
        Type(StepOf(form), "Edit3", password);
        Press(form, "BitBtn4");
        Press(form, "BitBtn1");
    });
    ExpectForm("CVS login", [](TForm& form) { Press(form, "BitBtn1"); });
    Do(&TCustomCvsObj::Login);
}

void OddDialogs::Place() {
    Obj.Set_WorkingDirectory(Project);
    ExpectForm("Place project into CVS-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        Press(form, "BitBtn4");
        Type(StepOf(form), "Memo1", Message);
        Press(form, "BitBtn4");
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS PlaceProject",
                 "project \"" + Module + "\" place into repository " + Obj.CVSROOT() + Done);
    Do(&TCustomCvsObj::PlaceProject);
    const std::string list = Ask("rls -R \"" + Module + "\"");
    for (const std::string& name : Names)
        EXPECT_NE(list.find(name.substr(name.find('\\') + 1)), std::string::npos) << name << list;
    EXPECT_NE(Ask("rlog \"" + Module + "\"").find(Message), std::string::npos);
    Obj.Set_WorkingDirectory(Project);
    EXPECT_EQ(Obj.Modulename(), Module);
}

void OddDialogs::Commit() {
    for (const std::string& name : Names)
        Sandbox.Write(Project + "\\" + name, "first\r\nsecond, and longer\r\n");
    ExpectForm("CVS commit-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        Type(StepOf(form), "Memo1", std::string("now ") + Message);
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS commit", "CVS commit  \"" + Module + "\"" + Done);
    Do(&TCustomCvsObj::Commit);
    EXPECT_NE(Ask("rlog \"" + Module + "\"").find(std::string("now ") + Message),
              std::string::npos);
}

void OddDialogs::LabelAndBranch() {
    for (const auto& [caption, result, name, operation] :
         {std::tuple{"Create Version Label", "label", "REL", &TCustomCvsObj::Create_Tag},
          {"Create Branch", "branch", "BR", &TCustomCvsObj::Create_Rtag}}) {
        ExpectForm(caption, [name = std::string(name)](TForm& form) {
            Type(form, "Edit1", name);
            Press(form, "BitBtn1");
        });
        ExpectResult("CVS create " + std::string(result),
                     "CVS create " + std::string(result) + " " + name + Done);
        Do(operation);
    }
    const std::string log = Ask("rlog -h \"" + Module + "\"");
    EXPECT_NE(log.find("REL: 1.2"), std::string::npos) << log;
    EXPECT_NE(log.find("BR: 1.2.0.2"), std::string::npos) << log;
}

void OddDialogs::Compare() {
    for (const std::string& name : Names) {
        ExpectForm("CVS diff", [](TForm& form) {
            Choose(form, "ComboBox1", dctRevision);
            EXPECT_TRUE(WaitUntil([&] { return Part<TButton>(form, "Button1").Enabled(); }));
            ExpectChoice("Select version label or branch", "R");
            Press(form, "Button1");
            Press(form, "BitBtn1");
        });
        Obj.Messages.Clear();
        Obj.DiffFile(true, Project + "\\" + name);
        EXPECT_NE(Obj.Messages.All().find("> second, and longer"), std::string::npos)
            << name << Obj.CommandLine << Obj.Messages.All();
    }
}

void OddDialogs::Browse() {
    Sandbox.Write(Project + "\\" + Names[0], "changed\r\n");
    tests::Touch(Project + "\\" + Names[0]);
    ExpectForm("StatusBrowser", [this](TForm& form) {
        TForm& page = StepOf(form);
        tests::SelectRow(page, Names[0]);
        EXPECT_TRUE(WaitUntil([&] { return !Part<TTimer>(page, "Timer2").Enabled(); }));
        for (const auto& [edit, text] : {std::pair{"StatusEdit", "File: " + Names[0]},
                                         {"LogEdit", "Working file: " + Names[0]},
                                         {"DiffEdit", std::string("> changed")}})
            EXPECT_NE(Part<TRichEdit>(page, edit).Text().find(text), std::string::npos)
                << edit << Part<TRichEdit>(page, edit).Text() << "\n"
                << Obj.Messages.All();
        form.ModalResult = mrCancel;
    });
    Obj.StatusBrowser();
    Sandbox.Write(Project + "\\" + Names[0], "first\r\nsecond, and longer\r\n");
}

void OddDialogs::GoToTheBranch() {
    ExpectForm("CVS update-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        Choose(StepOf(form), "ComboBox1", stBranch);
        EXPECT_TRUE(WaitUntil([&] { return Part<TButton>(StepOf(form), "Button1").Enabled(); }));
        ExpectChoice("Select version label or branch", "BR");
        Press(StepOf(form), "Button1");
        Press(form, "BitBtn4");
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS update", "CVS update  \"" + Module + "\"" + Done);
    Do([this] { return Obj.UpdateSpecial(); });
    const std::string status = Obj.StatusFileEx(Project + "\\" + Names[0]);
    EXPECT_NE(status.find("BR (branch: 1.2.2)"), std::string::npos) << status;
}

void OddDialogs::DeleteLabels() {
    const auto chooses = [](const std::string& name) {
        return [name](TForm& form) {
            Press(form, "Button1");
            tests::SelectRow(form, name);
            EXPECT_TRUE(WaitUntil([&] { return tests::TextOf(form, "Edit1") == name; }));
            Press(form, "BitBtn1");
        };
    };
    Obj.TagBranch = Obj.TagDeleteBranch = false;
    ExpectForm("Delete Version Label", chooses("REL"));
    ExpectResult("CVS delete label", std::string("CVS delete label REL") + Done);
    Do(&TCustomCvsObj::Del_Tag);
    Obj.TagDeleteBranch = true;
    ExpectForm("Delete Branch", chooses("BR"));
    ExpectResult("CVS delete branch", std::string("CVS delete branch BR") + Done);
    Do(&TCustomCvsObj::Del_Rtag);
    const std::string log = Ask("rlog -h \"" + Module + "\"");
    EXPECT_EQ(log.find("REL:"), std::string::npos) << log;
    EXPECT_EQ(log.find("BR:"), std::string::npos) << log;
}

void OddDialogs::Pull(bool exported) {
    const std::string folder = Sandbox.Folder / (exported ? "e\xE9 & 1%" : "p\xE9 & it's 1%");
    ForceDirectories(folder);
    ExpectForm("Pull project from CVS-step 1", [&](TForm& form) {
        Type(StepOf(form), "Edit3", folder);
        if (exported != Part<TCheckBox>(StepOf(form), "CheckBox1").Checked())
            Check(StepOf(form), "CheckBox1");
        Press(form, "BitBtn4");
        Type(StepOf(form), "Edit5", Module);
        Press(form, "BitBtn4");
        Choose(StepOf(form), "ComboBox1", stHead);
        Press(form, "BitBtn1");
    });
    ExpectResult("CVS Pull Project ",
                 "project \"" + Module + "\" pull into directory " + folder + Done);
    Do(&TCustomCvsObj::PullProject);
    for (const std::string& name : Names)
        EXPECT_EQ(Sandbox.Read(folder + "\\" + Module + "\\" + name),
                  "first\r\nsecond, and longer\r\n")
            << name;
    EXPECT_EQ(DirectoryExists(folder + "\\" + Module + "\\CVS"), !exported);
    if (!exported)
        Release(folder + "\\" + Module);
}

void OddDialogs::Release(const std::string& copy) {
    Obj.Set_WorkingDirectory(copy);
    Obj.OnMessage = [this, before = Obj.OnMessage](TObject* sender, const std::string& text) {
        before(sender, text);
        // What the client says behind its question needs no answer.
        if (text.find("re you sure") != std::string::npos)
            Obj.AnswerPrompts = false;
    };
    ExpectForm("CVS release", [](TForm& form) {
        Check(form, "CheckBox2");
        Press(form, "BitBtn1");
    });
    ExpectForm("CVS confirmation", [](TForm& form) { Press(form, "BitBtn1"); });
    EXPECT_TRUE(Obj.Release()) << Obj.Messages.All();
    EXPECT_FALSE(DirectoryExists(copy)) << Obj.Messages.All();
}

TEST_P(OddDialogs, WorkFromTheFirstDayToTheLast) {
    GetParam() ? LogIn() : MakeRepository();
    Place();
    Commit();
    LabelAndBranch();
    Compare();
    Browse();
    GoToTheBranch();
    DeleteLabels();
    Pull(false);
    Pull(true);
    if (!GetParam())
        return;
    ExpectForm("CVS logout", [](TForm& form) { Press(form, "BitBtn1"); });
    ExpectForm("CVS logout", [](TForm& form) { Press(form, "BitBtn1"); });
    Do(&TCustomCvsObj::Logout);
}

INSTANTIATE_TEST_SUITE_P(, OddDialogs, testing::Bool(), [](const auto& info) {
    return std::string(info.param ? "OnAServer" : "Locally");
});

}  // namespace
