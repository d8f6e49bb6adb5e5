#include "framework/ui/control.h"

#include <utility>
#include <vector>

#include "framework/base/exceptions.h"
#include "framework/base/text.h"
#include "framework/threads/synchronize.h"
#include "framework/ui/application.h"
#include "framework/ui/form.h"

namespace framework {
namespace {

// A window that belongs to a control carries the procedure it had before. Others may subclass it
// after us, so the present procedure tells nothing.
constexpr wchar_t SystemProcProperty[] = L"FrameworkSystemProc";

WNDPROC SystemProcOf(HWND window) {
    return reinterpret_cast<WNDPROC>(
        reinterpret_cast<void*>(::GetPropW(window, SystemProcProperty)));
}

void TakeEdge(RECT& area, RECT& bounds, TAlign align) {
    const LONG width = bounds.right - bounds.left;
    const LONG height = bounds.bottom - bounds.top;
    bounds = area;
    switch (align) {
        case TAlign::Top: area.top = bounds.bottom = area.top + height; break;
        case TAlign::Bottom: area.bottom = bounds.top = area.bottom - height; break;
        case TAlign::Left: area.left = bounds.right = area.left + width; break;
        case TAlign::Right: area.right = bounds.left = area.right - width; break;
        case TAlign::Client:
        case TAlign::None: break;
    }
}

std::vector<TControl*> Children(HWND parent) {
    std::vector<TControl*> children;
    for (HWND child = ::GetWindow(parent, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (TControl* control = TControl::FromHandle(child)) children.push_back(control);
    return children;
}

}  // namespace

TControl::~TControl() {
    FreeComponents();
    if (!Handle_) return;
    // From here on the window has no control; its messages go to the system's procedure.
    const HWND window = std::exchange(Handle_, nullptr);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    ::DestroyWindow(window);
}

void TControl::CreateHandle(const wchar_t* windowClass, DWORD style, DWORD exStyle, HWND parent,
                            const std::string& text, WORD id) {
    BindMainThread();
    Handle_ = ::CreateWindowExW(exStyle, windowClass, ToWide(text).c_str(), style, 0, 0, 0, 0,
                                parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                ::GetModuleHandleW(nullptr), nullptr);
    if (!Handle_) RaiseLastOSError();
    ::SetWindowLongPtrW(Handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SystemProc_ = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(Handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(GuardedProc)));
    ::SetPropW(Handle_, SystemProcProperty, reinterpret_cast<HANDLE>(SystemProc_));
    if (Parent_)
        ::SendMessageW(Handle_, WM_SETFONT, ::SendMessageW(parent, WM_GETFONT, 0, 0), FALSE);
}

TControl* TControl::FromHandle(HWND window) {
    // Windows of others may keep anything in that place.
    if (!window || !SystemProcOf(window)) return nullptr;
    return reinterpret_cast<TControl*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
}

LRESULT CALLBACK TControl::GuardedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const control =
        reinterpret_cast<TControl*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!control || message == WM_NCDESTROY) {
        const WNDPROC systemProc = SystemProcOf(window);
        if (message == WM_NCDESTROY) {
            // The system took the window before its control was freed, or just after.
            if (control) control->Handle_ = nullptr;
            ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            ::RemovePropW(window, SystemProcProperty);
        }
        return ::CallWindowProcW(systemProc ? systemProc : ::DefWindowProcW, window, message,
                                 wParam, lParam);
    }
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
        case WM_SIZE: {
            const LRESULT result = ::CallWindowProcW(SystemProc_, Handle_, message, wParam, lParam);
            AlignControls();
            return result;
        }
        default: break;
    }
    return ::CallWindowProcW(SystemProc_, Handle_, message, wParam, lParam);
}

TForm& TControl::Form() {
    TControl* top = this;
    while (top->Parent_) top = top->Parent_;
    return dynamic_cast<TForm&>(*top);
}

std::string TControl::Text() const {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(Handle_)) + 1, L'\0');
    const int length = ::GetWindowTextW(Handle_, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return FromWide(text);
}

void TControl::SetText(const std::string& text) { ::SetWindowTextW(Handle_, ToWide(text).c_str()); }

void TControl::SetVisible(bool visible) { ::ShowWindow(Handle_, visible ? SW_SHOWNA : SW_HIDE); }

RECT TControl::Bounds() const {
    RECT bounds{};
    ::GetWindowRect(Handle_, &bounds);
    if (Parent_)
        ::MapWindowPoints(nullptr, Parent_->Handle_, reinterpret_cast<POINT*>(&bounds), 2);
    return bounds;
}

void TControl::SetBounds(int left, int top, int width, int height) {
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
    if (Parent_) Parent_->AlignControls();
}

void TControl::AlignControls() {
    const std::vector<TControl*> children = Children(Handle_);
    RECT area{};
    ::GetClientRect(Handle_, &area);
    for (const TAlign align :
         {TAlign::Top, TAlign::Bottom, TAlign::Left, TAlign::Right, TAlign::Client})
        for (TControl* child : children) {
            if (child->Align_ != align || !child->Visible()) continue;
            RECT bounds = child->Bounds();
            TakeEdge(area, bounds, align);
            child->SetBounds(bounds.left, bounds.top, bounds.right - bounds.left,
                             bounds.bottom - bounds.top);
        }
}

}  // namespace framework
