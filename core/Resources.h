#pragma once

#include <windows.h>

namespace tandrel {

/// The module that holds the package's resources: the one this code is linked into.
HINSTANCE ResourceModule();

inline constexpr int ProgressClip = 1002;  ///< AVI: something is going on.

}  // namespace tandrel
