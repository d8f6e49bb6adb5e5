#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tandrel {

/// The lines of an ignore list that name no entry of its folder and not the list itself, in their
/// order. None when there is no such list; raises EInOutError when it cannot be read.
/// @param isEntry whether the folder has an entry of that name.
std::vector<std::string> OtherIgnoreLines(
    const std::string& path, const std::function<bool(const std::string& name)>& isEntry);

/// Writes an ignore list in one step: the kept lines, the names, and last its own, because the list
/// ignores itself. Raises EInOutError.
void WriteIgnoreList(const std::string& path, std::vector<std::string> kept,
                     const std::vector<std::string>& names);

}  // namespace tandrel
