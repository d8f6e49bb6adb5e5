#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/Customvcs_types.h"

namespace tandrel {

/// The client's folder of records, in each folder of a working copy.
inline constexpr const char* AdminDirectoryName = "CVS";
/// The list of what the client is to ignore in its folder.
inline constexpr const char* IgnoreFileName = ".cvsignore";

/// The parts of a working copy's root.
struct TRootLine {
    bool HasMethod = false;  ///< ConnectionType is known.
    bool IsLocal = false;    ///< All of it is a path: no user, no server.
    TConnectionType ConnectionType = cnLocal;
    std::string User;  ///< Empty when there is none.
    std::string Server;
    std::string Path;  ///< With the port before it, if the line has one.
};

/// Takes a root apart. Any text gives a result; a password in it is dropped.
TRootLine ParseRootLine(std::string_view line);

/// One line of the client's Entries file. Refers to the line.
struct TEntryLine {
    bool IsDirectory = false;
    std::string_view Name;  ///< Empty when the line names nothing.
    std::string_view Revision;
    std::string_view TimeStamp;
    std::string_view Options;  ///< Such as "-kb".
    std::string_view Tag;      ///< What the file stays on, behind a letter for its kind.
};

/// Takes an entry apart. Any text gives a result; a field that does not end in a slash is empty.
TEntryLine ParseEntryLine(std::string_view line);

/// Calls `take` with each entry of a folder's records that names something, as the client itself
/// would find them: with what it has left in its journal. Raises EInOutError when they cannot be
/// read.
/// @param withJournal false for the Entries file alone.
void ForEachEntry(const std::string& folder, bool withJournal,
                  const std::function<void(const TEntryLine& entry)>& take);

}  // namespace tandrel
