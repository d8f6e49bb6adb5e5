#pragma once

#include <string>
#include <string_view>

#include "core/Customvcs_types.h"

namespace tandrel {

/// The parts of a working copy's root.
struct TRootLine {
    bool HasMethod = false;  ///< The line begins with a method; otherwise it is a local path.
    TConnectionType ConnectionType = cnLocal;
    std::string User;  ///< Empty when there is none.
    std::string Server;
    std::string Path;  ///< With the port before it, if the line has one.
};

/// Takes a root apart. Any text gives a result; a password in it is dropped.
TRootLine ParseRootLine(std::string_view line);

}  // namespace tandrel
