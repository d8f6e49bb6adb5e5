#pragma once

#include <string>
#include <string_view>

#include "core/Customvcs_types.h"

namespace tandrel {

/// Composes the repository's root as the client expects it from the connection's data. The result
/// ends in blanks (one for a local repository, two for a remote one), so that the next part of a
/// command line can follow at once.
/// @param Port as text; the client's default port and an empty text are alike. Only a password
/// server has a port and a password in its root.
std::string CompileCVSROOT(TConnectionType ConnType, std::string_view Server, std::string_view User,
                           std::string_view Password, std::string_view Port, std::string_view Path);

/// The text under which a connection type is shown and stored.
std::string StrFromConnType(TConnectionType ConnType);
/// The connection type of such a text, upper and lower case alike; cnLocal for any other text.
TConnectionType ConnTypeFromStr(std::string_view S);

/// The keyword mode of an option's text without its "-", such as "kb"; Km_none for any other text.
TKeywordMode Get_KeywordMode(std::string_view S);

}  // namespace tandrel
