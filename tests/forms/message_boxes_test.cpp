// The boxes that tell a result and put a question.

#include <gtest/gtest.h>

#include "cvs/Dialogs.h"
#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/images.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Leaks.h"

namespace {

using namespace tandrel;
using framework::TControl;
using framework::TForm;
using tests::Click;
using tests::ExpectForm;
using tests::TextOf;

/// Everything lies inside the form and nothing on top of something else.
void ExpectTidy(TForm& form, std::initializer_list<const char*> names) {
    const SIZE inner = form.ClientSize();
    std::vector<std::pair<std::string, RECT>> placed;
    for (const char* name : names) {
        const auto* control = form.Find<TControl>(name);
        ASSERT_NE(control, nullptr) << name;
        const RECT area = control->Bounds();
        EXPECT_GE(area.left, 0) << name;
        EXPECT_GE(area.top, 0) << name;
        EXPECT_LE(area.right, inner.cx) << name;
        EXPECT_LE(area.bottom, inner.cy) << name;
        for (const auto& [other, taken] : placed) {
            RECT common;
            EXPECT_FALSE(::IntersectRect(&common, &area, &taken)) << name << " on " << other;
        }
        placed.emplace_back(name, area);
    }
}

TEST(MessageBoxes, TellSuccessAndFailure) {
    ExpectForm("CVS update", [](TForm& form) {
        EXPECT_EQ(TextOf(form, "Label1"), "CVS update  \"mod\" successfuly completed");
        EXPECT_EQ(TextOf(form, "BitBtn1"), "Ok");
        ExpectTidy(form, {"Image1", "Label1", "BitBtn1"});
        Click(form, "BitBtn1");
    });
    Show_OkForm("CVS update", "CVS update  \"mod\"", 0);
    ExpectForm("CVS update", [](TForm& form) {
        EXPECT_EQ(TextOf(form, "Label1"), "what execute with Exitcode 1") << "always this figure";
        Click(form, "BitBtn1");
    });
    Show_OkForm("CVS update", "what", 57);
}

TEST(MessageBoxes, WidenForLongTextsButNotBeyondTheScreen) {
    for (const std::size_t length : {60, 2000}) {
        ExpectForm("c", [&](TForm& form) {
            ExpectTidy(form, {"Image1", "Label1", "BitBtn1"});
            EXPECT_GE(form.Width(), form.Find<TControl>("Label1")->Width() + form.Scale(74));
            const RECT screen = TForm::WorkArea(), box = form.Bounds();
            EXPECT_GE(box.left, screen.left);
            EXPECT_LE(box.right, screen.right);
            EXPECT_LE(box.bottom, screen.bottom);
            Click(form, "BitBtn1");
        });
        Show_OkForm("c", std::string(length, 'W'), 0);
    }
}

TEST(MessageBoxes, ShowTextsAsTheyAre) {
    const std::string text = "a & b && \"c\" 100%s \xE4\xDF";
    ExpectForm("caption & more", [&](TForm& form) {
        EXPECT_EQ(TextOf(form, "Label1"), text + " successfuly completed");
        Click(form, "BitBtn1");
    });
    Show_OkForm("caption & more", text, 0);
}

TEST(MessageBoxes, AnswerToTheKeyboard) {
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        ExpectForm("result", [key](TForm& form) { tests::PressKey(form, key); });
        Show_OkForm("result", "text", 0);
        ExpectForm("CVS confirmation", [key](TForm& form) {
            EXPECT_TRUE(form.Find<TControl>("BitBtn1")->Focused());
            tests::PressKey(form, key);
        });
        EXPECT_EQ(Sh_Confirm_Form("sure?"), key == VK_RETURN);
    }
    // The focus decides, not the default: Tab to "No", then Enter.
    ExpectForm("CVS confirmation", [](TForm& form) {
        tests::PressKey(form, VK_TAB);
        framework::Application().ProcessMessages();
        EXPECT_TRUE(form.Find<TControl>("BitBtn2")->Focused());
        tests::PressKey(form, VK_RETURN);
    });
    EXPECT_FALSE(Sh_Confirm_Form("sure?"));
}

TEST(MessageBoxes, AskWithTheQuestionInPlainSight) {
    const std::string question =
        "You have [0] altered files in this repository.\r\n"
        "Are you sure you want to release (and delete) directory `mod': ";
    ExpectForm("CVS confirmation", [&](TForm& form) {
        EXPECT_EQ(TextOf(form, "Label1"), question);
        EXPECT_EQ(TextOf(form, "BitBtn1") + TextOf(form, "BitBtn2"), "YesNo");
        ExpectTidy(form, {"Image1", "Label1", "Label2", "BitBtn1", "BitBtn2"});
        ::PostMessageW(form.Handle(), WM_CLOSE, 0, 0);
    });
    EXPECT_FALSE(Sh_Confirm_Form(question)) << "closing it is no consent";
}

TEST(MessageBoxes, ShowTheEndOfALongQuestion) {
    std::string question;
    for (int line = 0; line < 100; ++line)
        question += "M file" + std::to_string(line) + ".c\r\n";
    question += "Are you sure? ";
    ExpectForm("CVS confirmation", [&](TForm& form) {
        ExpectTidy(form, {"Image1", "Label1", "Label2", "BitBtn1", "BitBtn2"});
        const std::string shown = TextOf(form, "Label1");
        EXPECT_TRUE(shown.starts_with("...\r\nM file"));
        EXPECT_TRUE(shown.ends_with("M file99.c\r\nAre you sure? "));
        const RECT screen = TForm::WorkArea(), box = form.Bounds();
        EXPECT_GE(box.top, screen.top);
        EXPECT_LE(box.bottom, screen.bottom);
        Click(form, "BitBtn2");
    });
    Sh_Confirm_Form(question);
}

/// The colour in the middle of the box's picture.
COLORREF PictureColour(TForm& form) {
    auto* picture = form.Find<TControl>("Image1");
    ::UpdateWindow(picture->Handle());
    const HDC dc = ::GetDC(picture->Handle());
    // Left of the middle: the strokes meet there.
    const COLORREF colour = ::GetPixel(dc, picture->Width() / 6, picture->Height() / 2);
    ::ReleaseDC(picture->Handle(), dc);
    return colour;
}

TEST(MessageBoxes, ShowGreenForSuccessAndRedForFailure) {
    for (const int code : {0, 1}) {
        ExpectForm("c", [code](TForm& form) {
            const COLORREF colour = PictureColour(form);
            EXPECT_EQ(GetGValue(colour) > GetRValue(colour), code == 0) << std::hex << colour;
            EXPECT_NE(colour, ::GetSysColor(COLOR_BTNFACE));
            Click(form, "BitBtn1");
        });
        Show_OkForm("c", "text", code);
    }
}

TEST(MessageBoxes, LeaveNothingBehind) {
    const auto show = [] {
        ExpectForm("c", [](TForm& form) { Click(form, "BitBtn1"); });
        Show_OkForm("c", "text", 0);
    };
    tests::ExpectNothingLeft(100, show);
}

}  // namespace
