#include "framework/base/temp_file.h"

#include <algorithm>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/handle.h"

namespace framework {

std::string NewTempFile(const std::string& prefix) {
    char folder[MAX_PATH + 1], path[MAX_PATH];
    const DWORD length = ::GetTempPathA(sizeof folder, folder);
    if (length == 0 || length >= sizeof folder ||
        !::GetTempFileNameA(folder, prefix.c_str(), 0, path))
        throw EInOutError(::GetLastError(), prefix);
    return path;
}

void SaveToFile(const std::string& path, std::string_view bytes) {
    const FileHandle file(::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        throw EInOutError(::GetLastError(), path);
    constexpr std::size_t Block = std::size_t{1} << 20;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), Block));
        if (!FileFunctions().Write(file.Get(), bytes.data(), size, &written, nullptr))
            throw EInOutError(::GetLastError(), path);
        bytes.remove_prefix(written);
    }
}

}  // namespace framework
