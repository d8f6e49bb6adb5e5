// The windows around a run: the progress form, the host's windows, what may happen meanwhile.

#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "framework/ui/application.h"
#include "framework/ui/timer.h"
#include "support/WaitUntil.h"
#include "tests/core/TestObject.h"
#include "tests/support/FormDriver.h"

namespace {

using tandrel::TCvsExecuteClass;
using tandrel::Progress_frm::TProgressThread;
using tandrel::Progress_frm::TVcs_ProgressForm;
using tests::TTestObject;

/// Does something once, some time into a run. A timer that ticks all the time would leave no second
/// quiet, and the form hidden.
class TDuringRun {
public:
    TDuringRun(unsigned milliseconds, std::function<void()> action) : Timer_(milliseconds) {
        Timer_.OnTimer = [this, action](framework::TObject*) {
            Timer_.SetEnabled(false);
            action();
        };
        Timer_.SetEnabled(true);
    }

private:
    framework::TTimer Timer_;
};

class ProgressForm : public testing::Test {
protected:
    TVcs_ProgressForm* Form() const { return Obj.ExecuteClass->ProgressForm; }
    bool FormVisible() const { return Form() && Form()->Visible(); }

    TTestObject Obj;
};

TEST_F(ProgressForm, StaysHiddenDuringAShortRun) {
    bool seen = false;
    Obj.OnMessage = [&](framework::TObject*, const std::string&) { seen = seen || FormVisible(); };
    Obj.Run("say-and-sleep x 300");
    EXPECT_FALSE(seen);
    EXPECT_FALSE(FormVisible());
}

TEST_F(ProgressForm, ShowsAfterAQuietSecondWithItsPartsInPlace) {
    Obj.Run("say-and-sleep x 2500");
    ASSERT_TRUE(FormVisible()) << "it stays for a moment after the run";
    TVcs_ProgressForm& form = *Form();
    EXPECT_EQ(form.Text(), "VCS progress");
    EXPECT_EQ(form.ClientSize().cx, form.Scale(313));
    EXPECT_EQ(form.ClientSize().cy, form.Scale(110));
    EXPECT_EQ(tests::TextOf(form, "Label1"), "Please wait");
    EXPECT_EQ(tests::TextOf(form, "BitBtn2"), "Cancel");
    EXPECT_EQ(form.Find<framework::TAnimate>("Animate1")->Height(), form.Scale(71));
    EXPECT_TRUE(::GetWindowLongW(form.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST);
    const UINT close =
        ::GetMenuState(::GetSystemMenu(form.Handle(), FALSE), SC_CLOSE, MF_BYCOMMAND);
    EXPECT_TRUE(close & MF_GRAYED);
    EXPECT_TRUE(support::WaitUntil([&] { return Form() == nullptr; }));
}

TEST_F(ProgressForm, IsUsedAgainWithinHalfASecond) {
    Obj.Run("exit 0");
    TVcs_ProgressForm* const first = Form();
    ASSERT_NE(first, nullptr);
    first->SetText("the same one");
    Obj.Run("exit 0");
    EXPECT_EQ(Form()->Text(), "the same one");
    EXPECT_TRUE(support::WaitUntil([&] { return Form() == nullptr; }));
    Obj.Run("exit 0");
    EXPECT_EQ(Form()->Text(), "VCS progress");
}

TEST_F(ProgressForm, CancelMarksTheRunItShows) {
    bool marked = false;
    Obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) {
        marked = Obj.ExecuteClass->Thread->CancelMark;
    };
    // The second run finds the form still showing, and disabled with all other windows.
    for (const char* run : {"first", "second"}) {
        SCOPED_TRACE(run);
        {
            const TDuringRun press(2500, [&] {
                ASSERT_TRUE(FormVisible());
                EXPECT_TRUE(Form()->Enabled());
                tests::PressKey(*Form(), VK_ESCAPE);
            });
            Obj.Run("say-and-sleep x 3500");
        }
        EXPECT_TRUE(marked);
        EXPECT_EQ(Obj.ExitCode, 0) << "the mark is the host's to act on";
        ASSERT_TRUE(FormVisible());
        EXPECT_EQ(Form()->Thread, nullptr);
        tests::Click(*Form(), "BitBtn2");
    }
    marked = true;
    Obj.Run("exit 0");
    EXPECT_FALSE(marked) << "a new run begins without a mark";
}

TEST_F(ProgressForm, DisablesTheHostsWindowsForTheRun) {
    framework::TForm host("host"), hidden("hidden"), disabled("disabled");
    host.SetClientSize(200, 100);
    host.Show();
    disabled.Show();
    disabled.SetEnabled(false);
    std::optional<bool> enabled;
    Obj.OnMessage = [&](framework::TObject*, const std::string&) { enabled = host.Enabled(); };
    Obj.Run("exit 0");
    EXPECT_EQ(enabled, false);
    EXPECT_TRUE(host.Enabled());
    EXPECT_TRUE(hidden.Enabled());
    EXPECT_FALSE(disabled.Enabled()) << "what was disabled before stays so";
}

TEST_F(ProgressForm, RefusesASecondRunMeanwhile) {
    int refused = 0;
    {
        framework::TTimer again(50);
        again.OnTimer = [&](framework::TObject*) {
            // Once the client has spoken, whenever that is.
            if (Obj.Messages.All() != "x")
                return;
            again.SetEnabled(false);
            ++refused;
            const std::string command = Obj.CommandLine;
            Obj.CommandLine = " second";
            Obj.Execute("C:\\");
            Obj.CommandLine = command;
        };
        again.SetEnabled(true);
        Obj.Run("say-and-sleep x 1000");
    }
    EXPECT_EQ(refused, 1);
    EXPECT_EQ(Obj.Messages.All(),
              "xCvs execute  second failed,reason execute already running \r\n"
              " CVS command execute successful  with Exitcode 0\r\n");
    EXPECT_EQ(Obj.ExitCode, 0);
}

TEST_F(ProgressForm, CanBeUsedByWhoeverRunsSomethingOfHisOwn) {
    Obj.Run("exit 0");
    ASSERT_NE(Form(), nullptr);
    TCvsExecuteClass& runner = *Obj.ExecuteClass;
    Obj.Messages.Clear();
    int ends = 0;
    runner.OnEndProgress = [&](framework::TObject* sender) {
        EXPECT_EQ(sender, &runner);
        ++ends;
    };
    {
        Obj.CommandLine = " say-and-sleep said 0";
        TProgressThread worker(true, runner);
        worker.SendMsg("a line");
        worker.SendMsg("");
        worker.SendMsg2("raw, ");
        worker.ExecuteCommand("C:\\");
        Form()->Thread = &worker;
        Form()->BitBtn2Click(nullptr);
        EXPECT_TRUE(worker.CancelMark);
        Form()->Thread = nullptr;
    }
    EXPECT_EQ(Obj.Messages.All(),
              "a line\r\nraw, said CVS command execute successful  with Exitcode 0\r\n");
    runner.OnStopTimer(nullptr);
    EXPECT_EQ(Form(), nullptr);
    EXPECT_FALSE(runner.Timer.Enabled());
    runner.OnTerminate(nullptr);
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(runner.Timer.Enabled());
}

}  // namespace
