#include "framework/ui/form.h"

#include <algorithm>

#include "framework/base/exceptions.h"
#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/form_watcher.h"
#include "framework/ui/keyboard.h"
#include "framework/ui/menus.h"
#include "framework/ui/task_windows.h"

namespace framework {
namespace {

constexpr wchar_t FormClass[] = L"FrameworkForm";
constexpr int FontPoints = 8;
const wchar_t* const ArrowCursor = MAKEINTRESOURCEW(32512);

void RegisterFormClass() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    // The program's, for all its windows; none in a program that has no icon.
    windowClass.hIcon = ::LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(1));
    windowClass.hCursor = ::LoadCursorW(nullptr, ArrowCursor);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = FormClass;
    ::RegisterClassW(&windowClass);
}

BOOL CALLBACK FindTopmost(HWND window, LPARAM found) {
    const bool topmost = (::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    if (!topmost || !::IsWindowVisible(window))
        return TRUE;
    *reinterpret_cast<bool*>(found) = true;
    return FALSE;
}

/// Whether this thread shows a window that stays above all others.
bool HasTopmostWindow() {
    bool found = false;
    ::EnumThreadWindows(::GetCurrentThreadId(), FindTopmost, reinterpret_cast<LPARAM>(&found));
    return found;
}

BOOL CALLBACK MarkIfEqual(HWND window, LPARAM marked) {
    if (!dynamic_cast<TButton*>(TControl::FromHandle(window)))
        return TRUE;
    const bool wanted = window == reinterpret_cast<HWND>(marked);
    const LONG look = wanted ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if ((::GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) != look)
        ::SendMessageW(window, BM_SETSTYLE, static_cast<WPARAM>(look), TRUE);
    return TRUE;
}

int SystemDpi() {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi;
}

}  // namespace

TForm::TForm(const std::string& caption, TFormBorder border)
    : TControl(nullptr), Dpi_(SystemDpi()) {
    RegisterFormClass();
    Font_.Reset(::CreateFontW(-::MulDiv(FontPoints, Dpi_, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE,
                              FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                              DEFAULT_QUALITY, DEFAULT_PITCH, L"Tahoma"));
    const bool main = border == TFormBorder::Main;
    const DWORD style = border == TFormBorder::Dialog ? 0
                        : main ? WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX
                               : WS_THICKFRAME | WS_MAXIMIZEBOX;
    CreateHandle(FormClass, WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | style,
                 (main ? 0 : WS_EX_DLGMODALFRAME) | WS_EX_CONTROLPARENT,
                 main ? nullptr : Application().MainWindow(), caption);
}

TForm::~TForm() {
    FreeComponents();
}

void TForm::SetClientSize(int width, int height) {
    const SIZE size = WithFrame({width, height});
    SetSize(size.cx, size.cy);
}

void TForm::SetSize(int width, int height) {
    const RECT area = WorkArea();
    // Of a form that is too large the caption has to show.
    SetBounds(std::max(area.left, (area.left + area.right - width) / 2),
              std::max(area.top, (area.top + area.bottom - height) / 2), width, height);
}

SIZE TForm::WithFrame(SIZE inner) const {
    RECT frame{0, 0, inner.cx, inner.cy};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongW(Handle(), GWL_STYLE)),
                         Menu_ != nullptr,
                         static_cast<DWORD>(::GetWindowLongW(Handle(), GWL_EXSTYLE)));
    return {frame.right - frame.left, frame.bottom - frame.top};
}

RECT TForm::WorkArea() {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(Application().MainWindow(), MONITOR_DEFAULTTOPRIMARY),
                      &monitor);
    return monitor.rcWork;
}

void TForm::HostIn(TControl& parent) {
    constexpr LONG_PTR Frame =
        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    ::SetWindowLongPtrW(Handle(), GWL_EXSTYLE,
                        ::GetWindowLongPtrW(Handle(), GWL_EXSTYLE) & ~WS_EX_DLGMODALFRAME);
    ::SetWindowLongPtrW(
        Handle(), GWL_STYLE,
        (::GetWindowLongPtrW(Handle(), GWL_STYLE) & ~Frame) | static_cast<LONG_PTR>(WS_CHILD));
    ::SetParent(Handle(), parent.Handle());
    SetParent(&parent);
    // Its own default button is none here.
    Form().MarkDefaultButton(::GetFocus());
    const SIZE area = parent.ClientSize();
    ::SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, area.cx, area.cy,
                   SWP_FRAMECHANGED | SWP_NOACTIVATE);
}

void TForm::SetVisible(bool visible) {
    if (Hosted())
        TControl::SetVisible(visible);
    else
        ::ShowWindow(Handle(), visible ? SW_SHOWNORMAL : SW_HIDE);
}

void TForm::SetStayOnTop(bool stayOnTop) {
    ::SetWindowPos(Handle(), stayOnTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void TForm::DisableClose() {
    ::EnableMenuItem(::GetSystemMenu(Handle(), FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
}

TModalResult TForm::ShowModal() {
    if (Modal_ || Visible())
        throw Exception("A form that is already open cannot be opened once more");
    // A form that has to be answered must not lie behind one that is always on top.
    const bool above = HasTopmostWindow();
    if (above)
        SetStayOnTop(true);
    try {
        const TTaskWindowsDisabled others;
        RunModal();
    } catch (...) {
        SetVisible(false);
        throw;
    }
    // Only now: with the others still disabled the system would activate another program's window.
    SetVisible(false);
    if (above)
        SetStayOnTop(false);
    return ModalResult;
}

TModalResult TForm::RunModal() {
    ModalResult = mrNone;
    // The form may not have been there when an outer bracket disabled all windows.
    SetEnabled(true);
    Show();
    struct TModalMark {
        bool& Modal;
        explicit TModalMark(bool& modal) : Modal(modal) { Modal = true; }
        ~TModalMark() { Modal = false; }
    } const mark(Modal_);
    TApplication& application = Application();
    if (application.OnModalBegin)
        application.OnModalBegin(*this);
    while (ModalResult == mrNone && !application.Terminated() && Handle())
        application.HandleMessage();
    if (ModalResult == mrNone)
        ModalResult = mrCancel;
    return ModalResult;
}

TButton* TForm::ButtonOf(WORD id) const {
    if (id == IDOK)
        return DefaultButton_;
    return id == IDCANCEL ? CancelButton_ : nullptr;
}

void TForm::SetDefaultButton(TButton* button) {
    if (button == DefaultButton_)
        return;
    DefaultButton_ = button;
    Form().MarkDefaultButton(::GetFocus());
}

void TForm::MarkDefaultButton(HWND focus) {
    HWND marked = DefaultButton_ ? DefaultButton_->Handle() : nullptr;
    if (::IsChild(Handle(), focus) && dynamic_cast<TButton*>(FromHandle(focus)))
        marked = focus;
    ::EnumChildWindows(Handle(), MarkIfEqual, reinterpret_cast<LPARAM>(marked));
}

bool TForm::PreviewKey(const MSG& message) {
    return message.message == WM_KEYDOWN && OfferKey(message.hwnd, message.wParam);
}

bool TForm::HandleKey(WPARAM key) {
    if (OnKeyPreview && OnKeyPreview(key))
        return true;
    if (Menu_ && Menu_->Press(key))
        return true;
    // Pages are turned also by who is beside them.
    return key == VK_TAB && !Hosted() && OfferKeyInside(key);
}

void TForm::CloseQuery() {
    if (Modal_)
        ModalResult = mrCancel;
    else
        SetVisible(false);
}

void TForm::RememberFocus(HWND focus) {
    // While the form is disabled nothing of it has the focus; what had it before is meant.
    if (focus && ::IsChild(Handle(), focus))
        LastFocus_ = focus;
}

void TForm::RestoreFocus() {
    // What stands on a disabled window would still hear the keys.
    if (!Enabled())
        return;
    const bool known =
        LastFocus_ && ::IsChild(Handle(), LastFocus_) && CanWalkFrom(LastFocus_, Handle());
    if (!known)
        LastFocus_ = ::GetNextDlgTabItem(Handle(), nullptr, FALSE);
    if (!LastFocus_)
        return;
    // A part of another form gets it when it is turned to: the user begins there anew.
    if (known && !Hosted())
        ::SetFocus(LastFocus_);
    else
        FocusUnasked(LastFocus_);
}

LRESULT TForm::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETFONT:
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(Font_.Get());
        case WM_CLOSE:
            CloseQuery();
            return 0;
        case WM_QUERYENDSESSION:
            return QueryEndSession() ? TRUE : FALSE;
        case WM_ENDSESSION:
            if (wParam)
                EndSession();
            return 0;
        case WM_SHOWWINDOW:
            if (wParam)
                Shown();
            break;
        case WM_GETMINMAXINFO:
            if (MinClientSize_.cx > 0) {
                const SIZE size = WithFrame(MinClientSize_);
                reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {size.cx, size.cy};
            }
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE)
                RememberFocus(::GetFocus());
            break;
        case WM_ENABLE:
            TFormWatcher::Tell(*this);
            break;
        case WM_SETFOCUS:
            RestoreFocus();
            return 0;
        case DM_GETDEFID:
            return DefaultButton_ ? MAKELONG(IDOK, DC_HASDEFID) : 0;
        case WM_COMMAND:
            // The keyboard's: the system looks for the button among the form's own children only.
            if (TButton* const button = ButtonOf(LOWORD(wParam));
                button && !FromHandle(reinterpret_cast<HWND>(lParam))) {
                button->Click();
                return 0;
            }
            if (!lParam && Menu_ && Menu_->Choose(LOWORD(wParam)))
                return 0;
            break;
        case WM_INITMENUPOPUP:
            if (Menu_)
                Menu_->Opening(reinterpret_cast<HMENU>(wParam));
            break;
        default:
            break;
    }
    return TControl::WndProc(message, wParam, lParam);
}

}  // namespace framework
