#include "framework/ui/page_control.h"

#include <commctrl.h>

#include <algorithm>

#include "framework/base/text.h"
#include "framework/ui/form.h"
#include "framework/ui/keyboard.h"

namespace framework {
namespace {

void SendCaption(TPageControl& pages, UINT message, int tab, const TTabSheet& page) {
    std::wstring caption = ToWide(page.Text());
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    ::SendMessageW(pages.Handle(), message, static_cast<WPARAM>(tab),
                   reinterpret_cast<LPARAM>(&item));
}

}  // namespace

TPageControl::TPageControl(TControl& parent) : TControl(&parent) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
    ::InitCommonControlsEx(&classes);
    CreateHandle(WC_TABCONTROLW,
                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | TCS_OWNERDRAWFIXED,
                 WS_EX_CONTROLPARENT, parent.Handle());
}

TPageControl::~TPageControl() {
    for (TTabSheet* page : Pages_)
        page->Pages_ = nullptr;
}

void TPageControl::Remove(TTabSheet& page) {
    const auto found = std::ranges::find(Pages_, &page);
    const int index = static_cast<int>(found - Pages_.begin());
    Pages_.erase(found);
    if (Active_ >= index)
        --Active_;
    RebuildTabs();
}

void TPageControl::AddTab() {
    const int page = PageCount() - 1;
    SendCaption(*this, TCM_INSERTITEMW, TabOf(page), Page(page));
    if (Active_ < 0)
        ShowPage(page);
    PlacePages();
}

void TPageControl::RebuildTabs() {
    ::SendMessageW(Handle(), TCM_DELETEALLITEMS, 0, 0);
    int tab = 0;
    for (const TTabSheet* page : Pages_)
        if (page->TabVisible())
            SendCaption(*this, TCM_INSERTITEMW, tab++, *page);
    int shown = Active_;
    if (TabOf(shown) < 0)
        shown = PageOf(std::min(std::max(TabOf(shown - 1), 0), tab - 1));
    ShowPage(shown);
    PlacePages();
}

int TPageControl::TabOf(int page) const {
    if (page < 0 || page >= PageCount() || !Page(page).TabVisible())
        return -1;
    return static_cast<int>(
        std::count_if(Pages_.begin(), Pages_.begin() + page,
                      [](const TTabSheet* before) { return before->TabVisible(); }));
}

int TPageControl::PageOf(int tab) const {
    for (int page = 0; page < PageCount(); ++page)
        if (TabOf(page) == tab && tab >= 0)
            return page;
    return -1;
}

void TPageControl::PlacePages() {
    RECT area{};
    ::GetClientRect(Handle(), &area);
    ::SendMessageW(Handle(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    for (TTabSheet* page : Pages_)
        page->SetBounds(area.left, area.top, std::max(0L, area.right - area.left),
                        std::max(0L, area.bottom - area.top));
}

void TPageControl::SetActivePageIndex(int index) {
    if (TabOf(index) >= 0)
        ShowPage(index);
}

void TPageControl::ShowPage(int index) {
    const HWND focus = ::GetFocus();
    const HWND before = Active_ >= 0 && Active_ < PageCount() ? Page(Active_).Handle() : nullptr;
    Active_ = index;
    ::SendMessageW(Handle(), TCM_SETCURSEL, static_cast<WPARAM>(TabOf(index)), 0);
    if (index >= 0)
        Page(index).SetVisible(true);
    for (int other = 0; other < PageCount(); ++other)
        if (other != index && Page(other).Visible())
            Page(other).SetVisible(false);
    // The keyboard must not stay with a page that nobody sees.
    if (!before || !::IsChild(before, focus) || index < 0 || before == Page(index).Handle())
        return;
    const HWND first = FirstStop();
    FocusUnasked(first ? first : Handle());
}

HWND TPageControl::FirstStop() const {
    if (Active_ < 0 || !Page(Active_).Enabled())
        return nullptr;
    const HWND page = Page(Active_).Handle();
    const HWND first = ::GetNextDlgTabItem(page, nullptr, FALSE);
    return ::IsChild(page, first) ? first : nullptr;
}

void TPageControl::WalkThrough(bool through) {
    const LONG_PTR style = ::GetWindowLongPtrW(Handle(), GWL_EXSTYLE);
    const LONG_PTR wanted = through ? style | WS_EX_CONTROLPARENT : style & ~WS_EX_CONTROLPARENT;
    if (wanted != style)
        ::SetWindowLongPtrW(Handle(), GWL_EXSTYLE, wanted);
}

bool TPageControl::TabKey(bool back) {
    // To the system a window with children to walk through is no place to stop at itself.
    const HWND first = FirstStop();
    const HWND focus = ::GetFocus();
    WalkThrough(first != nullptr);
    if (!first)
        return false;
    if (focus == Handle() && !back) {
        FocusUnasked(first);
        return true;
    }
    const HWND form = ::GetAncestor(Handle(), GA_ROOT);
    if (focus == Handle() || (back ? focus : ::GetNextDlgTabItem(form, focus, FALSE)) != first)
        return false;
    SetFocus();
    return true;
}

void TPageControl::Turn(int step) {
    const int tabs = static_cast<int>(::SendMessageW(Handle(), TCM_GETITEMCOUNT, 0, 0));
    if (tabs < 2)
        return;
    bool allow = true;
    if (OnChanging)
        OnChanging(allow);
    if (!allow)
        return;
    ShowPage(PageOf((TabOf(Active_) + step + tabs) % tabs));
    if (OnChange)
        OnChange(this);
}

bool TPageControl::HandleKey(WPARAM key) {
    const auto down = [](int which) { return ::GetKeyState(which) < 0; };
    if (key == VK_TAB && !down(VK_CONTROL))
        return TabKey(down(VK_SHIFT));
    if (!down(VK_CONTROL) || down(VK_MENU))
        return false;
    const bool inside = Focused() || ::IsChild(Handle(), ::GetFocus());
    if (key == VK_TAB)
        Turn(down(VK_SHIFT) ? -1 : 1);
    else if (key == VK_NEXT && inside)
        Turn(1);
    else if (key == VK_PRIOR && inside)
        Turn(-1);
    else
        return false;
    return true;
}

LRESULT TPageControl::Notify(NMHDR& header) {
    switch (static_cast<int>(header.code)) {
        case static_cast<int>(TCN_SELCHANGING): {
            bool allow = true;
            if (OnChanging)
                OnChanging(allow);
            return allow ? FALSE : TRUE;
        }
        case static_cast<int>(TCN_SELCHANGE):
            ShowPage(PageOf(static_cast<int>(::SendMessageW(Handle(), TCM_GETCURSEL, 0, 0))));
            if (OnChange)
                OnChange(this);
            return 0;
        default:
            return 0;
    }
}

void TPageControl::DrawItem(const DRAWITEMSTRUCT& item) {
    const int index = PageOf(static_cast<int>(item.itemID));
    if (index < 0)
        return;
    const TTabSheet& page = Page(index);
    RECT area = item.rcItem;
    ::FillRect(item.hDC, &area, ::GetSysColorBrush(COLOR_BTNFACE));
    const int mode = ::SetBkMode(item.hDC, TRANSPARENT);
    const COLORREF color =
        ::SetTextColor(item.hDC, ::GetSysColor(page.Enabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    ::DrawTextW(item.hDC, ToWide(page.Text()).c_str(), -1, &area,
                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    ::SetTextColor(item.hDC, color);
    ::SetBkMode(item.hDC, mode);
    if (Focused() && index == Active_) {
        ::InflateRect(&area, -2, -2);
        ::DrawFocusRect(item.hDC, &area);
    }
}

TTabSheet::TTabSheet(TPageControl& pages, const std::string& caption)
    : TControl(&pages), Pages_(&pages), Caption_(caption) {
    CreateHandle(L"STATIC", WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, pages.Handle());
    Pages_->Pages_.push_back(this);
    Pages_->AddTab();
}

TTabSheet::~TTabSheet() {
    if (Pages_)
        Pages_->Remove(*this);
}

void TTabSheet::SetText(const std::string& text) {
    Caption_ = text;
    const auto index = std::ranges::find(Pages_->Pages_, this) - Pages_->Pages_.begin();
    if (TabVisible_)
        SendCaption(*Pages_, TCM_SETITEMW, Pages_->TabOf(static_cast<int>(index)), *this);
}

void TTabSheet::SetTabVisible(bool visible) {
    if (visible == TabVisible_)
        return;
    TabVisible_ = visible;
    Pages_->RebuildTabs();
}

LRESULT TTabSheet::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENABLE && Pages_)
        ::InvalidateRect(Pages_->Handle(), nullptr, TRUE);
    return TControl::WndProc(message, wParam, lParam);
}

}  // namespace framework
