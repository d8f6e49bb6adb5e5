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

void TImageList::Add(int count,
                     const std::function<void(int index, HDC dc, const RECT& area)>& draw) {
    const HDC screen = ::GetDC(nullptr);
    const GdiObject bitmap(::CreateCompatibleBitmap(screen, count * Size_, Size_));
    const HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    const HGDIOBJ before = ::SelectObject(dc, bitmap.Get());
    const RECT all{0, 0, count * Size_, Size_};
    const GdiObject background(::CreateSolidBrush(Transparent));
    ::FillRect(dc, &all, static_cast<HBRUSH>(background.Get()));
    for (int index = 0; index < count; ++index)
        draw(index, dc, {index * Size_, 0, (index + 1) * Size_, Size_});
    ::SelectObject(dc, before);
    ::DeleteDC(dc);
    ::ImageList_AddMasked(Images_, static_cast<HBITMAP>(bitmap.Get()), Transparent);
}

void TImageList::DrawCheckBox(HDC dc, const RECT& area, bool checked) {
    // The system's boxes are a little smaller than its icons.
    const int margin = static_cast<int>(area.right - area.left) * 3 / 32;
    RECT box = area;
    ::InflateRect(&box, -margin, -margin);
    ::DrawFrameControl(
        dc, &box, DFC_BUTTON,
        static_cast<UINT>(DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? DFCS_CHECKED : 0)));
}

HIMAGELIST ShellSmallImageList() {
    static const auto info =
        ImportFunction<decltype(::SHGetFileInfoW)>(L"shell32.dll", "SHGetFileInfoW");
    static HIMAGELIST list = nullptr;
    SHFILEINFOW file{};
    if (!list && info)
        list = reinterpret_cast<HIMAGELIST>(
            info(L"C:\\", 0, &file, sizeof file, SHGFI_SYSICONINDEX | SHGFI_SMALLICON));
    return list;
}

}  // namespace framework
