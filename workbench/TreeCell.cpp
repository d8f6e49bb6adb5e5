#include "workbench/TreeCell.h"

#include <algorithm>

#include "framework/base/handle.h"

namespace workbench {

using namespace framework;

namespace {

// Design units.
constexpr int LaneWidth = 10, FirstLane = 8, Radius = 3;

/// Has a device context draw with an object as long as it lives.
class TSelected {
public:
    TSelected(HDC dc, HGDIOBJ object) : Dc_(dc), Before_(::SelectObject(dc, object)) {}
    ~TSelected() { ::SelectObject(Dc_, Before_); }
    TSelected(const TSelected&) = delete;
    TSelected& operator=(const TSelected&) = delete;

private:
    HDC Dc_;
    HGDIOBJ Before_;
};

void Line(HDC dc, POINT from, POINT to) {
    ::MoveToEx(dc, from.x, from.y, nullptr);
    ::LineTo(dc, to.x, to.y);
}

}  // namespace

void DrawTreeCell(const TListCell& cell, const TTreeRow& row, bool isRemoval, int dpi) {
    const auto scale = [dpi](int units) { return ::MulDiv(units, dpi, 96); };
    const auto thickness = static_cast<DWORD>(std::max(1, scale(3) / 2));
    const LOGBRUSH solid{BS_SOLID, cell.Color, 0};
    const GdiObject pen(
        ::ExtCreatePen(PS_GEOMETRIC | PS_ENDCAP_FLAT, thickness, &solid, 0, nullptr));
    const GdiObject brush(::CreateSolidBrush(cell.Color));
    const RECT& area = cell.Area;
    const LONG middle = (area.top + area.bottom) / 2;
    const auto place = [&](int lane) { return area.left + scale(FirstLane + LaneWidth * lane); };
    const TSelected withPen(cell.Dc, pen.Get());
    const LONG own = place(row.Lane);
    const int lanes = std::min<int>(MostLanes, (area.right - area.left) / scale(LaneWidth) + 1);
    for (int lane = 0; lane < lanes; ++lane) {
        const LONG x = place(lane);
        if (row.Through >> lane & 1)
            Line(cell.Dc, {x, area.top}, {x, area.bottom});
        else if (row.Ending >> lane & 1)
            Line(cell.Dc, {x, area.top}, {own, middle});
    }
    if (row.Above)
        Line(cell.Dc, {own, area.top}, {own, middle});
    if (row.Below)
        Line(cell.Dc, {own, middle}, {own, area.bottom});
    const int radius = scale(Radius);
    // What is behind the ring does not show through it.
    const TSelected withBrush(
        cell.Dc, isRemoval ? static_cast<HGDIOBJ>(::GetSysColorBrush(COLOR_WINDOW)) : brush.Get());
    ::Ellipse(cell.Dc, own - radius, middle - radius, own + radius + 1, middle + radius + 1);
}

int TreeWidth(int lanes) {
    return 2 * FirstLane + LaneWidth * (lanes - 1);
}

}  // namespace workbench
