#pragma once

#include <string>

namespace host {

/// Ends the children of this process that run a certain program.
/// @param command a command line that begins with the program, in quotes or not. @return whether
/// there was one.
bool EndChildren(const std::string& command);

}  // namespace host
