#include "framework/ui/labels.h"

#include "framework/base/text.h"

namespace framework {

TLabel::TLabel(TControl& parent, const std::string& caption, int maxWidth)
    : TControl(&parent), MaxWidth_(maxWidth) {
    const DWORD breaks = MaxWidth_ > 0 ? SS_EDITCONTROL : 0;
    CreateHandle(L"STATIC", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | breaks, 0, parent.Handle(),
                 caption);
    AdjustSize();
}

void TLabel::SetText(const std::string& text) {
    TControl::SetText(text);
    AdjustSize();
}

void TLabel::AdjustSize() {
    const HDC dc = ::GetDC(Handle());
    const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(::SendMessageW(Handle(), WM_GETFONT, 0, 0));
    const HGDIOBJ before = ::SelectObject(dc, font);
    RECT area{0, 0, MaxWidth_, 0};
    const UINT breaks = MaxWidth_ > 0 ? DT_WORDBREAK | DT_EDITCONTROL : 0;
    ::DrawTextW(dc, ToWide(Text()).c_str(), -1, &area, DT_CALCRECT | DT_NOPREFIX | breaks);
    ::SelectObject(dc, before);
    ::ReleaseDC(Handle(), dc);
    ::SetWindowPos(Handle(), nullptr, 0, 0, area.right, area.bottom,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

TPanel::TPanel(TControl& parent) : TControl(&parent) {
    CreateHandle(L"STATIC", WS_CHILD | WS_VISIBLE, WS_EX_CONTROLPARENT, parent.Handle());
}

}  // namespace framework
