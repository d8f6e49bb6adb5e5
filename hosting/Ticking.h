#pragma once

#include "framework/ui/timer.h"

namespace hosting {

/// Lets a timer tick while it lives.
class TTicking {
public:
    explicit TTicking(framework::TTimer& timer) : Timer_(timer) { Timer_.Restart(); }
    ~TTicking() { Timer_.SetEnabled(false); }
    TTicking(const TTicking&) = delete;
    TTicking& operator=(const TTicking&) = delete;

private:
    framework::TTimer& Timer_;
};

}  // namespace hosting
