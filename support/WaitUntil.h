#pragma once

#include <functional>

namespace support {

/// Serves messages until the condition holds; false when it does not within the time. Main thread
/// only.
bool WaitUntil(const std::function<bool()>& condition, unsigned milliseconds = 60000);

}  // namespace support
