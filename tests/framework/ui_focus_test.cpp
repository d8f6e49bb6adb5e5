// Where the keyboard is, and how the form shows it.

#include <gtest/gtest.h>

#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/page_control.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace framework;

std::string Selected(const TEdit& edit) {
    DWORD from = 0, to = 0;
    ::SendMessageW(edit.Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                   reinterpret_cast<LPARAM>(&to));
    return edit.Text().substr(from, to - from);
}

void Press(TForm& form, WPARAM key) {
    tests::PressKey(form, key);
    Application().ProcessMessages();
}

TEdit& AddEdit(TControl& parent, const std::string& text) {
    auto& edit = parent.Form().Make<TEdit>(text, parent);
    edit.SetText(text);
    return edit;
}

TEST(Edits, AreSelectedWhenTheFocusComesByItself) {
    TForm form("fields"), other("other");
    TEdit& first = AddEdit(form, "first");
    TEdit& second = AddEdit(form, "second");
    auto& button = form.Make<TButton>("B", form, "B");
    form.Show();
    EXPECT_TRUE(first.Focused());
    EXPECT_EQ(Selected(first), "first");
    Press(form, VK_TAB);
    EXPECT_TRUE(second.Focused());
    EXPECT_EQ(Selected(second), "second");
    // A user who comes back goes on where he was.
    ::SendMessageW(second.Handle(), EM_SETSEL, 2, 2);
    other.Show();
    EXPECT_FALSE(second.Focused());
    ::SetForegroundWindow(form.Handle());
    ASSERT_TRUE(support::WaitUntil([&] { return second.Focused(); }, 5000));
    EXPECT_EQ(Selected(second), "");
    button.SetFocus();
    button.SetEnabled(false);
    EXPECT_TRUE(second.Focused());
    EXPECT_EQ(Selected(second), "second");
}

TEST(Edits, AreSelectedOnPagesThatAreTurnedTo) {
    TForm form("pages"), step("step");
    auto& pages = form.Make<TPageControl>("Pages", form);
    TEdit& here = AddEdit(form.Make<TTabSheet>("T1", pages, "1"), "here");
    TEdit& there = AddEdit(form.Make<TTabSheet>("T2", pages, "2"), "there");
    TEdit& inside = AddEdit(step, "inside");
    step.HostIn(form);
    step.Show();
    form.Show();
    EXPECT_EQ(Selected(here), "here");
    pages.SetActivePageIndex(1);
    EXPECT_EQ(Selected(there), "there");
    for (int visit = 0; visit < 2; ++visit) {
        there.SetFocus();
        ::SendMessageW(inside.Handle(), EM_SETSEL, 0, 0);
        step.SetFocus();
        EXPECT_TRUE(inside.Focused());
        EXPECT_EQ(Selected(inside), "inside");
    }
}

TEST(DefaultButtons, LookSoOneAtATime) {
    TForm form("default"), step("step"), other("other");
    TEdit& edit = AddEdit(form, "text");
    auto& scan = step.Make<TButton>("Scan", step, "Scan");
    step.Make<TButton>("Ok", step, "Ok", TButtonRole::Default);
    step.HostIn(form);
    step.Show();
    auto& panel = form.Make<TPanel>("P", form);
    auto& back = form.Make<TButton>("Back", panel, "Back");
    auto& next = form.Make<TButton>("Next", panel, "Next");
    auto& finish = form.Make<TButton>("Finish", panel, "Finish", TButtonRole::Default);
    EXPECT_EQ(tests::MarkedButtons(form), "Finish");
    form.SetDefaultButton(&next);
    form.Show();
    EXPECT_EQ(tests::MarkedButtons(form), "Next");
    for (const char* marked : {"Scan", "Ok", "Back", "Next", "Finish", "Next"}) {
        Press(form, VK_TAB);
        EXPECT_EQ(tests::MarkedButtons(form), marked);
    }
    EXPECT_TRUE(edit.Focused());
    for (TButton* button : {&back, &scan}) {
        button->SetFocus();
        EXPECT_EQ(tests::MarkedButtons(form), button->Text());
        form.SetDefaultButton(button == &back ? &finish : &next);
        EXPECT_EQ(tests::MarkedButtons(form), button->Text()) << "it has the focus";
        other.Show();
        EXPECT_EQ(tests::MarkedButtons(form), button->Text());
        other.SetVisible(false);
        ::SetForegroundWindow(form.Handle());
        ASSERT_TRUE(support::WaitUntil([&] { return button->Focused(); }, 5000));
        edit.SetFocus();
        EXPECT_EQ(tests::MarkedButtons(form), button == &back ? "Finish" : "Next");
    }
    int pressed = 0;
    back.OnClick = [&](TObject*) { ++pressed; };
    back.SetFocus();
    Press(form, VK_RETURN);
    EXPECT_EQ(pressed, 1) << "what looks so is what Enter presses";
    next.Free();
    edit.SetFocus();
    EXPECT_EQ(tests::MarkedButtons(form), "");
}

}  // namespace
