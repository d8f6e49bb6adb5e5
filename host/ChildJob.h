#pragma once

#include "framework/base/handle.h"

namespace host {

/// Ties all children of this process to it: they end when it does, however that happens. One for a
/// process, for as long as it lives.
class TChildJob {
public:
    /// Raises framework::EOSError when the system refuses.
    TChildJob();
    /// The process ends by itself: from here on nothing ends with it.
    ~TChildJob();
    TChildJob(const TChildJob&) = delete;
    TChildJob& operator=(const TChildJob&) = delete;

private:
    bool EndWithUs(bool end);

    framework::KernelHandle Job_;
};

}  // namespace host
