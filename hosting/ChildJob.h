#pragma once

#include <windows.h>

#include "framework/base/handle.h"

namespace hosting {

/// Ties all children of this process to it: they end when it does, however that happens. One for a
/// process, for as long as it lives.
/// A process that was put into a job by somebody else may not get one of its own: Windows 7 knows
/// no jobs in jobs. Then nothing is tied, and all else goes on.
class TChildJob {
public:
    /// Puts this process into a job; AssignProcessToJobObject, or what a test puts in its place.
    using TAssign = BOOL(WINAPI*)(HANDLE job, HANDLE process);
    explicit TChildJob(TAssign assign = ::AssignProcessToJobObject);
    /// The process ends by itself: from here on nothing ends with it.
    ~TChildJob();
    TChildJob(const TChildJob&) = delete;
    TChildJob& operator=(const TChildJob&) = delete;

    /// Whether children are tied to the process.
    bool Ties() const { return static_cast<bool>(Job_); }

private:
    bool EndWithUs(bool end);

    framework::KernelHandle Job_;
};

}  // namespace hosting
