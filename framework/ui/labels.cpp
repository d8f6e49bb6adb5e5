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
    const SIZE area = TextSize(Text(), MaxWidth_);
    ::SetWindowPos(Handle(), nullptr, 0, 0, area.cx, area.cy,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void TLabel::Resized() {
    // The system would keep what is painted, with its lines broken for the size before.
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

TPanel::TPanel(TControl& parent) : TControl(&parent) {
    CreateHandle(L"STATIC", WS_CHILD | WS_VISIBLE, WS_EX_CONTROLPARENT, parent.Handle());
}

}  // namespace framework
