#pragma once

#include <string>
#include <vector>

#include "hosting/BinaryFiles.h"

namespace workbench {

/// Shows the files that are to be kept byte for byte, each with a tick that the user can take off.
/// @param folder the project's, which their names are shown without.
/// @return false, with nothing changed, when the user gave up.
bool AskForBinary(const std::string& folder, std::vector<hosting::TBinaryChoice>& files);

}  // namespace workbench
