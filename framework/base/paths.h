#pragma once

#include <string>
#include <string_view>

#include "framework/api.h"

namespace framework {

/// Cutting of path texts; the disk is not looked at.

/// What follows the last backslash, slash or colon.
FRAMEWORK_API std::string ExtractFileName(std::string_view path);
/// Everything up to and including the last backslash, slash or colon.
FRAMEWORK_API std::string ExtractFilePath(std::string_view path);
/// As ExtractFilePath, without the trailing separator unless it belongs to a root ("C:\", "\").
FRAMEWORK_API std::string ExtractFileDir(std::string_view path);

}  // namespace framework
