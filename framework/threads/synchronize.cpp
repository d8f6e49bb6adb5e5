#include "framework/threads/synchronize.h"

#include <atomic>
#include <exception>

#include "framework/base/exceptions.h"

namespace framework {
namespace {

constexpr UINT WM_HANDOVER = WM_APP + 1;
constexpr wchar_t WindowClass[] = L"FrameworkHandOver";

struct HandOver {
    const std::function<void()>& Action;
    std::exception_ptr Error;
};

// The window lives as long as its thread; the system destroys it with the process.
std::atomic<HWND> HandOverWindow{nullptr};
std::atomic<DWORD> MainThreadId{0};
// Main thread.
unsigned HandOversServed = 0;

LRESULT CALLBACK HandOverProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_HANDOVER)
        return ::DefWindowProcW(window, message, wParam, lParam);
    ++HandOversServed;
    auto& handOver = *reinterpret_cast<HandOver*>(lParam);
    try {
        handOver.Action();
    } catch (...) {
        handOver.Error = std::current_exception();
    }
    return 1;
}

/// Answers what the system does; WAIT_OBJECT_0 + 1 means that something was served.
DWORD WaitAndServe(HANDLE object, DWORD milliseconds) {
    const DWORD end = ::MsgWaitForMultipleObjects(1, &object, FALSE, milliseconds, QS_SENDMESSAGE);
    if (end == WAIT_OBJECT_0 + 1) {
        MSG message;
        ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    return end;
}

}  // namespace

void BindMainThread() {
    if (HandOverWindow)
        return;
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = HandOverProc;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.lpszClassName = WindowClass;
    ::RegisterClassW(&windowClass);
    const HWND window = ::CreateWindowExW(0, WindowClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                          windowClass.hInstance, nullptr);
    if (!window)
        RaiseLastOSError();
    MainThreadId = ::GetCurrentThreadId();
    HandOverWindow = window;
}

bool OnMainThread() {
    const DWORD id = MainThreadId;
    return id == 0 || id == ::GetCurrentThreadId();
}

void Synchronize(const std::function<void()>& action) {
    if (OnMainThread()) {
        action();
        return;
    }
    HandOver handOver{action, nullptr};
    if (!::SendMessageW(HandOverWindow, WM_HANDOVER, 0, reinterpret_cast<LPARAM>(&handOver)))
        throw Exception("The main thread no longer serves requests");
    if (handOver.Error)
        std::rethrow_exception(handOver.Error);
}

TWaitEnd WaitOnceServingHandOvers(HANDLE object, DWORD milliseconds) {
    const unsigned before = HandOversServed;
    const ULONGLONG start = ::GetTickCount64();
    for (DWORD left = milliseconds;;) {
        switch (WaitAndServe(object, left)) {
            case WAIT_OBJECT_0:
                return TWaitEnd::Signalled;
            case WAIT_OBJECT_0 + 1:
                break;
            case WAIT_TIMEOUT:
                return TWaitEnd::TimedOut;
            default:
                RaiseLastOSError();
        }
        if (HandOversServed != before)
            return TWaitEnd::Served;
        // Somebody else's message is not what is waited for.
        const ULONGLONG passed = ::GetTickCount64() - start;
        if (milliseconds != INFINITE)
            left = passed < milliseconds ? milliseconds - static_cast<DWORD>(passed) : 0;
    }
}

void WaitServingHandOvers(HANDLE object) {
    while (WaitAndServe(object, INFINITE) == WAIT_OBJECT_0 + 1) {
    }
}

}  // namespace framework
