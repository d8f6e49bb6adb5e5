// Cells of a list that are drawn, and the clipboard.

#include <gtest/gtest.h>

#include <map>

#include "framework/ui/application.h"
#include "framework/ui/clipboard.h"
#include "framework/ui/contrast.h"
#include "framework/ui/form.h"
#include "framework/ui/list_view.h"

namespace {

using namespace framework;

class DrawnCells : public testing::Test {
protected:
    DrawnCells() {
        Form.SetClientSize(400, 200);
        List.AddColumn("Name", 100);
        List.AddColumn("Picture", 80);
        List.AddColumn("Text", 100);
        List.SetColumnOrder({1, 0, 2});
        List.SetAlign(TAlign::Client);
        for (const char* name : {"a", "b", "c"})
            List.Rows().Add({.Caption = name, .SubItems = {"not to be seen", "text"}});
        List.SetDrawnColumn(1, [this](const TListCell& cell) {
            Cells.insert_or_assign(cell.Row, cell);
            const RECT beyond = {cell.Area.left + 20, cell.Area.top, cell.Area.right + 50,
                                 cell.Area.bottom};
            ::SetDCBrushColor(cell.Dc, RGB(10, 200, 30));
            ::FillRect(cell.Dc, &beyond, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        });
        Form.Show();
        Paint();
    }
    void Paint() {
        Cells.clear();
        ::RedrawWindow(List.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    COLORREF Pixel(int x, int y) const {
        const HDC dc = ::GetDC(List.Handle());
        const COLORREF color = ::GetPixel(dc, x, y);
        ::ReleaseDC(List.Handle(), dc);
        return color;
    }

    TForm Form{"cells"};
    TListView& List = Form.Make<TListView>("List", Form, TListViewStyle{.MultiSelect = true});
    std::map<int, TListCell> Cells;
};

TEST_F(DrawnCells, HaveTheirPlaceAndNoText) {
    ASSERT_EQ(Cells.size(), 3u);
    const RECT area = Cells.at(1).Area;
    EXPECT_EQ(area.left, 0) << "the column stands first";
    EXPECT_EQ(area.right, Form.Scale(80));
    EXPECT_GT(area.top, Cells.at(0).Area.top);
    const int middle = (area.top + area.bottom) / 2;
    EXPECT_EQ(Pixel(40, middle), RGB(10, 200, 30));
    EXPECT_NE(Pixel(area.right + 20, middle), RGB(10, 200, 30)) << "nothing beyond it";
    for (int x = 1; x < 18; ++x)
        EXPECT_EQ(Pixel(x, middle), ::GetSysColor(COLOR_WINDOW)) << x;
    // The widths stay those of the columns, in whatever order they are seen.
    EXPECT_EQ(List.ColumnWidths(), (std::vector{100, 80, 100}));
    List.SetDrawnColumn(1, {});
    Paint();
    EXPECT_TRUE(Cells.empty());
}

TEST_F(DrawnCells, StandOutFromTheirRow) {
    List.Select(1);
    List.SetFocus();
    Paint();
    const RECT area = Cells.at(1).Area;
    const bool hasFocus = List.Focused();
    EXPECT_EQ(Cells.at(1).Color, ::GetSysColor(hasFocus ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT));
    EXPECT_EQ(Pixel(5, area.top + 2), ::GetSysColor(hasFocus ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
    EXPECT_EQ(Cells.at(0).Color, ::GetSysColor(COLOR_WINDOWTEXT));
    // Colours of rows go together with drawn cells, but not with a contrast theme.
    int asked = 0;
    List.OnRowColor = [&](const TListRow&) {
        ++asked;
        return std::optional(RGB(200, 0, 0));
    };
    Paint();
    EXPECT_EQ(asked, 3);
    const auto before = HighContrast();
    HighContrast() = [] { return true; };
    Paint();
    HighContrast() = before;
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(Cells.size(), 3u);
}

TEST(Clipboards, GiveBackWhatWasPutThere) {
    TForm form("clipboard");
    PutOnClipboard(form.Handle(), "one\r\n\xE4 two");
    EXPECT_EQ(TextOfClipboard(form.Handle()), "one\r\n\xE4 two");
    PutOnClipboard(form.Handle(), "");
    EXPECT_EQ(TextOfClipboard(form.Handle()), "");
}

}  // namespace
