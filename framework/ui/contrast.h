#pragma once

#include <functional>

#include "framework/api.h"

namespace framework {

/// Whether the user has chosen a contrast theme, as a function that can be replaced. With one, only
/// the system's colours can be told from each other: controls then use none of their own.
FRAMEWORK_API std::function<bool()>& HighContrast();

}  // namespace framework
