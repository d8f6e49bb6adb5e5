#pragma once

#include <string>

namespace tests {

/// Makes a symbolic link in a folder; fails the test when it does not appear.
/// @param target as seen from the folder.
void MakeLink(const std::string& folder, const std::string& name, const std::string& target);

}  // namespace tests
