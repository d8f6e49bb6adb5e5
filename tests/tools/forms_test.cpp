// The tools' editor and the question for arguments, as a user meets them. With TANDREL_OUT set,
// pictures of both are left in that folder.

#include "framework/ui/dialogs.h"
#include "framework/ui/labels.h"
#include "framework/ui/tool_bar.h"
#include "support/Drive.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Leaks.h"
#include "tests/support/Looks.h"
#include "tests/support/Names.h"
#include "tests/support/Tidy.h"
#include "tests/tools/ToolsFixture.h"
#include "tools/Dialogs.h"
#include "tools/tools_frm.h"

namespace {

using namespace framework;
using support::Part;
using tandrel::TCommand;

constexpr const char* Boxes[] = {"CheckBox1", "CheckBox2", "CheckBox3", "CheckBox4", "CheckBox5"};

class ToolsEditor : public tests::TToolsTest {
protected:
    ToolsEditor() : Dialogs_(DialogFunctions()) {
        Tools.FDocTypes.Add("text");
        Tools.FDocTypes.Add("C++ & more");
    }
    ~ToolsEditor() override { DialogFunctions() = Dialogs_; }

    void Add(const std::string& names) {
        for (const char name : names)
            Tools.Commands.AddCommand(std::string(1, name)).FCommand =
                "C:\\windows\\" + std::string(1, name);
    }
    /// Shows the editor; `use` has to close it.
    bool Edit(const std::function<void(TForm&)>& use) {
        tests::ExpectForm("User Tools", [this, use](TForm& form) {
            Form = &form;
            use(form);
        });
        return tandrel::Sh_UserToolsForm(Tools);
    }
    void Tool(int number) {
        Part<TToolButton>(*Form, "ToolButton" + std::to_string(number)).Click();
    }
    TListView& List() { return Part<TListView>(*Form, "ListView1"); }
    /// Selects a row and waits until the fields show it.
    void Select(int row) {
        List().Select(row);
        Rest();
    }
    /// Waits until no timer runs.
    void Rest() {
        EXPECT_TRUE(support::WaitUntil([&] {
            return !Part<TTimer>(*Form, "Timer1").Enabled() &&
                   !Part<TTimer>(*Form, "Timer2").Enabled();
        }));
    }
    std::string Checked() {
        std::string marks;
        for (const char* box : Boxes)
            marks += Part<TCheckBox>(*Form, box).Checked() ? 'x' : '-';
        return marks;
    }
    std::string Names() {
        std::string names;
        for (int i = 0; i < List().Count(); ++i)
            names += List().Row(i).Caption;
        return names;
    }
    std::string Fields() {
        return tests::TextOf(*Form, "Edit1") + "|" + tests::TextOf(*Form, "Edit2") + "|" +
               tests::TextOf(*Form, "Edit3") + "|" + Checked();
    }

    TForm* Form = nullptr;

private:
    TDialogFunctions Dialogs_;
};

TEST_F(ToolsEditor, KeepsWhatIsTyped) {
    Add("ab");
    const std::string odd = "\xC4\xE9 & $(x) \"%s\" ", longText(30000, 'w');
    EXPECT_TRUE(Edit([&](TForm& form) {
        EXPECT_TRUE(List().Focused());
        EXPECT_EQ(List().SelectedIndex(), 0);
        EXPECT_EQ(Fields(), "C:\\windows\\a|||----x");
        support::Type(form, "Edit1", odd);
        support::Type(form, "Edit2", longText);
        support::Type(form, "Edit3", odd + odd);
        support::Check(form, "CheckBox3");
        support::Choose(form, "ComboBox1", 1);
        const auto& types = Part<TComboBox>(form, "ComboBox1");
        RECT open{};
        ::SendMessageW(types.Handle(), CB_GETDROPPEDCONTROLRECT, 0,
                       reinterpret_cast<LPARAM>(&open));
        const LRESULT item = ::SendMessageW(types.Handle(), CB_GETITEMHEIGHT, 0, 0);
        EXPECT_GE(open.bottom - open.top, 2 * item) << "both of them show";
        List().Select(1);
        EXPECT_EQ(tests::TextOf(form, "Edit1"), odd) << "shown only when the user rests";
        Rest();
        EXPECT_EQ(Fields(), "C:\\windows\\b|||----x");
        EXPECT_EQ(Tools.Commands.GetItem(0).FArguments, longText);
        EXPECT_FALSE(Part<TComboBox>(form, "ComboBox1").Enabled());
        support::Check(form, "CheckBox4");
        Select(0);
        EXPECT_EQ(Fields(), odd + "|" + longText + "|" + odd + odd + "|--x-x");
        EXPECT_EQ(Part<TComboBox>(form, "ComboBox1").ItemIndex(), 1);
        Select(-1);
        EXPECT_EQ(Fields(), "|||-----");
        Select(1);
        support::Type(form, "Edit2", "typed last");
        DialogFunctions().AskYesNo = [](const std::string&, const std::string&) { return false; };
        tests::PressKey(form, VK_RETURN);
    }));
    const TCommand& first = Tools.Commands.GetItem(0);
    EXPECT_EQ(first.FCommand, odd);
    EXPECT_EQ(first.FInitDir, odd + odd);
    EXPECT_EQ(first.FDocType, "C++ & more");
    EXPECT_TRUE(first.FCaptureNewDoc);
    EXPECT_EQ(Tools.Commands.GetItem(1).FArguments, "typed last");
    EXPECT_TRUE(Tools.Commands.GetItem(1).FPromptArgs);
    EXPECT_EQ(Tools.Commands.GetItem(1).FDocType, "");
}

TEST_F(ToolsEditor, KeepsItsOptionsTogether) {
    Add("ab");
    Tools.Commands.GetItem(1).FCaptureNewDoc = true;
    Tools.Commands.GetItem(1).FDocType = "gone";
    Edit([&](TForm& form) {
        auto& type = Part<TComboBox>(form, "ComboBox1");
        support::Check(form, "CheckBox5", false);
        Rest();
        for (const char* box : {"CheckBox1", "CheckBox2", "CheckBox3"}) {
            support::Check(form, box);
            EXPECT_EQ(Checked().back(), 'x') << "at once";
            EXPECT_EQ(type.Enabled(), Checked()[2] == 'x');
            support::Check(form, "CheckBox5", false);
            EXPECT_NE(Checked(), "-----") << "not at once";
            Rest();
            EXPECT_EQ(Checked(), "-----");
            EXPECT_FALSE(type.Enabled());
        }
        support::Check(form, "CheckBox4");
        EXPECT_EQ(Checked(), "---x-") << "a question needs no capture";
        support::Check(form, "CheckBox3");
        EXPECT_EQ(type.ItemIndex(), 0) << "the first one";
        EXPECT_EQ(type.Color(), COLOR_WINDOW);
        type.Select(1);
        support::Check(form, "CheckBox1");
        EXPECT_EQ(type.ItemIndex(), 1);
        support::Check(form, "CheckBox3", false);
        EXPECT_EQ(type.ItemIndex(), -1);
        EXPECT_EQ(type.Color(), COLOR_BTNFACE);
        EXPECT_EQ(Checked(), "x--xx");
        Select(1);
        EXPECT_EQ(type.ItemIndex(), -1) << "a type that is no longer offered";
        EXPECT_TRUE(type.Enabled());
        // Faster than the timer.
        Select(0);
        support::Check(form, "CheckBox5", false);
        tests::PressKey(form, VK_ESCAPE);
        List().Select(1);
        Rest();
    });
    EXPECT_FALSE(Tools.Commands.GetItem(0).FCaptureToolView) << "kept although it was cancelled";
    EXPECT_FALSE(Tools.Commands.GetItem(0).FCloseOnExit);
    EXPECT_TRUE(Tools.Commands.GetItem(1).FCaptureNewDoc);
}

TEST_F(ToolsEditor, AddsRenamesDeletesAndMoves) {
    Edit([&](TForm& form) {
        EXPECT_EQ(Fields(), "|||-----");
        EXPECT_FALSE(Part<TComboBox>(form, "ComboBox1").Enabled());
        EXPECT_TRUE(Part<TToolBar>(form, "ToolBar1").Focused()) << "there is nothing but to add";
        for (const int number : {2, 3, 4})
            Tool(number);
        Tool(1);
        EXPECT_EQ(Fields(), "|||----x");
        const HWND caption = ::GetFocus();
        EXPECT_EQ(::GetParent(caption), List().Handle());
        ::SetWindowTextW(caption, L"\u00DC & x");
        tests::PressKey(form, VK_RETURN);
        EXPECT_TRUE(support::WaitUntil([&] { return Names() == "\xDC & x"; }));
        EXPECT_EQ(form.ModalResult, mrNone) << "the key was for the caption";
        support::Type(form, "Edit1", "first");
        Tool(1);
        EXPECT_EQ(Names(), "\xDC & xUser Tool");
        EXPECT_EQ(Tools.Commands.GetItem(0).FCommand, "first");
        tests::Click(form, "BitBtn2");
    });
    EXPECT_EQ(Tools.Commands.GetItem(0).FName, "\xDC & x");

    Tools.Commands.Clear();
    Add("ABC");
    Edit([&](TForm& form) {
        support::Type(form, "Edit2", "of A");
        Tool(4);
        EXPECT_EQ(Names(), "ABC") << "already the first";
        List().EditCaption(0);
        ::SetWindowTextW(::GetFocus(), L"a");
        Tool(3);
        EXPECT_EQ(Names(), "BaC") << "the edited caption goes with its tool";
        EXPECT_EQ(List().SelectedIndex(), 1);
        Tool(3);
        EXPECT_EQ(Names(), "BCa");
        Tool(3);
        EXPECT_EQ(Names(), "BCa") << "already the last";
        Rest();
        EXPECT_EQ(tests::TextOf(form, "Edit2"), "of A");
        // The keys of the list.
        Select(1);
        List().SetFocus();
        tests::PressKey(form, VK_DELETE);
        EXPECT_TRUE(support::WaitUntil([&] { return Names() == "Ba"; }));
        EXPECT_EQ(List().SelectedIndex(), 1) << "the last one";
        Rest();
        EXPECT_EQ(tests::TextOf(form, "Edit2"), "of A");
        // Behind the deleted one: the row of that number is another tool's.
        Select(0);
        Tool(3);
        EXPECT_EQ(Names(), "Ba");
        EXPECT_EQ(List().Selected()->Caption, "a");
        Rest();
        EXPECT_EQ(tests::TextOf(form, "Edit2"), "of A");
        Tool(2);
        Tool(2);
        Tool(2);
        EXPECT_EQ(Names(), "");
        Rest();
        EXPECT_EQ(Fields(), "|||-----");
        tests::Click(form, "BitBtn2");
    });
    EXPECT_EQ(Tools.Commands.Count(), 3) << "only marked";
    for (const TCommand& tool : Tools.Commands)
        EXPECT_TRUE(tool.FDeleted);
}

TEST_F(ToolsEditor, HelpsToFillTheFields) {
    Add("a");
    Tools.Arguments.AddArg("The file", "A", "");
    Tools.Arguments.AddArg("The line", "B", "");
    Edit([&](TForm& form) {
        auto& macros = Part<TPopupMenu>(form, "PopupMenu2");
        EXPECT_EQ(macros.Items()[0]->Caption(), "The file");
        macros.Items()[0]->Click();
        // The menu takes these keys: the second item.
        for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN})
            ::PostMessageW(form.Handle(), WM_KEYDOWN, key, 0);
        tests::Click(form, "Button2");
        EXPECT_EQ(tests::TextOf(form, "Edit2"), "$(A) $(B)");

        const auto& folders = Part<TPopupMenu>(form, "PopupMenu1").Items();
        const std::pair<std::string, std::string> expected[] = {
            {"File Directory", "$(FileDir)"},
            {"Current Directory", "$(CurDir)"},
            {"Project Directory", "$(ProjectDir)"}};
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(folders[2 * i]->Caption(), expected[i].first);
            EXPECT_EQ(folders[2 * i + 1]->Caption(), "-");
            folders[2 * i]->Click();
            folders[2 * i]->Click();
            EXPECT_EQ(tests::TextOf(form, "Edit3"), expected[i].second);
        }
        bool choose = false;
        DialogFunctions().SelectDirectory = [&](const std::string& title, std::string& directory) {
            EXPECT_EQ(title, "Get directory");
            if (choose)
                directory = "C:\\chosen";
            return choose;
        };
        DialogFunctions().OpenFile = [&](const std::string& filter, std::string& file) {
            EXPECT_EQ(filter,
                      "Executable files (*.exe)|*.EXE|command files (*.cmd)|*.CMD|bat files "
                      "(*.bat)|*.BAT");
            if (choose)
                file = "C:\\chosen.exe";
            return choose;
        };
        folders[6]->Click();
        tests::Click(form, "Button1");
        EXPECT_EQ(Fields(), "C:\\windows\\a|$(A) $(B)|$(ProjectDir)|----x") << "as it was";
        choose = true;
        EXPECT_EQ(folders[6]->Caption(), "Browse...");
        folders[6]->Click();
        tests::Click(form, "Button1");
        EXPECT_EQ(Fields(), "C:\\chosen.exe|$(A) $(B)|C:\\chosen|----x");
        tests::Click(form, "BitBtn2");
    });
}

TEST_F(ToolsEditor, AsksBeforeItKeepsWhatCannotWork) {
    Add("ab");
    Tools.Commands.GetItem(1).FDeleted = true;
    int asked = 0;
    DialogFunctions().AskYesNo = [&](const std::string&, const std::string& text) {
        EXPECT_EQ(text,
                  "Menu Item \"a\" must have command \n\r"
                  "Menu Item \"b\",C:\\windows\\b is not exist\n\rCorrect?");
        return ++asked == 1;
    };
    EXPECT_TRUE(Edit([&](TForm& form) {
        support::Type(form, "Edit1", "");
        tests::Click(form, "BitBtn1");
        EXPECT_EQ(form.ModalResult, mrNone) << "to be corrected";
        tests::Click(form, "BitBtn1");
    }));
    EXPECT_EQ(asked, 2);
    EXPECT_FALSE(Edit([&](TForm& form) { tests::PressKey(form, VK_ESCAPE); }));
    Tools.Commands.GetItem(0).FCommand = Tools.Commands.GetItem(1).FCommand =
        "C:\\windows\\explorer.exe";
    EXPECT_TRUE(Edit([&](TForm& form) { tests::Click(form, "BitBtn1"); }));
    EXPECT_EQ(asked, 2) << "nobody is asked then";
}

TEST_F(ToolsEditor, LooksTidyAndLeavesNothingBehind) {
    Add("ab");
    TCommand& tool = Tools.Commands.GetItem(0);
    tool.FName = "Compile & check";
    tool.FCommand = "C:\\Program Files\\Compiler\\compiler.exe";
    Tools.Commands.GetItem(1).FName = "Show the include files";
    tool.FArguments = "-o $(Out) $(FileName)";
    tool.FInitDir = "$(ProjectDir)";
    tool.FCaptureNewDoc = true;
    tool.FDocType = "text";
    Edit([&](TForm& form) {
        // Its own letters, whatever the code page has.
        EXPECT_EQ(Part<TToolButton>(form, "ToolButton1").Hint(),
                  L"\u041F\u0440\u043E\u0441\u043C\u043E\u0442\u0440 "
                  L"\u043E\u0442\u0447\u0435\u0442\u0430 ");
        EXPECT_EQ(tests::TextOf(form, "CheckBox3"), "&Capture Output in new document of type");
        EXPECT_EQ(tests::TextOf(form, "CheckBox1"), " Capture Output in Tool View ");
        tests::Look(form, "tools");
        tests::Click(form, "BitBtn2");
    });
    const auto open = [&] {
        Edit([&](TForm& form) {
            Tool(1);
            support::Check(form, "CheckBox3");
            support::Check(form, "CheckBox5", false);
            tests::Click(form, "BitBtn2");
        });
        Tools.Commands.Delete(2);
    };
    tests::ExpectNothingLeft(100, open);
}

TEST(ToolsPrompt, TakesArgumentsAsTyped) {
    const std::string command = "C:\\Program Files\\Compiler & more\\compiler.exe";
    std::string arguments = "-o program.exe program.c";
    tests::ExpectForm("Enter Arguments", [&](TForm& form) {
        EXPECT_EQ(tests::TextOf(form, "Label1"), "Tools command");
        EXPECT_EQ(tests::TextOf(form, "Label2"), command);
        EXPECT_EQ(tests::TextOf(form, "Label3"), "Tolls arguments");
        EXPECT_TRUE(Part<TEdit>(form, "Edit1").Focused());
        EXPECT_EQ(tests::SpokenName(Part<TEdit>(form, "Edit1")), "Tolls arguments");
        tests::Look(form, "prompt");
        support::Type(form, "Edit1", "\xC4 & \"x y\" " + std::string(5000, 'a'));
        tests::PressKey(form, VK_RETURN);
    });
    EXPECT_TRUE(tandrel::Sh_Prompt_Form(command, arguments));
    EXPECT_EQ(arguments, "\xC4 & \"x y\" " + std::string(5000, 'a'));
    tests::ExpectForm("Enter Arguments", [](TForm& form) {
        tests::ExpectTidy(form);
        support::Type(form, "Edit1", "not wanted");
        tests::PressKey(form, VK_ESCAPE);
    });
    arguments = "before";
    EXPECT_FALSE(tandrel::Sh_Prompt_Form(std::string(20000, 'x'), arguments));
    EXPECT_EQ(arguments, "before");
}

}  // namespace
