#pragma once

#include <string>
#include <string_view>

#include "framework/api.h"

namespace framework {

/// Makes an empty file in the system's folder for temporary files and returns its path. The file
/// is the caller's. Raises EInOutError. @param prefix begins its name; three letters count.
FRAMEWORK_API std::string NewTempFile(const std::string& prefix);

/// Makes these bytes the content of a file, which need not be there. Raises EInOutError.
FRAMEWORK_API void SaveToFile(const std::string& path, std::string_view bytes);

}  // namespace framework
