#pragma once

#include <windows.h>

#include "framework/api.h"
#include "framework/ui/component.h"

namespace framework {

/// Calls OnTimer again and again, an interval apart, while it is enabled. Main thread only; ticks
/// come with the messages.
class FRAMEWORK_API TTimer : public TComponent {
public:
    /// A new timer is disabled. @param interval milliseconds.
    explicit TTimer(unsigned interval);
    ~TTimer() override;

    bool Enabled() const { return Id_ != 0; }
    /// Starts or stops the timer. Enabling a timer that runs changes nothing; to restart the count,
    /// disable it first. Raises EOSError when the system has no timer left.
    void SetEnabled(bool enabled);
    /// Counts the interval from the start, running or not.
    void Restart();

    TNotifyEvent OnTimer;

private:
    static void CALLBACK Tick(HWND window, UINT message, UINT_PTR id, DWORD time);

    unsigned Interval_;
    UINT_PTR Id_ = 0;
};

}  // namespace framework
