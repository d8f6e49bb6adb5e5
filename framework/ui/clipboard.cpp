#include "framework/ui/clipboard.h"

#include <cwchar>

#include "framework/base/text.h"

namespace framework {
namespace {

class TOpenClipboard {
public:
    explicit TOpenClipboard(HWND owner) : IsOpen_(::OpenClipboard(owner) != FALSE) {}
    ~TOpenClipboard() {
        if (IsOpen_)
            ::CloseClipboard();
    }
    TOpenClipboard(const TOpenClipboard&) = delete;
    TOpenClipboard& operator=(const TOpenClipboard&) = delete;
    explicit operator bool() const { return IsOpen_; }

private:
    bool IsOpen_;
};

}  // namespace

void PutOnClipboard(HWND owner, const std::string& text) {
    const TOpenClipboard clipboard(owner);
    if (!clipboard)
        return;
    ::EmptyClipboard();
    const std::wstring wide = ToWide(text);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
    if (!memory)
        return;
    std::wmemcpy(static_cast<wchar_t*>(::GlobalLock(memory)), wide.c_str(), wide.size() + 1);
    ::GlobalUnlock(memory);
    // The clipboard owns it once it has taken it.
    if (!::SetClipboardData(CF_UNICODETEXT, memory))
        ::GlobalFree(memory);
}

std::string TextOfClipboard(HWND owner) {
    const TOpenClipboard clipboard(owner);
    std::string text;
    if (const HANDLE data = clipboard ? ::GetClipboardData(CF_UNICODETEXT) : nullptr) {
        if (const auto* wide = static_cast<const wchar_t*>(::GlobalLock(data))) {
            text = FromWide(wide);
            ::GlobalUnlock(data);
        }
    }
    return text;
}

}  // namespace framework
