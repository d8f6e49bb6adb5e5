#pragma once

#include <windows.h>

#include "framework/api.h"
#include "framework/ui/component.h"
#include "framework/ui/form_watcher.h"

namespace framework {

/// Calls OnTimer again and again, an interval apart, while it is enabled. Main thread only; ticks
/// come with the messages.
class FRAMEWORK_API TTimer : public TComponent {
public:
    /// A new timer is disabled. @param interval milliseconds.
    explicit TTimer(unsigned interval);
    ~TTimer() override;

    bool Enabled() const { return Enabled_; }
    /// Starts or stops the timer. Enabling a timer that runs changes nothing; to restart the count,
    /// disable it first. Raises EOSError when the system has no timer left.
    void SetEnabled(bool enabled);
    /// Counts the interval from the start, running or not.
    void Restart();

    TNotifyEvent OnTimer;

protected:
    /// Whether an enabled timer ticks now.
    virtual bool MayTick() const { return true; }
    /// MayTick answers something else than before. An enabled timer that may tick again counts its
    /// interval from the start.
    void MayTickChanged();

private:
    static void CALLBACK Tick(HWND window, UINT message, UINT_PTR id, DWORD time);
    void Start();
    void Stop();

    unsigned Interval_;
    UINT_PTR Id_ = 0;
    bool Enabled_ = false;
};

/// A timer that rests while its form cannot be used: then nothing ticks that nobody could have
/// started, and who waits for quiet gets it.
class FRAMEWORK_API TFormTimer : public TTimer, private TFormWatcher {
public:
    TFormTimer(const TControl& control, unsigned interval)
        : TTimer(interval), TFormWatcher(control) {}

protected:
    bool MayTick() const override { return FormEnabled(); }
    void FormEnabledChanged() override { MayTickChanged(); }
};

}  // namespace framework
