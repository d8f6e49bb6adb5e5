#include "framework/ui/image_list.h"

#include <shellapi.h>

#include "framework/base/exceptions.h"
#include "framework/base/handle.h"
#include "framework/base/import.h"

namespace framework {
namespace {

// A colour that no picture of ours has.
constexpr COLORREF Transparent = RGB(254, 0, 253);

}  // namespace

TImageList::TImageList(int size)
    : Size_(size > 0 ? size : ::GetSystemMetrics(SM_CXSMICON)),
      Images_(::ImageList_Create(Size_, Size_, ILC_COLOR24 | ILC_MASK, 0, 8)) {
    if (!Images_)
        RaiseLastOSError();
}

TImageList::~TImageList() {
    ::ImageList_Destroy(Images_);
}

void TImageList::Add(const std::function<void(HDC dc, const RECT& area)>& draw) {
    const HDC screen = ::GetDC(nullptr);
    const GdiObject bitmap(::CreateCompatibleBitmap(screen, Size_, Size_));
    const HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    const HGDIOBJ before = ::SelectObject(dc, bitmap.Get());
    const RECT area{0, 0, Size_, Size_};
    const GdiObject background(::CreateSolidBrush(Transparent));
    ::FillRect(dc, &area, static_cast<HBRUSH>(background.Get()));
    if (draw)
        draw(dc, area);
    ::SelectObject(dc, before);
    ::DeleteDC(dc);
    ::ImageList_AddMasked(Images_, static_cast<HBITMAP>(bitmap.Get()), Transparent);
}

void TImageList::AddCheckBox(bool checked) {
    Add([checked](HDC dc, const RECT& area) {
        // The system's boxes are a little smaller than its icons.
        const int margin = static_cast<int>(area.right) * 3 / 32;
        RECT box = area;
        ::InflateRect(&box, -margin, -margin);
        ::DrawFrameControl(
            dc, &box, DFC_BUTTON,
            static_cast<UINT>(DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? DFCS_CHECKED : 0)));
    });
}

HIMAGELIST ShellSmallImageList() {
    static const auto info =
        ImportFunction<decltype(::SHGetFileInfoW)>(L"shell32.dll", "SHGetFileInfoW");
    SHFILEINFOW file{};
    return info ? reinterpret_cast<HIMAGELIST>(
                      info(L"C:\\", 0, &file, sizeof file, SHGFI_SYSICONINDEX | SHGFI_SMALLICON))
                : nullptr;
}

}  // namespace framework
