#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <string>

#include "framework/api.h"
#include "framework/ui/component.h"

namespace framework {

class TForm;

/// The running program: its message loop, its main window, the forms that belong to no other form.
/// Main thread only.
class FRAMEWORK_API TApplication : public TComponent {
public:
    /// The window that forms and shell operations are owned by; none before it is set.
    HWND MainWindow() const { return ::IsWindow(MainWindow_) ? MainWindow_ : nullptr; }
    void SetMainWindow(HWND window) { MainWindow_ = window; }

    /// Makes a form that the application owns.
    template <class T, class... Args>
    T& CreateForm(Args&&... args) {
        return Make<T>({}, std::forward<Args>(args)...);
    }

    /// Handles all messages that are waiting, and returns.
    void ProcessMessages();
    /// Handles one message; waits until there is one.
    void HandleMessage();
    /// The message loop, until Terminate or the system's quit message. Can be run again.
    void Run();
    void Terminate() { Terminated_ = true; }
    bool Terminated() const { return Terminated_; }

    /// Call it in a catch block that nothing may leave: tells the user about the exception being
    /// handled, through OnException or else a message box. EAbort is silent.
    void HandleException() noexcept;
    std::function<void(const std::exception&)> OnException;

    /// A form is open and about to handle its first messages as a modal one.
    std::function<void(TForm&)> OnModalBegin;

private:
    bool ProcessMessage(MSG& message);

    HWND MainWindow_ = nullptr;
    bool Terminated_ = false;
};

/// The application of this process. It is never destroyed: windows must not be touched any more
/// when a process or library is already being taken down.
FRAMEWORK_API TApplication& Application();

}  // namespace framework
