#pragma once

#include <string>
#include <vector>

namespace tandrel {

/// What the user chooses a connection type from; the positions are those of TConnectionType.
inline const std::vector<std::string> ConnectionTypeItems = {"'local'", "'pserver'", "'ssh'"};

}  // namespace tandrel
