#pragma once

#include <string>

namespace hosting {

/// Whether the client passes over a file of this name by itself when it adds up what is not under
/// version control, and leaves it out of an import: objects, copies of editors, and the like.
bool IsIgnoredByClient(const std::string& name);

/// Whether patterns do away with what the client passes over by itself. @param patterns as they
/// stand in its variable or in a list of a folder's: words, between them blanks or ends of lines.
bool EndClientIgnores(const std::string& patterns);

}  // namespace hosting
