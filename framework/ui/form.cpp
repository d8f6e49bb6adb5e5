#include "framework/ui/form.h"

#include "framework/base/exceptions.h"
#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
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
    windowClass.hCursor = ::LoadCursorW(nullptr, ArrowCursor);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = FormClass;
    ::RegisterClassW(&windowClass);
}

BOOL CALLBACK FindTopmost(HWND window, LPARAM found) {
    const bool topmost = (::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    if (!topmost || !::IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<bool*>(found) = true;
    return FALSE;
}

/// Whether this thread shows a window that stays above all others.
bool HasTopmostWindow() {
    bool found = false;
    ::EnumThreadWindows(::GetCurrentThreadId(), FindTopmost, reinterpret_cast<LPARAM>(&found));
    return found;
}

int SystemDpi() {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi;
}

}  // namespace

TForm::TForm(const std::string& caption) : TControl(nullptr), Dpi_(SystemDpi()) {
    RegisterFormClass();
    Font_.Reset(::CreateFontW(-::MulDiv(FontPoints, Dpi_, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE,
                              FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                              DEFAULT_QUALITY, DEFAULT_PITCH, L"Tahoma"));
    CreateHandle(FormClass, WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN,
                 WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, Application().MainWindow(), caption);
}

TForm::~TForm() { FreeComponents(); }

void TForm::SetClientSize(int width, int height) {
    RECT frame{0, 0, width, height};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongW(Handle(), GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongW(Handle(), GWL_EXSTYLE)));
    ::SetWindowPos(Handle(), nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Centre();
}

RECT TForm::WorkArea() {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(Application().MainWindow(), MONITOR_DEFAULTTOPRIMARY),
                      &monitor);
    return monitor.rcWork;
}

void TForm::Centre() {
    const RECT area = WorkArea();
    ::SetWindowPos(Handle(), nullptr, (area.left + area.right - Width()) / 2,
                   (area.top + area.bottom - Height()) / 2, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void TForm::SetVisible(bool visible) { ::ShowWindow(Handle(), visible ? SW_SHOWNORMAL : SW_HIDE); }

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
    if (above) SetStayOnTop(true);
    try {
        const TTaskWindowsDisabled others;
        RunModal();
    } catch (...) {
        SetVisible(false);
        throw;
    }
    // Only now: with the others still disabled the system would activate another program's window.
    SetVisible(false);
    if (above) SetStayOnTop(false);
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
    if (application.OnModalBegin) application.OnModalBegin(*this);
    while (ModalResult == mrNone && !application.Terminated() && Handle())
        application.HandleMessage();
    if (ModalResult == mrNone) ModalResult = mrCancel;
    return ModalResult;
}

TButton* TForm::ButtonOf(WORD id) const {
    if (id == IDOK) return DefaultButton_;
    return id == IDCANCEL ? CancelButton_ : nullptr;
}

void TForm::CloseQuery() {
    if (Modal_)
        ModalResult = mrCancel;
    else
        SetVisible(false);
}

void TForm::RestoreFocus() {
    if (!LastFocus_ || !::IsChild(Handle(), LastFocus_) || !::IsWindowEnabled(LastFocus_) ||
        !::IsWindowVisible(LastFocus_))
        LastFocus_ = ::GetNextDlgTabItem(Handle(), nullptr, FALSE);
    if (LastFocus_) ::SetFocus(LastFocus_);
}

LRESULT TForm::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETFONT: return 0;
        case WM_GETFONT: return reinterpret_cast<LRESULT>(Font_.Get());
        case WM_CLOSE: CloseQuery(); return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) LastFocus_ = ::GetFocus();
            break;
        case WM_SETFOCUS: RestoreFocus(); return 0;
        case DM_GETDEFID: return DefaultButton_ ? MAKELONG(IDOK, DC_HASDEFID) : 0;
        case WM_COMMAND:
            // The keyboard's: the system looks for the button among the form's own children only.
            if (TButton* const button = ButtonOf(LOWORD(wParam));
                button && !FromHandle(reinterpret_cast<HWND>(lParam))) {
                button->Click();
                return 0;
            }
            break;
        default: break;
    }
    return TControl::WndProc(message, wParam, lParam);
}

}  // namespace framework
