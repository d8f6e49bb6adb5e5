#include "support/Screenshot.h"

#include <objidl.h>

#include "framework/base/exceptions.h"
#include "framework/base/handle.h"
#include "framework/base/import.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "support/Files.h"

namespace support {
namespace {

using framework::GdiObject;

/// A bitmap with what the window shows.
GdiObject Picture(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    const int width = static_cast<int>(place.right - place.left);
    const int height = static_cast<int>(place.bottom - place.top);
    const HDC source = ::GetWindowDC(window);
    const HDC target = ::CreateCompatibleDC(source);
    GdiObject bitmap(::CreateCompatibleBitmap(source, width, height));
    const HGDIOBJ before = ::SelectObject(target, bitmap.Get());
    const BOOL copied = ::BitBlt(target, 0, 0, width, height, source, 0, 0, SRCCOPY);
    ::SelectObject(target, before);
    ::DeleteDC(target);
    ::ReleaseDC(window, source);
    if (!copied)
        framework::RaiseLastOSError();
    return bitmap;
}

// The few functions of GDI+ that are called here. The library is loaded with the first picture;
// programs that take none do not have it.
struct TStartup {
    UINT32 Version = 1;
    void* DebugCallback = nullptr;
    BOOL NoThread = FALSE, NoCodecs = FALSE;
};
struct TImage;
using TStart = int WINAPI(ULONG_PTR* token, const TStartup* startup, void* output);
using TStop = void WINAPI(ULONG_PTR token);
using TFromBitmap = int WINAPI(HBITMAP bitmap, HPALETTE palette, TImage** image);
using TSave = int WINAPI(TImage* image, const wchar_t* path, const CLSID* encoder, const void*);
using TDispose = int WINAPI(TImage* image);

template <class Function>
Function& Import(const char* name) {
    auto* const function = framework::ImportFunction<Function>(L"gdiplus.dll", name);
    if (!function)
        framework::RaiseLastOSError();
    return *function;
}

constexpr CLSID PngEncoder{
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

bool SavePng(HBITMAP bitmap, const std::string& path) {
    ULONG_PTR token = 0;
    const TStartup startup;
    if (Import<TStart>("GdiplusStartup")(&token, &startup, nullptr) != 0)
        return false;
    TImage* image = nullptr;
    bool saved = Import<TFromBitmap>("GdipCreateBitmapFromHBITMAP")(bitmap, nullptr, &image) == 0;
    if (saved) {
        saved = Import<TSave>("GdipSaveImageToFile")(image, framework::ToWide(path).c_str(),
                                                     &PngEncoder, nullptr) == 0;
        Import<TDispose>("GdipDisposeImage")(image);
    }
    Import<TStop>("GdiplusShutdown")(token);
    return saved;
}

}  // namespace

void SaveScreenshot(HWND window, const std::string& path) {
    framework::Application().ProcessMessages();
    ::RedrawWindow(window, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    const GdiObject picture = Picture(window);
    WriteBytes(path, {});
    if (!SavePng(static_cast<HBITMAP>(picture.Get()), path))
        throw framework::EInOutError(ERROR_WRITE_FAULT, path);
}

}  // namespace support
