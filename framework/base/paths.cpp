#include "framework/base/paths.h"

#include <cstddef>

#include "framework/base/lead_bytes.h"

namespace framework {

namespace {

constexpr std::string_view Separators = "\\/";

/// Length of the part of a path that names the folder, the separator included.
std::size_t FolderLength(std::string_view path) {
    const std::size_t last = FindLastOf(path, "\\/:");
    return last == std::string_view::npos ? 0 : last + 1;
}

}  // namespace

std::string ExtractFileName(std::string_view path) {
    return std::string(path.substr(FolderLength(path)));
}

std::string ExtractFilePath(std::string_view path) {
    return std::string(path.substr(0, FolderLength(path)));
}

std::string ExtractFileDir(std::string_view path) {
    const std::string_view folder = path.substr(0, FolderLength(path));
    const std::size_t last = FindLastNotOf(folder, Separators);
    // Nothing but separators, or a drive: they are the root itself.
    if (last == std::string_view::npos)
        return std::string(folder);
    if (folder[last] == ':')
        return std::string(folder.substr(0, last + 2));
    return std::string(folder.substr(0, last + 1));
}

}  // namespace framework
