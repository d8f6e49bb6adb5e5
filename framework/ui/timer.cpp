#include "framework/ui/timer.h"

#include <map>

#include "framework/base/exceptions.h"
#include "framework/ui/application.h"

namespace framework {
namespace {

// A tick can still be in the queue when its timer is gone: it must find nothing here then.
std::map<UINT_PTR, TTimer*>& RunningTimers() {
    static std::map<UINT_PTR, TTimer*> timers;
    return timers;
}

}  // namespace

TTimer::TTimer(unsigned interval) : Interval_(interval) {}

TTimer::~TTimer() {
    Stop();
}

void TTimer::SetEnabled(bool enabled) {
    if (enabled && !Enabled_ && MayTick())
        Start();
    if (!enabled)
        Stop();
    Enabled_ = enabled;
}

void TTimer::MayTickChanged() {
    if (!Enabled_)
        return;
    if (MayTick())
        Start();
    else
        Stop();
}

void TTimer::Start() {
    if (Id_ != 0)
        return;
    Id_ = ::SetTimer(nullptr, 0, Interval_, Tick);
    if (Id_ == 0)
        RaiseLastOSError();
    RunningTimers()[Id_] = this;
}

void TTimer::Stop() {
    if (Id_ == 0)
        return;
    ::KillTimer(nullptr, Id_);
    RunningTimers().erase(Id_);
    Id_ = 0;
}

void TTimer::Restart() {
    SetEnabled(false);
    SetEnabled(true);
}

void CALLBACK TTimer::Tick(HWND, UINT, UINT_PTR id, DWORD) {
    const auto running = RunningTimers().find(id);
    if (running == RunningTimers().end())
        return;
    TTimer& timer = *running->second;
    try {
        if (timer.OnTimer)
            timer.OnTimer(&timer);
    } catch (...) {
        Application().HandleException();
    }
}

}  // namespace framework
