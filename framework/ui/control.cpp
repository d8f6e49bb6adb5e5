#include "framework/ui/control.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/text.h"
#include "framework/threads/synchronize.h"
#include "framework/ui/accessible_name.h"
#include "framework/ui/application.h"
#include "framework/ui/contrast.h"
#include "framework/ui/form.h"
#include "framework/ui/keyboard.h"
#include "framework/ui/menus.h"

namespace framework {
namespace {

/// A window of a control.
struct TOwned {
    TControl* Control;  // null when it went before its window
    WNDPROC SystemProc;
};

// Others may subclass a window after us, so its present procedure tells nothing, and a property of
// the window takes the system long to find: every notification asks.
std::unordered_map<HWND, TOwned>& OwnedWindows() {
    static std::unordered_map<HWND, TOwned> windows;
    return windows;
}

// Where a menu is asked for that the mouse does not point to.
constexpr LPARAM Keyboard = -1;

/// The two keys for it. Not every control of the system knows both.
bool AsksForMenu(UINT message, WPARAM key) {
    return message == WM_KEYUP ? key == VK_APPS : key == VK_F10 && ::GetKeyState(VK_SHIFT) < 0;
}

void TakeEdge(RECT& area, RECT& bounds, TAlign align) {
    const LONG width = bounds.right - bounds.left;
    const LONG height = bounds.bottom - bounds.top;
    bounds = area;
    switch (align) {
        case TAlign::Top:
            area.top = bounds.bottom = area.top + height;
            break;
        case TAlign::Bottom:
            area.bottom = bounds.top = area.bottom - height;
            break;
        case TAlign::Left:
            area.left = bounds.right = area.left + width;
            break;
        case TAlign::Right:
            area.right = bounds.left = area.right - width;
            break;
        case TAlign::Client:
        case TAlign::None:
            break;
    }
}

}  // namespace

TControl::TControl(TControl* parent) {
    SetParent(parent);
}

TControl::~TControl() {
    FreeComponents();
    DestroyHandle();
    SetParent(nullptr);
    for (TControl* child : Children_)
        child->Parent_ = nullptr;
}

void TControl::SetParent(TControl* parent) {
    if (Parent_)
        std::erase(Parent_->Children_, this);
    Parent_ = parent;
    if (Parent_)
        Parent_->Children_.push_back(this);
}

void TControl::DestroyHandle() {
    if (!Handle_)
        return;
    // From here on the window has no control; its messages go to the system's procedure.
    ForgetAccessibleName();
    const HWND window = std::exchange(Handle_, nullptr);
    OwnedWindows()[window].Control = nullptr;
    ::DestroyWindow(window);
}

void TControl::CreateHandle(const wchar_t* windowClass, DWORD style, DWORD exStyle, HWND parent,
                            const std::string& text, WORD id) {
    BindMainThread();
    Handle_ = ::CreateWindowExW(exStyle, windowClass, ToWide(text).c_str(), style, 0, 0, 0, 0,
                                parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                ::GetModuleHandleW(nullptr), nullptr);
    if (!Handle_)
        RaiseLastOSError();
    SystemProc_ = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(Handle_, GWLP_WNDPROC));
    OwnedWindows()[Handle_] = {this, SystemProc_};
    ::SetWindowLongPtrW(Handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(GuardedProc));
    if (Parent_)
        ::SendMessageW(Handle_, WM_SETFONT, ::SendMessageW(parent, WM_GETFONT, 0, 0), FALSE);
    if (!AccessibleName_.empty())
        TellAccessibleName(Handle_, ToWide(AccessibleName_));
}

void TControl::SetAccessibleName(const std::string& name) {
    AccessibleName_ = name;
    TellAccessibleName(Handle_, ToWide(name));
}

void TControl::ForgetAccessibleName() {
    if (!AccessibleName_.empty())
        TellAccessibleName(Handle_, {});
}

TControl* TControl::FromHandle(HWND window) {
    const auto found = OwnedWindows().find(window);
    return found == OwnedWindows().end() ? nullptr : found->second.Control;
}

LRESULT CALLBACK TControl::GuardedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = OwnedWindows().find(window);
    const TOwned owned =
        found == OwnedWindows().end() ? TOwned{nullptr, ::DefWindowProcW} : found->second;
    TControl* const control = owned.Control;
    if (message == WM_NCDESTROY) {
        // The system took the window before its control was freed, or just after.
        if (control) {
            control->ForgetAccessibleName();
            control->Handle_ = nullptr;
        }
        OwnedWindows().erase(window);
    }
    if (!control || message == WM_NCDESTROY)
        return ::CallWindowProcW(owned.SystemProc, window, message, wParam, lParam);
    try {
        return control->WndProc(message, wParam, lParam);
    } catch (...) {
        Application().HandleException();
        return 0;
    }
}

LRESULT TControl::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (TControl* child = FromHandle(reinterpret_cast<HWND>(lParam))) {
                child->Notification(HIWORD(wParam));
                return 0;
            }
            break;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (TControl* child = FromHandle(item.hwndItem)) {
                child->DrawItem(item);
                return TRUE;
            }
            break;
        }
        case WM_NOTIFY: {
            auto& header = *reinterpret_cast<NMHDR*>(lParam);
            if (TControl* child = FromHandle(header.hwndFrom))
                return child->Notify(header);
            break;
        }
        case WM_KEYUP:
        case WM_SYSKEYDOWN:
            if (!AsksForMenu(message, wParam))
                break;
            ::SendMessageW(Handle_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Handle_), Keyboard);
            return 0;
        case WM_CONTEXTMENU:
            if (PopupMenu_) {
                OpenPopupMenu(lParam);
                return 0;
            }
            break;
        case WM_HSCROLL:
        case WM_VSCROLL:
            if (TControl* child = FromHandle(reinterpret_cast<HWND>(lParam))) {
                child->Scrolled(wParam);
                return 0;
            }
            break;
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORLISTBOX:
            if (TControl* child = FromHandle(reinterpret_cast<HWND>(lParam)))
                return Colour(*child, message, wParam, lParam);
            break;
        case WM_SIZE: {
            const LRESULT result = ::CallWindowProcW(SystemProc_, Handle_, message, wParam, lParam);
            AlignControls();
            Resized();
            return result;
        }
        default:
            break;
    }
    return ::CallWindowProcW(SystemProc_, Handle_, message, wParam, lParam);
}

void TControl::OpenPopupMenu(LPARAM mouse) {
    POINT place{GET_X_LPARAM(mouse), GET_Y_LPARAM(mouse)};
    if (mouse == Keyboard) {
        place = MenuPlace();
        ::ClientToScreen(Handle_, &place);
    }
    PopupMenu_->Popup(*this, place);
}

LRESULT TControl::Colour(TControl& child, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT usual = ::CallWindowProcW(SystemProc_, Handle_, message, wParam, lParam);
    const HDC dc = reinterpret_cast<HDC>(wParam);
    if (child.FontColor_ && !HighContrast()())
        ::SetTextColor(dc, *child.FontColor_);
    if (!child.Color_)
        return usual;
    ::SetBkColor(dc, ::GetSysColor(*child.Color_));
    return reinterpret_cast<LRESULT>(::GetSysColorBrush(*child.Color_));
}

void TControl::SetColor(std::optional<int> systemColor) {
    if (Color_ == systemColor)
        return;
    Color_ = systemColor;
    ::InvalidateRect(Handle_, nullptr, TRUE);
}

void TControl::SetFontColor(std::optional<COLORREF> color) {
    if (FontColor_ == color)
        return;
    FontColor_ = color;
    ::InvalidateRect(Handle_, nullptr, TRUE);
}

void TControl::SetBold() {
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(Handle_, WM_GETFONT, 0, 0)), sizeof font,
                 &font);
    font.lfWeight = FW_BOLD;
    GdiObject bold(::CreateFontIndirectW(&font));
    ::SendMessageW(Handle_, WM_SETFONT, reinterpret_cast<WPARAM>(bold.Get()), TRUE);
    BoldFont_ = std::move(bold);
    SetText(Text());
}

TForm& TControl::Form() {
    TControl* top = this;
    while (top->Parent_)
        top = top->Parent_;
    return dynamic_cast<TForm&>(*top);
}

std::string TControl::Text() const {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(Handle_)) + 1, L'\0');
    const int length = ::GetWindowTextW(Handle_, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return FromWide(text);
}

void TControl::SetText(const std::string& text) {
    ::SetWindowTextW(Handle_, ToWide(text).c_str());
}

void TControl::SetEnabled(bool enabled) {
    // The system would leave nobody the focus, and no key would be heard. Forwards there may be a
    // button that a key pressed blindly must not meet.
    if (!enabled)
        GiveFocusAway();
    ::EnableWindow(Handle_, enabled);
}

void TControl::GiveFocusAway() {
    const HWND focus = ::GetFocus();
    if (!Parent_ || !focus || (focus != Handle_ && !::IsChild(Handle_, focus)))
        return;
    if (const HWND before = StopBefore(focus, Handle_))
        FocusUnasked(before);
}

void TControl::SetVisible(bool visible) {
    if (!visible)
        GiveFocusAway();
    ::ShowWindow(Handle_, visible ? SW_SHOWNA : SW_HIDE);
}

RECT TControl::Bounds() const {
    RECT bounds{};
    ::GetWindowRect(Handle_, &bounds);
    if (Parent_)
        ::MapWindowPoints(nullptr, Parent_->Handle_, reinterpret_cast<POINT*>(&bounds), 2);
    return bounds;
}

void TControl::SetBounds(int left, int top, int width, int height) {
    // To put a window where it is costs the system as much as to move it.
    const RECT before = Bounds(), after{left, top, left + width, top + height};
    if (::EqualRect(&before, &after))
        return;
    ::SetWindowPos(Handle_, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

int TControl::Width() const {
    const RECT bounds = Bounds();
    return bounds.right - bounds.left;
}

int TControl::Height() const {
    const RECT bounds = Bounds();
    return bounds.bottom - bounds.top;
}

SIZE TControl::ClientSize() const {
    RECT area{};
    ::GetClientRect(Handle_, &area);
    return {area.right, area.bottom};
}

void TControl::SetAlign(TAlign align) {
    Align_ = align;
    if (Parent_)
        Parent_->AlignControls();
}

void TControl::SetAnchors(TAnchors anchors) {
    Anchors_ = anchors;
    const RECT bounds = Bounds();
    const SIZE area = Parent_->ClientSize();
    AnchorMargins_ = {bounds.left, bounds.top, area.cx - bounds.right, area.cy - bounds.bottom};
    AnchorSize_ = {bounds.right - bounds.left, bounds.bottom - bounds.top};
}

void TControl::FollowAnchors() {
    const SIZE area = Parent_->ClientSize();
    RECT place{AnchorMargins_.left, AnchorMargins_.top, area.cx - AnchorMargins_.right,
               area.cy - AnchorMargins_.bottom};
    if (!(Anchors_ & akRight))
        place.right = place.left + AnchorSize_.cx;
    else if (!(Anchors_ & akLeft))
        place.left = place.right - AnchorSize_.cx;
    if (!(Anchors_ & akBottom))
        place.bottom = place.top + AnchorSize_.cy;
    else if (!(Anchors_ & akTop))
        place.top = place.bottom - AnchorSize_.cy;
    SetBounds(place.left, place.top, std::max(0L, place.right - place.left),
              std::max(0L, place.bottom - place.top));
}

SIZE TControl::TextSize(const std::string& text, int maxWidth) const {
    const HDC dc = ::GetDC(Handle_);
    const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(::SendMessageW(Handle_, WM_GETFONT, 0, 0));
    const HGDIOBJ before = ::SelectObject(dc, font);
    RECT area{0, 0, maxWidth, 0};
    const UINT breaks = maxWidth > 0 ? DT_WORDBREAK | DT_EDITCONTROL : 0;
    ::DrawTextW(dc, ToWide(text).c_str(), -1, &area, DT_CALCRECT | DT_NOPREFIX | breaks);
    ::SelectObject(dc, before);
    ::ReleaseDC(Handle_, dc);
    return {area.right, area.bottom};
}

void TControl::EndLayout() {
    if (--HeldLayouts_ == 0)
        AlignAll();
}

bool TControl::LayoutHeld() const {
    for (const TControl* control = this; control; control = control->Parent_)
        if (control->HeldLayouts_ > 0)
            return true;
    return false;
}

void TControl::AlignAll() {
    AlignControls();
    for (TControl* child : ChildrenWithWindows())
        child->AlignAll();
}

void TControl::AlignControls() {
    if (LayoutHeld())
        return;
    const std::vector<TControl*> children = ChildrenWithWindows();
    for (TControl* child : children)
        if (child->Anchors_ != (akLeft | akTop))
            child->FollowAnchors();
    RECT area{};
    ::GetClientRect(Handle_, &area);
    for (const TAlign align :
         {TAlign::Top, TAlign::Bottom, TAlign::Left, TAlign::Right, TAlign::Client})
        for (TControl* child : children) {
            if (child->Align_ != align || !child->Visible())
                continue;
            RECT bounds = child->Bounds();
            TakeEdge(area, bounds, align);
            child->SetBounds(bounds.left, bounds.top, bounds.right - bounds.left,
                             bounds.bottom - bounds.top);
        }
    for (TControl* child : children)
        child->Aligned();
}

bool TControl::OfferKey(HWND window, WPARAM key) {
    while (window && !FromHandle(window))
        window = ::GetAncestor(window, GA_PARENT);
    for (TControl* control = FromHandle(window); control; control = control->Parent_)
        if (control->HandleKey(key))
            return true;
    return false;
}

std::vector<TControl*> TControl::ChildrenWithWindows() const {
    std::vector<TControl*> children;
    std::ranges::copy_if(Children_, std::back_inserter(children), &TControl::Handle);
    return children;
}

bool TControl::OfferKeyInside(WPARAM key) {
    for (TControl* child : ChildrenWithWindows())
        if (child->Visible() && (child->HandleKey(key) || child->OfferKeyInside(key)))
            return true;
    return false;
}

}  // namespace framework
