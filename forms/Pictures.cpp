#include "forms/Pictures.h"

#include <initializer_list>

#include "framework/base/handle.h"

namespace tandrel {
namespace {

constexpr COLORREF Grey = RGB(112, 112, 112);
constexpr COLORREF Blue = RGB(40, 96, 168);
constexpr COLORREF Amber = RGB(216, 152, 32);
constexpr COLORREF White = RGB(255, 255, 255);

/// Draws in a square of sixteen units.
class TPicture {
public:
    TPicture(HDC dc, const RECT& area, COLORREF line, int width, COLORREF fill)
        : Dc_(dc),
          Area_(area),
          Pen_(::CreatePen(PS_SOLID, Length(width), line)),
          Brush_(::CreateSolidBrush(fill)),
          OldPen_(::SelectObject(dc, Pen_.Get())),
          OldBrush_(::SelectObject(dc, Brush_.Get())) {}
    ~TPicture() {
        ::SelectObject(Dc_, OldPen_);
        ::SelectObject(Dc_, OldBrush_);
    }
    TPicture(const TPicture&) = delete;
    TPicture& operator=(const TPicture&) = delete;

    void Line(std::initializer_list<POINT> points) const {
        bool first = true;
        for (const POINT& point : points) {
            if (first)
                ::MoveToEx(Dc_, X(point.x), Y(point.y), nullptr);
            else
                ::LineTo(Dc_, X(point.x), Y(point.y));
            first = false;
        }
    }
    void Disc(int left, int top, int right, int bottom) const {
        ::Ellipse(Dc_, X(left), Y(top), X(right), Y(bottom));
    }
    void Plate() const {
        const POINT corners[] = {
            {X(2), Y(8)}, {X(7), Y(3)}, {X(14), Y(3)}, {X(14), Y(13)}, {X(7), Y(13)}};
        ::Polygon(Dc_, corners, static_cast<int>(std::size(corners)));
    }

private:
    int Length(LONG units) const {
        return ::MulDiv(static_cast<int>(units), static_cast<int>(Area_.right - Area_.left), 16);
    }
    int X(LONG units) const { return static_cast<int>(Area_.left) + Length(units); }
    int Y(LONG units) const { return static_cast<int>(Area_.top) + Length(units); }

    HDC Dc_;
    RECT Area_;
    framework::GdiObject Pen_;
    framework::GdiObject Brush_;
    HGDIOBJ OldPen_;
    HGDIOBJ OldBrush_;
};

void DrawClock(HDC dc, const RECT& area) {
    const TPicture picture(dc, area, Grey, 1, White);
    picture.Disc(2, 2, 15, 15);
    picture.Line({{8, 4}, {8, 8}, {11, 10}});
}

void DrawBranch(HDC dc, const RECT& area) {
    const TPicture picture(dc, area, Blue, 2, Blue);
    picture.Line({{5, 14}, {5, 2}});
    picture.Line({{5, 11}, {11, 7}, {11, 3}});
}

void DrawLabel(HDC dc, const RECT& area) {
    TPicture(dc, area, Amber, 1, Amber).Plate();
    TPicture(dc, area, White, 1, White).Disc(5, 7, 8, 10);
}

}  // namespace

TStateImages::TStateImages() {
    Add(LabelImage + 1, [](int index, HDC dc, const RECT& area) {
        switch (index) {
            case RevisionImage:
                return DrawClock(dc, area);
            case ExcludedImage:
                return DrawCheckBox(dc, area, false);
            case IncludedImage:
                return DrawCheckBox(dc, area, true);
            case BranchImage:
                return DrawBranch(dc, area);
            case LabelImage:
                return DrawLabel(dc, area);
            default:
                return;
        }
    });
}

}  // namespace tandrel
