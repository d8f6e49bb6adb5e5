// The steps of the wizards and the option dialogs: what they show, what they allow, what they hand
// back. No client runs here.

#include <gtest/gtest.h>
#include <richedit.h>

#include <cmath>

#include "core/Customvcs.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/FrameDetForm.h"
#include "framework/base/datetime.h"
#include "framework/base/exceptions.h"
#include "framework/ui/application.h"
#include "framework/ui/edits.h"
#include "framework/ui/list_view.h"
#include "framework/ui/pickers.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/timer.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Leaks.h"

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
using tests::TextOf;

constexpr const char* Odd = "a & \"b\" 'c' 100% \xE4\xF6\xFC %s";

bool CanPress(TForm& form, const char* button) {
    return Part<TButton>(form, button).Enabled();
}

/// Lets the timers of a form come to rest.
void Settle(TForm& form) {
    WaitUntil([&] {
        for (const char* timer : {"Timer1", "Timer2", "Timer3"})
            if (const auto* found = form.Find<TTimer>(timer); found && found->Enabled())
                return false;
        return true;
    });
}

/// The user steps a number.
void ClickTo(TForm& form, const char* name, int position) {
    auto& arrows = Part<TUpDown>(form, name);
    arrows.SetPosition(position);
    arrows.OnClick(&arrows);
}

bool Editable(TForm& form, const char* edit) {
    const auto& part = Part<TEdit>(form, edit);
    EXPECT_EQ(part.ReadOnly(), part.Color() == COLOR_BTNFACE) << edit;
    return !part.ReadOnly();
}

TEST(Wizards, ShowOneStepAtATimeAndSaveAllAtTheEnd) {
    TCvsObject cvs;
    cvs.Set_Modulename("mod");
    cvs.CreateDirs = true;
    tests::ExpectForm("CVS update-step 1", [](TForm& form) {
        EXPECT_FALSE(CanPress(form, "BitBtn3"));
        EXPECT_FALSE(CanPress(form, "BitBtn1"));
        const auto& files = Part<TMemo>(StepOf(form), "Memo1");
        EXPECT_EQ(files.Text(), "mod");
        EXPECT_EQ(::SendMessageW(files.Handle(), EM_SETBKGNDCOLOR, 0, 0),
                  static_cast<LRESULT>(::GetSysColor(COLOR_BTNFACE)))
            << "it cannot be typed into";
        EXPECT_TRUE(Part<TCheckBox>(StepOf(form), "CheckBox3").Checked());
        Check(StepOf(form), "CheckBox3", false);
        Check(StepOf(form), "CheckBox1");
        Check(StepOf(form), "CheckBox2");
        Press(form, "BitBtn4");
        EXPECT_EQ(form.Text(), "CVS update-step 2");
        // A branch without a name is no answer.
        TForm& sticky = StepOf(form);
        Choose(sticky, "ComboBox1", stBranch);
        EXPECT_TRUE(WaitUntil([&] { return !CanPress(form, "BitBtn4"); }));
        Type(sticky, "Edit3", "BR");
        Press(form, "BitBtn4");
        EXPECT_EQ(form.Text(), "CVS update-step 3");
        EXPECT_FALSE(CanPress(form, "BitBtn4"));
        EXPECT_TRUE(CanPress(form, "BitBtn1"));
        auto& back = Part<TButton>(form, "BitBtn3");
        for (int i = 0; i < 20 && !back.Focused(); ++i) {
            tests::PressKey(form, VK_TAB);
            Application().ProcessMessages();
        }
        EXPECT_EQ(tests::MarkedButtons(form), back.Text());
        tests::PressKey(form, VK_SPACE);
        Application().ProcessMessages();
        EXPECT_EQ(tests::MarkedButtons(form), "Next >");
        EXPECT_EQ(TextOf(StepOf(form), "Edit3"), "BR") << "going back loads nothing";
        form.ModalResult = mrCancel;
    });
    EXPECT_FALSE(Update_Prepare(cvs));
    // While one is open there is no other.
    std::string told;
    cvs.OnMessage = [&](TObject*, const std::string& text) { told += text; };
    tests::ExpectForm("CVS update-step 1", [&](TForm& form) {
        EXPECT_FALSE(Commit_Prepare(cvs));
        EXPECT_EQ(told, "CVS commit failed,reason another wizard is already open \r\n");
        Press(form, "BitBtn4");
        EXPECT_EQ(form.Text(), "CVS update-step 2");
        tests::PressKey(form, VK_ESCAPE);
    });
    EXPECT_FALSE(Update_Prepare(cvs));
    EXPECT_TRUE(cvs.CreateDirs && !cvs.ResetSticky && !cvs.LocalOnly && cvs.StikyType == stNone);

    tests::ExpectForm("CVS commit-step 1", [](TForm& form) {
        Check(StepOf(form), "CheckBox1");
        Press(form, "BitBtn4");
        // The keyboard is where the message goes.
        EXPECT_TRUE(Part<TMemo>(StepOf(form), "Memo1").Focused());
        Type(StepOf(form), "Memo1", std::string(Odd) + "\r\nsecond line");
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(Commit_Prepare(cvs));
    EXPECT_EQ(cvs.CommitMessage, std::string(Odd) + "\r\nsecond line");
    EXPECT_TRUE(cvs.ForceFlag);
}

TEST(CreateRepository, WantsAFolderThatIsNotThere) {
    const support::TTempFolder folder("init");
    TCvsObject cvs;
    cvs.SetCVSROOT("old");
    cvs.Path = folder.Path();
    tests::ExpectForm("Create CVS repository", [&](TForm& form) {
        EXPECT_FALSE(Part<TButton>(form, "BitBtn4").Visible()) << "a single step";
        TForm& step = StepOf(form);
        EXPECT_EQ(TextOf(step, "Label1"), "oldold") << "until the first preview";
        EXPECT_EQ(TextOf(step, "CheckEmptyLabel"), "Directory is not empty");
        EXPECT_FALSE(CanPress(form, "BitBtn1"));
        EXPECT_FALSE(Part<TEdit>(step, "Edit1").Enabled());
        Type(step, "Edit3", folder / "new");
        EXPECT_TRUE(WaitUntil(
            [&] { return TextOf(step, "Label1") == "CVSROOT= " + (folder / "new") + " "; }));
        EXPECT_TRUE(WaitUntil([&] { return TextOf(step, "CheckEmptyLabel").empty(); }));
        Choose(step, "ComboBox1", cnPServer);
        EXPECT_TRUE(Part<TEdit>(step, "Edit1").Enabled());
        EXPECT_FALSE(CanPress(step, "Button1"));
        Type(step, "Edit3", "/cvs");
        Type(step, "Edit1", "host");
        Type(step, "Edit2", "me");
        EXPECT_TRUE(WaitUntil([&] {
            return TextOf(step, "Label1") == "CVSROOT= :pserver:me@host:/cvs  ";
        })) << TextOf(step, "Label1");
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(Init_Prepare(cvs));
    EXPECT_EQ(cvs.CVSROOT(), ":pserver:me@host:/cvs");
    EXPECT_EQ(cvs.Server + cvs.UserName + cvs.Path, "hostme/cvs");
    EXPECT_EQ(cvs.ConnectionType, cnPServer);
}

TEST(OptionSteps, HandBackWhatStickyAndMergeWereSetTo) {
    TCvsObject cvs;
    cvs.Set_Modulename("mod");
    cvs.StikyDate = EncodeDate(2004, 3, 5) + EncodeTime(14, 7, 9, 0);
    cvs.MergeSpec.Date1 = cvs.MergeSpec.Date2 = cvs.StikyDate;
    tests::ExpectForm("CVS update-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        TForm& sticky = StepOf(form);
        EXPECT_EQ(TextOf(sticky, "MaskEdit2"), "14:07");
        EXPECT_EQ(Part<TUpDown>(sticky, "UpDown1").Position(), 14);
        for (const auto& [type, edit] : {std::pair{stBranch, "Edit3"}, {stTag, "Edit6"}}) {
            Choose(sticky, "ComboBox1", type);
            Settle(sticky);
            EXPECT_TRUE(Editable(sticky, edit));
            EXPECT_FALSE(Editable(sticky, type == stTag ? "Edit3" : "Edit6"));
            EXPECT_FALSE(CanPress(form, "BitBtn4"));
        }
        Choose(sticky, "ComboBox1", stDate);
        Settle(sticky);
        EXPECT_TRUE(Editable(sticky, "MaskEdit2"));
        EXPECT_TRUE(CanPress(form, "BitBtn4"));
        Part<TDateTimePicker>(sticky, "DateTimePicker1").SetDate(EncodeDate(2005, 6, 7));
        ClickTo(sticky, "UpDown1", 9);
        Settle(sticky);
        EXPECT_EQ(TextOf(sticky, "MaskEdit2"), "09:07");
        Press(form, "BitBtn4");

        TForm& merge = StepOf(form);
        Choose(merge, "ComboBox1", mtPlusRevTag);
        Settle(merge);
        Type(merge, "Edit3", std::string(70, 'x'));
        Settle(merge);
        EXPECT_FALSE(CanPress(form, "BitBtn1")) << "the second is missing";
        Type(merge, "Edit1", "B");
        Check(merge, "CheckBox2");
        Settle(merge);
        EXPECT_FALSE(Editable(merge, "MaskEdit1"));
        EXPECT_TRUE(Editable(merge, "MaskEdit2"));
        EXPECT_TRUE(Editable(merge, "Edit1")) << "the date stands beside the label";
        Type(merge, "MaskEdit2", "9 :  ");
        char shown[8];
        ::GetWindowTextA(Part<TMaskEdit>(merge, "MaskEdit2").Handle(), shown, sizeof shown);
        EXPECT_STREQ(shown, "9_:__");
        EXPECT_EQ(TextOf(merge, "MaskEdit2"), "9 :  ");
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(Update_Prepare(cvs));
    EXPECT_EQ(cvs.StikyType, stDate);
    EXPECT_DOUBLE_EQ(cvs.StikyDate, EncodeDate(2005, 6, 7) + EncodeTime(9, 7, 0, 0));
    EXPECT_EQ(cvs.MergeSpec.Kind, mtPlusRevTag);
    EXPECT_EQ(std::string_view(cvs.MergeSpec.Rev1), std::string(63, 'x'));
    EXPECT_EQ(std::string_view(cvs.MergeSpec.Rev2), "B");
    EXPECT_TRUE(!cvs.MergeSpec.UseDate1 && cvs.MergeSpec.UseDate2);
    EXPECT_DOUBLE_EQ(cvs.MergeSpec.Date2, EncodeDate(2004, 3, 5) + EncodeTime(14, 7, 9, 0))
        << "a time that is none leaves the date";

    tests::ExpectForm("CVS update-step 1", [](TForm& form) {
        Press(form, "BitBtn4");
        Press(form, "BitBtn4");
        Choose(StepOf(form), "ComboBox1", 4);
        Settle(StepOf(form));
        EXPECT_FALSE(Editable(StepOf(form), "Edit3"));
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(Update_Prepare(cvs));
    EXPECT_EQ(static_cast<int>(cvs.MergeSpec.Kind), 4) << "an entry that means nothing";
}

TEST(DiffForm, ComparesWithARevisionOrADate) {
    TCvsObject cvs;
    cvs.LogListA.Add("FIRST", "1.1", true);
    cvs.DiffSpec.Kind = dctMostRecent;
    cvs.DiffSpec.Date1 = cvs.DiffSpec.Date2 = EncodeDate(2004, 3, 5) + EncodeTime(14, 7, 9, 0);
    tests::ExpectForm("CVS diff", [](TForm& form) {
        EXPECT_EQ(Part<TComboBox>(form, "ComboBox1").ItemIndex(), 0);
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(sh_Diff_Form(cvs));
    EXPECT_EQ(cvs.DiffSpec.Kind, dctHead);

    tests::ExpectForm("CVS diff", [](TForm& form) {
        EXPECT_EQ(TextOf(form, "MaskEdit1"), "14:07:09");
        EXPECT_FALSE(CanPress(form, "Button3"));
        Choose(form, "ComboBox1", dctTwoRevision);
        Settle(form);
        Type(form, "Edit3", "1.1");
        Settle(form);
        EXPECT_FALSE(CanPress(form, "BitBtn1"));
        Check(form, "CheckBox2");
        Settle(form);
        EXPECT_TRUE(CanPress(form, "BitBtn1"));
        EXPECT_FALSE(Editable(form, "Edit1")) << "a date takes the revision's place";
        EXPECT_FALSE(CanPress(form, "Button2"));
        EXPECT_TRUE(CanPress(form, "Button4"));
        ClickTo(form, "UpDown2", 23);
        Settle(form);
        EXPECT_EQ(TextOf(form, "MaskEdit2"), "23:07:09");
        // What is up to date already needs no delay.
        Type(form, "Edit3", "1.1");
        EXPECT_TRUE(Part<TTimer>(form, "Timer1").Enabled());
        tests::ExpectForm("Select version label or branch", [&](TForm& names) {
            EXPECT_TRUE(Part<TTimer>(form, "Timer1").Enabled()) << "it waits for its form";
            names.ModalResult = mrCancel;
        });
        Press(form, "Button1");
        EXPECT_FALSE(Part<TTimer>(form, "Timer1").Enabled());
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(sh_Diff_Form(cvs));
    EXPECT_EQ(cvs.DiffSpec.Kind, dctTwoRevision);
    EXPECT_EQ(std::string_view(cvs.DiffSpec.Rev1), "1.1");
    EXPECT_DOUBLE_EQ(cvs.DiffSpec.Date2, EncodeDate(2004, 3, 5) + EncodeTime(23, 7, 9, 0));

    tests::ExpectForm("CVS diff", [](TForm& form) {
        Check(form, "CheckBox2", false);
        Check(form, "CheckBox1");
        Settle(form);
        Type(form, "MaskEdit1", "99:  :  ");
        Type(form, "Edit1", "1.2");
        Press(form, "BitBtn1");
    });
    EXPECT_THROW(sh_Diff_Form(cvs), EConvertError);
    EXPECT_EQ(std::string_view(cvs.DiffSpec.Rev2), "1.2") << "stored before the time";
    tests::ExpectForm("CVS diff", [](TForm& form) { tests::PressKey(form, VK_ESCAPE); });
    EXPECT_FALSE(sh_Diff_Form(cvs));
}

TEST(ReleaseForm, KeepsItsOptionsApart) {
    TCvsObject cvs;
    cvs.ReleaseExport = cvs.ReleaseDelete = cvs.ReleaseForce = true;
    tests::ExpectForm("CVS release", [](TForm& form) {
        auto& first = Part<TCheckBox>(form, "CheckBox1");
        auto& second = Part<TCheckBox>(form, "CheckBox2");
        auto& third = Part<TCheckBox>(form, "CheckBox3");
        EXPECT_TRUE(first.Checked() && !second.Checked() && !third.Checked() && !third.Enabled());
        second.Click();
        third.Click();
        EXPECT_TRUE(!first.Checked() && second.Checked() && third.Checked());
        second.Click();
        EXPECT_TRUE(!third.Checked() && !third.Enabled());
        second.Click();
        third.Click();
        first.Click();
        EXPECT_TRUE(first.Checked() && !second.Checked() && !third.Checked() && !third.Enabled());
        second.Click();
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(sh_Release_Form(cvs));
    EXPECT_TRUE(!cvs.ReleaseExport && cvs.ReleaseDelete && !cvs.ReleaseForce);
}

TEST(LabelForm, TakesTheRowThatIsSelectedWhenOkIsPressed) {
    TCvsObject cvs;
    for (const char* name : {"FIRST", "SECOND"})
        cvs.LogListA.Add(name, "1.1", true);
    cvs.TagName = "FIRST";
    const auto choose = [&](TModalResult result) {
        tests::ExpectForm("Delete Version Label", [result](TForm& form) {
            EXPECT_EQ(TextOf(form, "Edit1"), "FIRST");
            Part<TListView>(form, "ListView1").Select(1);
            // At once, as the keyboard does.
            form.ModalResult = result;
        });
        return sh_DelLabel_Form(cvs);
    };
    EXPECT_FALSE(choose(mrCancel));
    EXPECT_EQ(cvs.TagName, "FIRST");
    EXPECT_TRUE(choose(mrOk));
    EXPECT_EQ(cvs.TagName, "SECOND");
}

TEST(Preferences, CheckTheRepositoryOnlyInWizards) {
    const support::TTempFolder folder("prefs");
    TCvsObject cvs;
    cvs.Path = folder / "none";
    tests::ExpectForm("CVS preferences", [&](TForm& form) {
        EXPECT_EQ(TextOf(form, "CheckEmptyLabel"), "");
        Type(form, "Edit7", Odd);
        EXPECT_FALSE(CanPress(form, "BitBtn1")) << "a project has a name";
        Type(form, "Edit5", std::string(150, 'n'));
        Choose(form, "ComboBox1", cnPServer);
        Settle(form);
        EXPECT_EQ(Part<TEdit>(form, "Edit8").Color(), COLOR_WINDOW);
        Type(form, "Edit8", "2402");
        Type(form, "Edit1", "host");
        Check(form, "CheckBox1", false);
        Settle(form);
        EXPECT_EQ(TextOf(form, "Edit4"), ":pserver:host:2402:" + (folder / "none") + "  ");
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(cvs.Preferences());
    EXPECT_EQ(cvs.CVSIGNORE(), Odd);
    EXPECT_EQ(cvs.Modulename(), std::string(150, 'n'));
    EXPECT_FALSE(cvs.PruneEmptyDirs);
    cvs.Set_CVSIGNORE("");

    // In a wizard the repository has to be there, and the settings are saved on the way.
    cvs.ConnectionType = cnLocal;
    for (const char* name : {"mod", "old"})
        support::WriteBytes(folder / name + "\\a.c", "");
    cvs.Set_ProjectRoot(folder.Path());
    cvs.Set_Modulename("old");
    tests::ExpectForm("Pull project from CVS-step 1", [&](TForm& form) {
        Type(StepOf(form), "Edit3", "C:\\work\\proj");
        Check(StepOf(form), "CheckBox1");
        Press(form, "BitBtn4");
        TForm& step = StepOf(form);
        EXPECT_EQ(TextOf(step, "CheckEmptyLabel"), "no CVSROOT found");
        EXPECT_FALSE(CanPress(form, "BitBtn4"));
        support::WriteBytes(folder / "none\\CVSROOT\\config", "");
        Type(step, "Edit3", folder / "none");
        Type(step, "Edit5", "");
        Settle(step);
        EXPECT_FALSE(CanPress(form, "BitBtn4")) << "without a project name";
        Choose(step, "ComboBox1", cnSSH);
        Settle(step);
        EXPECT_EQ(Part<TEdit>(step, "Edit6").Color(), COLOR_WINDOW);
        EXPECT_TRUE(Part<TEdit>(step, "Edit6").ReadOnly());
        Choose(step, "ComboBox1", cnLocal);
        for (const char* name : {"mod", "old", "mod"}) {
            Type(step, "Edit5", name);
            Press(form, "BitBtn4");
            EXPECT_EQ(cvs.Modulename(), name);
            Press(form, "BitBtn3");
        }
        Press(form, "BitBtn3");
        Press(form, "BitBtn4");
        Press(form, "BitBtn4");
        Press(form, "BitBtn1");
    });
    EXPECT_TRUE(PullProject_Prepare(cvs));
    EXPECT_EQ(cvs.Modulename(), "mod");
    EXPECT_EQ(cvs.ProjectRoot(), "C:\\work\\proj");
    EXPECT_TRUE(cvs.ExportInsteadOfCheckout && cvs.WizardDataAccepted);
}

TEST(Preferences, TakeTheNameThatIsToBeTaken) {
    const support::TTempFolder folder("names");
    support::WriteBytes(folder / "repository\\CVSROOT\\config", "");
    TCvsObject cvs;
    cvs.Path = folder / "repository";
    // A project that is pulled has the name that was shown, whatever lies on the disk.
    for (const std::string& root : {folder / "src", folder / "none", std::string("D:\\")}) {
        support::WriteBytes(folder / "src\\src\\a.c", "");
        cvs.Set_ProjectRoot(folder.Path());
        cvs.Set_Modulename("shown");
        tests::ExpectForm("Pull project from CVS-step 1", [&](TForm& form) {
            Type(StepOf(form), "Edit3", root);
            Press(form, "BitBtn4");
            EXPECT_EQ(TextOf(StepOf(form), "Edit5"), "shown");
            Press(form, "BitBtn4");
            Press(form, "BitBtn1");
        });
        EXPECT_TRUE(PullProject_Prepare(cvs));
        EXPECT_EQ(cvs.Modulename(), "shown");
        EXPECT_EQ(cvs.ProjectRoot(), root);
        EXPECT_EQ(cvs.WorkingDirectory(), root + (root.ends_with('\\') ? "" : "\\") + "shown");
    }
    // Elsewhere a name that the user left alone is not taken, the folder there or not.
    for (const char* typed : {"", "typed"}) {
        cvs.Set_WorkingDirectory(folder / "src");
        tests::ExpectForm("CVS preferences", [&](TForm& form) {
            EXPECT_EQ(TextOf(form, "Edit5"), "src");
            cvs.Set_WorkingDirectory(folder / "gone");
            Type(form, "Edit5", "");
            EXPECT_TRUE(WaitUntil([&] { return !CanPress(form, "BitBtn1"); }));
            Type(form, "Edit5", *typed ? typed : "src");
            Press(form, "BitBtn1");
        });
        EXPECT_TRUE(cvs.Preferences());
        EXPECT_EQ(cvs.WorkingDirectory(), folder / (*typed ? typed : "gone"));
    }
}

TEST(PlaceStep, WantsAFolderThatIsThereAndThePasswordIsKept) {
    const support::TTempFolder folder("place");
    TCvsObject cvs;
    cvs.Set_WorkingDirectory(folder / "none");
    tests::ExpectForm("Place project into CVS-step 1", [&](TForm& form) {
        TForm& step = StepOf(form);
        EXPECT_EQ(TextOf(step, "CheckEmptyLabel"), "Directory is empty");
        EXPECT_FALSE(CanPress(form, "BitBtn4"));
        Type(step, "Edit3", folder.Path());
        EXPECT_TRUE(WaitUntil([&] { return CanPress(form, "BitBtn4"); }));
        EXPECT_EQ(TextOf(step, "CheckEmptyLabel"), "");
        Type(step, "Edit3", "");
        EXPECT_TRUE(WaitUntil([&] { return !CanPress(form, "BitBtn4"); }));
        form.ModalResult = mrCancel;
    });
    EXPECT_FALSE(PlaceProject_Prepare(cvs));
    EXPECT_EQ(cvs.WorkingDirectory(), folder / "none");

    cvs.Password = "wrong";
    tests::ExpectForm("CVS login -step 1", [](TForm& form) {
        const auto& password = Part<TEdit>(StepOf(form), "Edit3");
        EXPECT_TRUE(password.Focused());
        EXPECT_EQ(::SendMessageW(password.Handle(), EM_GETSEL, 0, 0), MAKELONG(0, 5))
            << "what is typed takes its place, unseen as it is";
        Type(StepOf(form), "Edit3", "");
        EXPECT_TRUE(WaitUntil([&] { return !CanPress(form, "BitBtn4"); }));
        Type(StepOf(form), "Edit3", "secret");
        Press(form, "BitBtn4");
        EXPECT_FALSE(Part<TEdit>(StepOf(form), "Edit5").Visible()) << "only the connection";
        int height = 0, width = 0;
        dynamic_cast<TFrameDetForm&>(StepOf(form)).GetSize(height, width);
        EXPECT_EQ(height, form.Scale(250));
        form.ModalResult = mrCancel;
    });
    EXPECT_FALSE(Login_Prepare(cvs));
    EXPECT_EQ(cvs.Password, "secret") << "handed over by going on";
}

TEST(Wizards, LeaveNothingBehind) {
    TCvsObject cvs;
    cvs.Set_Modulename("mod");
    const auto page = [&] {
        tests::ExpectForm("CVS update-step 1", [](TForm& form) {
            Press(form, "BitBtn4");
            Press(form, "BitBtn4");
            form.ModalResult = mrCancel;
        });
        Update_Prepare(cvs);
    };
    page();
    const tests::TResources before = tests::CountResources();
    for (int i = 0; i < 200; ++i)
        page();
    const tests::TResources after = tests::CountResources();
    EXPECT_EQ(after.Windows, before.Windows);
    EXPECT_EQ(after.GdiObjects, before.GdiObjects);
    EXPECT_LE(after.Handles, before.Handles + 2);
}

}  // namespace
