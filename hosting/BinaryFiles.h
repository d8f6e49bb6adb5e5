#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/WorkDirTree.h"

namespace hosting {

// Which files are no texts. The client turns line ends and keywords in what it takes for a text,
// and reads it only up to its first Ctrl+Z: of a picture it may keep its first bytes.

/// Whether these bytes are no text: zeros, Ctrl+Z, a mark of sixteen-bit letters, or, in the first
/// 64 KB, more than one in a hundred of the controls that texts have no use for.
bool IsBinary(std::string_view content);
/// The same of a file, to its end. One that cannot be read is none: the client cannot read it
/// either.
bool HasBinaryContent(const std::string& path);

/// The usual endings of pictures, archives, documents and programs, parted by blanks.
extern const char* const UsualBinaryEndings;

/// Whether a file's name has one of these endings. @param endings parted by blanks or commas; upper
/// and lower case alike, "*." or "." may stand before each.
bool HasEnding(std::string_view name, std::string_view endings);

/// A file that the client is to keep byte for byte, unless the user says otherwise.
struct TBinaryChoice {
    std::string Path;
    bool IsBinary = true;
};

/// Those of the files that are binary by their ending or content.
std::vector<TBinaryChoice> FindBinary(const std::vector<std::string>& files,
                                      std::string_view endings);

/// All files below that are ticked, in folders that are.
std::vector<std::string> IncludedFiles(const tandrel::TWorkDirTree& items);

/// What tells an import which files it is to keep byte for byte.
struct TWrappers {
    std::vector<std::string> Patterns;
    std::vector<std::string> AlsoKept;  ///< Paths of texts that the patterns mean, too.
};

/// Patterns that mean all binary files, and texts only where the client cannot be told the
/// difference: of the same name in two folders, or because a command line is not long enough for
/// all names.
TWrappers WrappersFor(const std::vector<std::string>& binary, const std::vector<std::string>& text);

/// Has the client's records of a folder say that the file is kept byte for byte; its next command
/// finds them so. The file itself and its revision stay. Raises EInOutError when they cannot be
/// read or written, or do not have the file.
void RecordAsBinary(const std::string& folder, const std::string& name);

}  // namespace hosting
