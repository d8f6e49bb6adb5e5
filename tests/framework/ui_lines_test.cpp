// A view of lines: what it asks for, where the keys lead, what is drawn.

#include <gtest/gtest.h>

#include <set>

#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "framework/ui/clipboard.h"
#include "framework/ui/contrast.h"
#include "framework/ui/form.h"
#include "framework/ui/line_view.h"

namespace {

using namespace framework;

constexpr COLORREF Odd = RGB(1, 2, 250), Marked = RGB(3, 250, 4);

class Lines : public testing::Test {
protected:
    Lines() {
        Form.SetClientSize(600, 200);
        View.SetAlign(TAlign::Client);
        Form.Show();
        View.SetFocus();
        View.OnCurrent = [this](TObject*) { ++Events; };
    }
    ~Lines() override { HighContrast() = Contrast; }

    void Show(int count) {
        View.SetMarginWidth(4);
        View.SetLines(count, 200, [this](int line, int column) {
            Asked.insert(line);
            TViewLine shown;
            shown.Margin = std::to_string(line);
            shown.Text = "\tline " + std::to_string(line) + (column == 0 ? " left" : " right") +
                         (line == 3 ? std::string(100000, 'x') : "");
            if (line % 2 == 1)
                shown.Back = Odd;
            shown.Marks = {{1, 4}, {900000, 5}};
            shown.MarkBack = Marked;
            return shown;
        });
    }
    void Press(WPARAM key) { ::SendMessageW(View.Handle(), WM_KEYDOWN, key, 0); }
    /// The colours that the view shows.
    std::set<COLORREF> Colours() {
        ::RedrawWindow(View.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const HDC dc = ::GetDC(View.Handle());
        std::set<COLORREF> colours;
        const SIZE size = View.ClientSize();
        for (int y = 0; y < size.cy; y += 3)
            for (int x = 0; x < size.cx; x += 5)
                colours.insert(::GetPixel(dc, x, y));
        ::ReleaseDC(View.Handle(), dc);
        return colours;
    }
    int Visible() {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_PAGE;
        ::GetScrollInfo(View.Handle(), SB_VERT, &info);
        return static_cast<int>(info.nPage);
    }

    TForm Form{"lines", TFormBorder::Main};
    TLineView& View = Form.Make<TLineView>("View", Form, 2);
    std::set<int> Asked;
    int Events = 0;
    const std::function<bool()> Contrast = HighContrast();
};

TEST_F(Lines, AreAskedForWhenTheyAreSeen) {
    EXPECT_EQ(View.Current(), -1);
    Show(1000000);
    Colours();
    EXPECT_LE(static_cast<int>(Asked.size()), Visible() + 2);
    EXPECT_EQ(View.Current(), 0);
    View.SetCurrent(500000);
    EXPECT_EQ(View.Current(), 500000);
    EXPECT_GT(View.TopLine(), 500000 - Visible());
    EXPECT_LT(View.TopLine(), 500000);
    EXPECT_EQ(Events, 1);
    View.SetCurrent(2000000);
    EXPECT_EQ(View.Current(), 999999);
    EXPECT_EQ(View.TopLine(), 1000000 - Visible());
    // Fewer lines: nothing is beyond their end.
    Show(3);
    EXPECT_EQ(View.Current(), 0);
    EXPECT_EQ(View.TopLine(), 0);
    Show(0);
    Press(VK_DOWN);
    Press(VK_END);
    View.Select(0, 5);
    View.Copy();
    EXPECT_EQ(View.Current(), -1);
    Colours();
}

TEST_F(Lines, AreReachedByKeysAndTheMouse) {
    Show(1000);
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_UP);
    EXPECT_EQ(View.Current(), 1);
    Press(VK_NEXT);
    EXPECT_EQ(View.Current(), 1 + Visible());
    Press(VK_END);
    EXPECT_EQ(View.Current(), 999);
    Press(VK_HOME);
    Press(VK_UP);
    EXPECT_EQ(View.Current(), 0);
    EXPECT_EQ(Events, 6) << "where nothing changes there is no event";
    // The wheel and the bars move the view, not the current line.
    ::SendMessageW(View.Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA * 2)),
                   0);
    EXPECT_GT(View.TopLine(), 0);
    ::SendMessageW(View.Handle(), WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(View.TopLine(), 1000 - Visible());
    EXPECT_EQ(View.Current(), 0);
    ::SendMessageW(View.Handle(), WM_VSCROLL, SB_TOP, 0);
    // A click into the right column, and one with Shift further down.
    const int x = View.ClientSize().cx - 5;
    ::SendMessageW(View.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 2));
    ::SendMessageW(View.Handle(), WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(x, 40));
    ::SendMessageW(View.Handle(), WM_LBUTTONUP, 0, MAKELPARAM(x, 40));
    EXPECT_EQ(View.Column(), 1);
    EXPECT_EQ(View.Selection().first, 0);
    EXPECT_GT(View.Selection().second, 0);
    View.Select(1, 2);
    View.Copy();
    EXPECT_EQ(TextOfClipboard(Form.Handle()), "\tline 1 right\r\n\tline 2 right\r\n");
    int activated = 0;
    View.OnActivate = [&](TObject*) { ++activated; };
    Press(VK_RETURN);
    ::SendMessageW(View.Handle(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(x, 2));
    EXPECT_EQ(activated, 2);
}

TEST_F(Lines, UseTheirColoursUnlessTheUserHasOthers) {
    Show(10);
    EXPECT_TRUE(Colours().contains(Odd));
    EXPECT_TRUE(Colours().contains(Marked));
    // A line of any length, seen from anywhere.
    for (int i = 0; i < 300; ++i)
        ::SendMessageW(View.Handle(), WM_HSCROLL, SB_LINERIGHT, 0);
    EXPECT_TRUE(Colours().contains(Odd));
    HighContrast() = [] { return true; };
    EXPECT_FALSE(Colours().contains(Odd));
    EXPECT_FALSE(Colours().contains(Marked));
    EXPECT_EQ(Tint(RGB(0, 0, 0), 0), ::GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(Tint(RGB(9, 8, 7), 100), RGB(9, 8, 7));
}

TEST_F(Lines, AreToldToThoseWhoDoNotSeeThem) {
    View.SetAccessibleName("Text");
    Show(10);
    Press(VK_DOWN);
    EXPECT_EQ(View.AccessibleName(), "Text - 1 \tline 1 left - 1 \tline 1 right");
}

}  // namespace
