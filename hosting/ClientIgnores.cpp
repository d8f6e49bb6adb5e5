#include "hosting/ClientIgnores.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <iterator>
#include <sstream>

namespace hosting {

bool IsIgnoredByClient(const std::string& name) {
    static constexpr const char* Patterns[] = {
        "RCS",          "SCCS",        "CVS",   "CVS.adm", "RCSLOG", "cvslog.*", "tags", "TAGS",
        ".nse_depinfo", ".make.state", "*~",    "#*",      ".#*",    ",*",       "_$*",  "*$",
        "*.old",        "*.bak",       "*.BAK", "*.orig",  "*.rej",  ".del-*",   "*.a",  "*.olb",
        "*.o",          "*.obj",       "*.so",  "*.exe",   "*.Z",    "*.elc",    "*.ln", "core"};
    return std::ranges::any_of(Patterns, [&](const char* pattern) {
        return ::PathMatchSpecA(name.c_str(), pattern) != FALSE;
    });
}

bool EndClientIgnores(const std::string& patterns) {
    std::istringstream words(patterns);
    return std::any_of(std::istream_iterator<std::string>(words), {},
                       [](const std::string& word) { return word == "!"; });
}

}  // namespace hosting
