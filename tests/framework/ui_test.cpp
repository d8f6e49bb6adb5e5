// Forms, controls, timers and the message loop.

#include <gtest/gtest.h>

#include <atomic>
#include <optional>

#include "framework/base/exceptions.h"
#include "framework/threads/thread.h"
#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/task_windows.h"
#include "framework/ui/timer.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Leaks.h"

namespace {

using namespace framework;

TEST(Components, AreFoundByNameAndFreedByTheirOwner) {
    TForm form("owner");
    auto& panel = form.Make<TPanel>("Panel1", form);
    auto& label = form.Make<TLabel>("Label1", panel, "text");
    EXPECT_EQ(form.Find<TLabel>("LABEL1"), &label);
    EXPECT_EQ(form.Find<TButton>("Label1"), nullptr) << "of another class";
    EXPECT_EQ(form.FindComponent("nothing"), nullptr);
    EXPECT_EQ(&label.Form(), &form);
    const HWND window = label.Handle();
    label.Free();
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(form.FindComponent("Label1"), nullptr);
    const HWND inner = panel.Handle();
    Application().CreateForm<TForm>("application's").Free();
    EXPECT_TRUE(::IsWindow(inner));
}

TEST(Controls, ShowTextInTheProcessCodePage) {
    TForm form("caption \xE4 & \"b\"");
    EXPECT_EQ(form.Text(), "caption \xE4 & \"b\"");
    auto& label = form.Make<TLabel>("Label1", form, "short");
    const int width = label.Width();
    label.SetText("a much longer text\nin two lines");
    EXPECT_GT(label.Width(), width);
    EXPECT_GE(label.Height(), 2 * form.Scale(11));
    EXPECT_EQ(label.Text(), "a much longer text\nin two lines");
}

std::vector<COLORREF> Shown(const TControl& control) {
    std::vector<COLORREF> pixels;
    const HDC dc = ::GetDC(control.Handle());
    for (int y = 0; y < control.Height(); ++y)
        for (int x = 0; x < control.Width(); ++x)
            pixels.push_back(::GetPixel(dc, x, y));
    ::ReleaseDC(control.Handle(), dc);
    return pixels;
}

TEST(Labels, ArePaintedWholeInAnySize) {
    TForm form("label");
    form.SetClientSize(200, 120);
    auto& label = form.Make<TLabel>("Label1", form, "i am", 80);
    form.Show();
    for (const char* text : {"a longer text that stands in several lines", "i am", "words of it"}) {
        Application().ProcessMessages();
        label.SetText(text);
        Application().ProcessMessages();
        const std::vector<COLORREF> shown = Shown(label);
        ::RedrawWindow(label.Handle(), nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        EXPECT_TRUE(shown == Shown(label)) << text;
    }
}

TEST(Controls, TakeTheirEdges) {
    TForm form("aligned");
    form.SetClientSize(300, 200);
    struct {
        TAlign Align;
        int Left, Top, Width, Height;
    } const cases[] = {{TAlign::Left, 0, 30, 20, 170},
                       {TAlign::Top, 0, 0, 300, 30},
                       {TAlign::Client, 20, 30, 280, 170}};
    std::vector<TPanel*> panels;
    for (const auto& [align, left, top, width, height] : cases) {
        auto& panel = form.Make<TPanel>("", form);
        panel.SetBounds(0, 0, 20, 30);
        panel.SetAlign(align);
        panels.push_back(&panel);
    }
    for (std::size_t i = 0; i < panels.size(); ++i) {
        const RECT area = panels[i]->Bounds();
        EXPECT_EQ(area.left, cases[i].Left);
        EXPECT_EQ(area.top, cases[i].Top);
        EXPECT_EQ(panels[i]->Width(), cases[i].Width);
        EXPECT_EQ(panels[i]->Height(), cases[i].Height);
    }
    form.SetClientSize(400, 300);
    EXPECT_EQ(panels[2]->Width(), 380);
    EXPECT_EQ(panels[2]->Height(), 270);
    const RECT screen = TForm::WorkArea();
    form.SetSize(300, static_cast<int>(screen.bottom - screen.top) + 200);
    EXPECT_EQ(form.Bounds().top, screen.top) << "the caption can be reached";
}

TEST(Forms, EndModalRunsWithTheirResult) {
    TForm behind("behind");
    behind.Show();
    TForm form("modal");
    auto& ok = form.Make<TButton>("Ok", form, "Ok", TButtonRole::Default);
    ok.ModalResult = mrOk;
    int clicked = 0;
    ok.OnClick = [&](TObject* sender) { clicked += sender == &ok ? 1 : 0; };
    tests::ExpectForm("modal", [&](TForm& shown) {
        EXPECT_FALSE(behind.Enabled());
        EXPECT_TRUE(shown.Enabled() && shown.Visible());
        ok.SetEnabled(false);
        tests::Click(shown, "Ok");
        EXPECT_EQ(shown.ModalResult, mrNone) << "a disabled button does nothing";
        ok.SetEnabled(true);
        EXPECT_THROW(shown.ShowModal(), Exception);
        tests::PressKey(shown, VK_RETURN);
    });
    EXPECT_EQ(form.ShowModal(), mrOk);
    EXPECT_EQ(clicked, 1);
    EXPECT_TRUE(behind.Enabled());
    EXPECT_FALSE(form.Visible());
    tests::ExpectForm("modal",
                      [](TForm& shown) { ::PostMessageW(shown.Handle(), WM_CLOSE, 0, 0); });
    EXPECT_EQ(form.ShowModal(), mrCancel);
    tests::ExpectForm("modal", [](TForm&) { throw Exception("while it is open"); });
    EXPECT_THROW(form.ShowModal(), Exception);
    EXPECT_TRUE(behind.Enabled()) << "also after an exception";
}

TEST(Forms, TranslateExceptionsAtTheWindowProcedure) {
    TForm form("throws");
    auto& button = form.Make<TButton>("B", form, "B");
    button.SetBounds(0, 0, 75, 25);
    const auto before = Application().OnException;
    std::string told;
    Application().OnException = [&](const std::exception& error) { told += error.what(); };
    button.OnClick = [](TObject*) { throw Exception("from a handler"); };
    ::SendMessageW(button.Handle(), BM_CLICK, 0, 0);
    EXPECT_EQ(told, "from a handler");
    button.OnClick = [](TObject*) { Abort(); };
    ::SendMessageW(button.Handle(), BM_CLICK, 0, 0);
    EXPECT_EQ(told, "from a handler") << "the silent exception is silent";
    Application().OnException = before;
}

TEST(Forms, PressTheirButtonsWhereverTheseStand) {
    TForm form("panel");
    auto& panel = form.Make<TPanel>("P", form);
    form.Make<TButton>("Ok", panel, "Ok", TButtonRole::Default).ModalResult = mrOk;
    form.Make<TButton>("No", panel, "No", TButtonRole::Cancel).ModalResult = mrCancel;
    for (const auto& [key, result] : {std::pair{VK_RETURN, mrOk}, {VK_ESCAPE, mrCancel}}) {
        tests::ExpectForm("panel", [key = key](TForm& shown) {
            ::SetFocus(shown.Handle());
            tests::PressKey(shown, static_cast<WPARAM>(key));
        });
        EXPECT_EQ(form.ShowModal(), result);
    }
}

TEST(Forms, ThatAreToBeAnsweredLieAboveThoseOnTop) {
    TForm top("on top"), modal("modal");
    top.SetStayOnTop(true);
    top.Show();
    tests::ExpectForm("modal", [&](TForm& shown) {
        EXPECT_TRUE(::GetWindowLongW(shown.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST);
        HWND above = shown.Handle();
        while ((above = ::GetWindow(above, GW_HWNDPREV)) != nullptr)
            EXPECT_NE(above, top.Handle());
        shown.ModalResult = mrOk;
    });
    modal.ShowModal();
    EXPECT_FALSE(::GetWindowLongW(modal.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST);
}

LRESULT CALLBACK Passing(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::CallWindowProcW(reinterpret_cast<WNDPROC>(::GetPropW(window, L"before")), window,
                             message, wParam, lParam);
}

TEST(Controls, AreKnownAlsoWhenOthersListenToo) {
    TForm form("subclassed");
    auto& button = form.Make<TButton>("B", form, "B");
    const HWND window = button.Handle();
    ::SetPropW(window, L"before",
               reinterpret_cast<HANDLE>(::GetWindowLongPtrW(window, GWLP_WNDPROC)));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Passing));
    EXPECT_EQ(TControl::FromHandle(window), &button);
    EXPECT_EQ(TControl::FromHandle(::GetDesktopWindow()), nullptr);
    button.Free();
    EXPECT_FALSE(::IsWindow(window));
}

TEST(TaskWindows, HearNoKeysWhileTheyAreDisabled) {
    TForm form("focus");
    auto& before = form.Make<TButton>("A", form, "A");
    auto& button = form.Make<TButton>("B", form, "B", TButtonRole::Default);
    int clicked = 0;
    button.OnClick = [&](TObject*) { ++clicked; };
    form.Show();
    button.SetFocus();
    ASSERT_TRUE(button.Focused());
    {
        const TTaskWindowsDisabled disabled;
        EXPECT_EQ(::GetFocus(), nullptr);
    }
    EXPECT_TRUE(button.Focused()) << "and it is given back";
    EXPECT_EQ(clicked, 0);
    {
        const TTaskWindowsDisabled disabled;
        button.SetEnabled(false);
    }
    EXPECT_TRUE(before.Focused()) << "to the form, when the control cannot take it any more";
    button.SetEnabled(true);
    button.SetFocus();
    button.SetEnabled(false);
    EXPECT_TRUE(before.Focused()) << "the keyboard is never left without a place";
}

/// A window of a thread of its own: to this one it is as another program's.
class TOtherProgram final : public TThread {
public:
    TOtherProgram() { Start(); }
    ~TOtherProgram() override {
        ::PostThreadMessageW(ThreadId_, WM_QUIT, 0, 0);
        WaitFor();
    }
    bool InFront() const { return Window_ && ::GetForegroundWindow() == Window_; }

protected:
    void Execute() override {
        ThreadId_ = ::GetCurrentThreadId();
        const HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50,
                                              50, nullptr, nullptr, nullptr, nullptr);
        ::SetForegroundWindow(window);
        Window_ = window;
        for (MSG message; ::GetMessageW(&message, nullptr, 0, 0) > 0;)
            ::DispatchMessageW(&message);
        ::DestroyWindow(window);
    }

private:
    std::atomic<DWORD> ThreadId_{0};
    std::atomic<HWND> Window_{nullptr};
};

TEST(TaskWindows, GiveTheFocusBackToWhoComesBackLater) {
    TForm form("focus"), other("other");
    form.Make<TButton>("A", form, "A");
    auto& button = form.Make<TButton>("B", form, "B");
    form.Show();
    button.SetFocus();
    ASSERT_TRUE(button.Focused());
    for (const bool backMeanwhile : {false, true}) {
        SCOPED_TRACE(backMeanwhile);
        std::optional<TTaskWindowsDisabled> disabled(std::in_place);
        const TOtherProgram another;
        ASSERT_TRUE(support::WaitUntil([&] { return another.InFront(); }));
        if (backMeanwhile)
            ::SetForegroundWindow(form.Handle());
        EXPECT_FALSE(::IsChild(form.Handle(), ::GetFocus())) << "it would hear the keys";
        disabled.reset();
        ::SetForegroundWindow(form.Handle());
        EXPECT_TRUE(support::WaitUntil([&] { return button.Focused(); }, 5000));
    }
}

TEST(TaskWindows, AreDisabledInABracket) {
    TForm shown("shown"), hidden("hidden"), exempt("exempt");
    shown.Show();
    exempt.Show();
    {
        const TTaskWindowsDisabled disabled(exempt.Handle());
        EXPECT_FALSE(shown.Enabled());
        EXPECT_TRUE(hidden.Enabled() && exempt.Enabled());
        const TTaskWindowsDisabled inner;
        EXPECT_FALSE(exempt.Enabled());
    }
    EXPECT_TRUE(shown.Enabled() && exempt.Enabled());
}

TEST(Timers, TickUntilTheyAreStopped) {
    int ticks = 0;
    {
        TTimer timer(20);
        timer.OnTimer = [&](TObject*) {
            if (++ticks == 3)
                timer.SetEnabled(false);
        };
        EXPECT_FALSE(timer.Enabled());
        timer.SetEnabled(true);
        EXPECT_TRUE(support::WaitUntil([&] { return !timer.Enabled(); }));
        EXPECT_EQ(ticks, 3);
        timer.OnTimer = [&](TObject*) { ++ticks; };
        timer.SetEnabled(true);
        // Time passes without messages, so a tick waits when the timer goes.
        EXPECT_EQ(::WaitForSingleObject(::GetCurrentThread(), 60),
                  static_cast<DWORD>(WAIT_TIMEOUT));
    }
    Application().ProcessMessages();
    EXPECT_EQ(ticks, 3);
}

TEST(Timers, RestWhileTheirFormIsDisabled) {
    TForm form("timers"), page("page");
    page.HostIn(form);
    TFormTimer pending(page, 10), later(page, 10);
    TTimer others(30);
    int ticks = 0, rounds = 0;
    for (TFormTimer* timer : {&pending, &later})
        timer->OnTimer = [&, timer](TObject*) {
            timer->SetEnabled(false);
            ++ticks;
        };
    others.OnTimer = [&](TObject*) { ++rounds; };
    form.Show();
    pending.SetEnabled(true);
    {
        const TTaskWindowsDisabled disabled;
        later.SetEnabled(true);
        others.SetEnabled(true);
        EXPECT_TRUE(support::WaitUntil([&] { return rounds >= 3; }));
        EXPECT_EQ(ticks, 0);
        EXPECT_TRUE(pending.Enabled() && later.Enabled());
    }
    EXPECT_TRUE(support::WaitUntil([&] { return ticks == 2; }));
    {
        const TTaskWindowsDisabled disabled;
        later.SetEnabled(true);
        later.SetEnabled(false);
    }
    rounds = 0;
    EXPECT_TRUE(support::WaitUntil([&] { return rounds >= 3; }));
    EXPECT_EQ(ticks, 2) << "one that was stopped meanwhile does not come back";
}

TEST(Forms, LeaveNothingBehind) {
    const auto open = [] {
        TForm form("leak");
        form.Make<TButton>("B", form, "B");
        form.Make<TLabel>("L", form, "L");
        form.Show();
    };
    tests::ExpectNothingLeft(100, open);
}

}  // namespace
