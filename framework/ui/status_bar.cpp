#include "framework/ui/status_bar.h"

#include "framework/base/text.h"
#include "framework/ui/form.h"
#include "framework/ui/image_list.h"

namespace framework {

TStatusBar::TStatusBar(TControl& parent, const std::vector<int>& widths)
    : TControl(&parent), Texts_(widths.size()) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    // Its place is the layout's.
    CreateHandle(
        STATUSCLASSNAMEW,
        WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP | SBARS_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN,
        0, parent.Handle());
    std::vector<int> edges;
    edges.reserve(widths.size());
    for (const int width : widths)
        edges.push_back((edges.empty() ? 0 : edges.back()) + Form().Scale(width));
    if (!edges.empty())
        edges.back() = -1;
    ::SendMessageW(Handle(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    SetBounds(0, 0, 0, TextSize("Ay").cy + Form().Scale(8));
}

void TStatusBar::SetPartText(int part, const std::string& text) {
    std::string& shown = Texts_.at(static_cast<std::size_t>(part));
    if (shown == text)
        return;
    shown = text;
    const std::wstring wide = ToWide(text);
    const auto at = static_cast<WPARAM>(part);
    ::SendMessageW(Handle(), SB_SETTEXTW, at, reinterpret_cast<LPARAM>(wide.c_str()));
    ::SendMessageW(Handle(), SB_SETTIPTEXTW, at, reinterpret_cast<LPARAM>(wide.c_str()));
}

LRESULT TStatusBar::Notify(NMHDR& header) {
    if (static_cast<int>(header.code) == static_cast<int>(NM_CLICK) && OnPartClick)
        OnPartClick(static_cast<int>(reinterpret_cast<const NMMOUSE&>(header).dwItemSpec));
    return 0;
}

}  // namespace framework
