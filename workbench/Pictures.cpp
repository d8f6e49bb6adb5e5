#include "workbench/Pictures.h"

#include <vector>

#include "framework/base/handle.h"
#include "framework/ui/contrast.h"

namespace workbench {

using namespace framework;

namespace {

constexpr COLORREF Green = RGB(0, 128, 0), Blue = RGB(0, 64, 192), Red = RGB(192, 0, 0),
                   Grey = RGB(96, 96, 96);

/// Draws in a square of 16 units.
class TPen {
public:
    TPen(HDC dc, const RECT& area, bool enabled) : Dc_(dc), Area_(area), Enabled_(enabled) {}

    void Fill(const std::vector<POINT>& corners, COLORREF colour) const {
        // With a contrast theme only the system's colours can be told from what is behind them.
        const COLORREF used = !Enabled_          ? ::GetSysColor(COLOR_GRAYTEXT)
                              : HighContrast()() ? ::GetSysColor(COLOR_BTNTEXT)
                                                 : colour;
        const GdiObject brush(::CreateSolidBrush(used));
        const GdiObject pen(::CreatePen(PS_SOLID, 1, used));
        const HGDIOBJ brushBefore = ::SelectObject(Dc_, brush.Get());
        const HGDIOBJ penBefore = ::SelectObject(Dc_, pen.Get());
        std::vector<POINT> points;
        points.reserve(corners.size());
        for (const POINT& corner : corners)
            points.push_back({Area_.left + Scaled(corner.x), Area_.top + Scaled(corner.y)});
        ::Polygon(Dc_, points.data(), static_cast<int>(points.size()));
        ::SelectObject(Dc_, penBefore);
        ::SelectObject(Dc_, brushBefore);
    }
    void Bar(LONG left, LONG top, LONG right, LONG bottom, COLORREF colour) const {
        Fill({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, colour);
    }

private:
    LONG Scaled(LONG units) const { return ::MulDiv(units, Area_.right - Area_.left, 16); }

    HDC Dc_;
    RECT Area_;
    bool Enabled_;
};

void Draw(int picture, const TPen& pen) {
    switch (picture) {
        case UpdatePicture:
            pen.Fill({{6, 1}, {9, 1}, {9, 7}, {13, 7}, {8, 12}, {7, 12}, {2, 7}, {6, 7}}, Green);
            return pen.Bar(2, 13, 13, 14, Grey);
        case CommitPicture:
            pen.Fill({{6, 12}, {9, 12}, {9, 6}, {13, 6}, {8, 1}, {7, 1}, {2, 6}, {6, 6}}, Blue);
            return pen.Bar(2, 13, 13, 14, Grey);
        case AddPicture:
            pen.Bar(6, 2, 9, 13, Green);
            return pen.Bar(2, 6, 13, 9, Green);
        case RemovePicture:
            return pen.Bar(2, 6, 13, 9, Red);
        case ComparePicture:
            pen.Bar(1, 2, 6, 13, Red);
            return pen.Bar(9, 2, 14, 13, Green);
        case LogPicture:
            for (const LONG top : {2, 6, 10}) {
                pen.Bar(1, top, 3, top + 2, Blue);
                pen.Bar(5, top, 14, top + 2, Grey);
            }
            return;
        case RefreshPicture:
            pen.Fill({{2, 7}, {4, 3}, {9, 2}, {9, 0}, {14, 4}, {9, 8}, {9, 6}, {6, 6}, {5, 8}},
                     Green);
            return pen.Fill({{13, 8}, {11, 12}, {6, 13}, {6, 15}, {1, 11}, {6, 7}, {6, 9}, {9, 9}},
                            Green);
        case StopPicture:
            return pen.Fill(
                {{5, 1}, {10, 1}, {14, 5}, {14, 10}, {10, 14}, {5, 14}, {1, 10}, {1, 5}}, Red);
        default:
            return;
    }
}

}  // namespace

void AddPictures(TImageList& list, bool enabled) {
    list.Add(PictureCount, [enabled](int picture, HDC dc, const RECT& area) {
        Draw(picture, TPen(dc, area, enabled));
    });
}

}  // namespace workbench
