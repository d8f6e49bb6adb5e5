#include "framework/ui/splitter.h"

#include <windowsx.h>

#include <algorithm>

#include "framework/ui/form.h"

namespace framework {
namespace {

constexpr int Thickness = 4;  // design units
const wchar_t* const SizeCursors[] = {MAKEINTRESOURCEW(32645), MAKEINTRESOURCEW(32644)};

}  // namespace

TSplitter::TSplitter(TControl& parent, TControl& control, TAlign align, int minimum)
    : TControl(&parent),
      Control_(control),
      Align_(align),
      Minimum_(parent.Form().Scale(minimum)),
      Wanted_(Extent()),
      Applied_(Wanted_) {
    CreateHandle(L"STATIC", WS_CHILD | WS_VISIBLE, 0, parent.Handle());
    const int thickness = Form().Scale(Thickness);
    SetBounds(0, 0, thickness, thickness);
    SetAlign(align);
}

int TSplitter::MousePosition(LPARAM mouse) const {
    const RECT bounds = Bounds();
    return Vertical() ? bounds.left + GET_X_LPARAM(mouse) : bounds.top + GET_Y_LPARAM(mouse);
}

void TSplitter::Apply(int wanted) {
    Wanted_ = wanted;
    const RECT bounds = Control_.Bounds();
    const SIZE area = Parent()->ClientSize();
    const int room = Vertical() ? area.cx - bounds.left - Width() : area.cy - bounds.top - Height();
    // Without room for both, each has half of it.
    const int minimum = std::max(0, std::min(Minimum_, room / 2));
    Applied_ = std::clamp(wanted, minimum, std::max(minimum, room - minimum));
    if (Applied_ == Extent())
        return;
    Control_.SetBounds(bounds.left, bounds.top, Vertical() ? Applied_ : Control_.Width(),
                       Vertical() ? Control_.Height() : Applied_);
    SetAlign(Align_);
    Applied_ = Extent();
}

void TSplitter::Aligned() {
    // Before the form is laid out there is nothing to share.
    const SIZE area = Parent()->ClientSize();
    if (area.cx == 0 || area.cy == 0)
        return;
    Apply(Extent() == Applied_ ? Wanted_ : Extent());
}

LRESULT TSplitter::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCHITTEST:
            return HTCLIENT;
        case WM_SETCURSOR:
            ::SetCursor(::LoadCursorW(nullptr, SizeCursors[Vertical() ? 1 : 0]));
            return TRUE;
        case WM_LBUTTONDOWN:
            Grip_ = MousePosition(lParam) - Extent();
            ::SetCapture(Handle());
            return 0;
        case WM_MOUSEMOVE:
            if (::GetCapture() == Handle())
                Apply(MousePosition(lParam) - Grip_);
            return 0;
        case WM_LBUTTONUP:
            if (::GetCapture() == Handle())
                ::ReleaseCapture();
            // What could not be had is not wanted later, either.
            Wanted_ = Extent();
            return 0;
        default:
            return TControl::WndProc(message, wParam, lParam);
    }
}

}  // namespace framework
