#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/LogText.h"

namespace workbench {

/// For each revision of a file the name of the branch that it is on; its number where it has no
/// name, empty for the trunk.
std::vector<std::string> BranchesOf(const TFileLog& log);

/// For each revision of a file the positions of the labels that mean it; of a branch, at its newest
/// revision or, while it has none, at the one that it leaves.
std::vector<std::vector<std::size_t>> LabelsOfRevisions(const TFileLog& log);

/// The first of some texts, and how many more there are: "A, B, C and 5 more".
std::string FirstOf(const std::vector<std::string>& texts, std::size_t most);
/// A message's first line that is not empty.
std::string FirstLineOf(const std::string& message);

}  // namespace workbench
