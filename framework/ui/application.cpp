#include "framework/ui/application.h"

#include "framework/base/exceptions.h"
#include "framework/base/text.h"
#include "framework/threads/synchronize.h"
#include "framework/ui/form.h"
#include "framework/ui/keyboard.h"

namespace framework {

TApplication& Application() {
    static TApplication& application = *new TApplication;
    return application;
}

namespace {

bool MovesDefaultLook(UINT message) {
    return message == WM_LBUTTONDOWN || (message >= WM_KEYFIRST && message <= WM_KEYLAST);
}

/// Lets the system handle the keys of dialogs.
bool IsDialogKey(HWND form, MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return ::IsDialogMessageW(form, &message) != FALSE;
    // Away from what cannot be left by keys. A form that is disabled takes no focus, and no keys.
    if (!CanWalkFrom(::GetFocus(), form)) {
        ::SetFocus(form);
        if (!CanWalkFrom(::GetFocus(), form))
            return true;
    }
    const HWND focus = ::GetFocus();
    const TNoContainer plain(focus == form ? nullptr : focus);
    return ::IsDialogMessageW(form, &message) != FALSE;
}

}  // namespace

bool TApplication::ProcessMessage(MSG& message) {
    if (!::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        return false;
    if (message.message == WM_QUIT) {
        Terminated_ = true;
        return true;
    }
    const HWND top = message.hwnd ? ::GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    if (auto* form = dynamic_cast<TForm*>(TControl::FromHandle(top))) {
        try {
            if (form->PreviewKey(message))
                return true;
        } catch (...) {
            HandleException();
            return true;
        }
        const bool used = IsDialogKey(top, message);
        // The system looks for the default button by its identifier, and finds none that gets the
        // look back when it takes it from another one. The form may be gone by now.
        if (MovesDefaultLook(message.message))
            if (auto* const left = dynamic_cast<TForm*>(TControl::FromHandle(top)))
                left->MarkDefaultButton(::GetFocus());
        if (used)
            return true;
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
    return true;
}

void TApplication::ProcessMessages() {
    BindMainThread();
    MSG message;
    while (ProcessMessage(message)) {
    }
}

void TApplication::HandleMessage() {
    BindMainThread();
    MSG message;
    if (!ProcessMessage(message))
        ::WaitMessage();
}

void TApplication::Run() {
    while (!Terminated_)
        HandleMessage();
    Terminated_ = false;
}

void TApplication::HandleException() noexcept {
    try {
        throw;
    } catch (const EAbort&) {
    } catch (const std::exception& error) {
        try {
            if (OnException)
                OnException(error);
            else
                ::MessageBoxW(MainWindow(), ToWide(error.what()).c_str(), L"Error",
                              MB_OK | MB_ICONERROR | MB_TASKMODAL);
        } catch (...) {
            // An error while an error is told has nowhere left to go.
        }
    } catch (...) {
    }
}

}  // namespace framework
