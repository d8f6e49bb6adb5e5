#pragma once

#include <string>

namespace tests {

/// Makes a symbolic link in a folder; fails the test when it does not appear.
/// @param target as seen from the folder.
void MakeLink(const std::string& folder, const std::string& name, const std::string& target);
/// Removes the link, not what it leads to. A link that stays keeps the test's folder from going.
void RemoveLink(const std::string& folder, const std::string& name);

}  // namespace tests
