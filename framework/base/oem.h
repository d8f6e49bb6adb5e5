#pragma once

#include <string>

#include "framework/api.h"

namespace framework {

/// From the code page of console programs to the process's code page, character by character: the
/// length stays, and zeros are characters like others. What has no counterpart becomes the most
/// similar character.
FRAMEWORK_API std::string FromOem(std::string text);

}  // namespace framework
