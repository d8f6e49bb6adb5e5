#include "framework/ui/images.h"

#include <commctrl.h>

#include "framework/base/exceptions.h"

namespace framework {

TImage::TImage(TControl& parent) : TControl(&parent) {
    CreateHandle(L"STATIC", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, 0, parent.Handle());
}

void TImage::LoadResource(HINSTANCE module, const std::wstring& name) {
    Bitmap_.Reset(::LoadImageW(module, name.c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    if (!Bitmap_)
        RaiseLastOSError();
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

void TImage::DrawItem(const DRAWITEMSTRUCT& item) {
    const RECT& area = item.rcItem;
    ::FillRect(item.hDC, &area, ::GetSysColorBrush(COLOR_BTNFACE));
    BITMAP size{};
    if (!Bitmap_ || !::GetObjectW(Bitmap_.Get(), sizeof size, &size))
        return;
    const HDC source = ::CreateCompatibleDC(item.hDC);
    const HGDIOBJ before = ::SelectObject(source, Bitmap_.Get());
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (size.bmBitsPixel == 32) {
        const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        ::GdiAlphaBlend(item.hDC, area.left, area.top, width, height, source, 0, 0, size.bmWidth,
                        size.bmHeight, blend);
    } else {
        ::SetStretchBltMode(item.hDC, HALFTONE);
        ::StretchBlt(item.hDC, area.left, area.top, width, height, source, 0, 0, size.bmWidth,
                     size.bmHeight, SRCCOPY);
    }
    ::SelectObject(source, before);
    ::DeleteDC(source);
}

TAnimate::TAnimate(TControl& parent) : TControl(&parent), TFormWatcher(parent) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_ANIMATE_CLASS};
    ::InitCommonControlsEx(&classes);
    CreateHandle(ANIMATE_CLASSW, WS_CHILD | WS_VISIBLE | ACS_CENTER | ACS_TRANSPARENT, 0,
                 parent.Handle());
}

bool TAnimate::LoadResource(HINSTANCE module, int id) {
    Playing_ = false;
    return ::SendMessageW(Handle(), ACM_OPENW, reinterpret_cast<WPARAM>(module),
                          reinterpret_cast<LPARAM>(MAKEINTRESOURCEW(id))) != 0;
}

void TAnimate::Play() {
    Playing_ = true;
    FormEnabledChanged();
}

void TAnimate::FormEnabledChanged() {
    if (!Playing_)
        return;
    constexpr WPARAM Endlessly = static_cast<WPARAM>(-1);
    // Its frames come with the ticks of a timer.
    if (FormEnabled())
        ::SendMessageW(Handle(), ACM_PLAY, Endlessly, MAKELPARAM(0, -1));
    else
        ::SendMessageW(Handle(), ACM_STOP, 0, 0);
}

}  // namespace framework
