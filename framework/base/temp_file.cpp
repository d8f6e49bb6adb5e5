#include "framework/base/temp_file.h"

#include <algorithm>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/names.h"
#include "framework/base/patience.h"
#include "framework/base/text.h"

namespace framework {

std::string NewTempFile(const std::string& prefix) {
    wchar_t folder[MAX_PATH + 1], path[MAX_PATH];
    const DWORD length = ::GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH ||
        !::GetTempFileNameW(folder, ToWide(prefix).c_str(), 0, path))
        throw EInOutError(::GetLastError(), prefix);
    std::string name = FromWide(path);
    if (!IsUnusable(name))
        return name;
    // The folder has the user's name, which need not be in the code page. Its short name is.
    const DWORD size = ::GetShortPathNameW(path, path, MAX_PATH);
    if (size > 0 && size < MAX_PATH)
        name = FromWide({path, size});
    if (IsUnusable(name))
        throw EInOutError(ERROR_INVALID_NAME, name);
    return name;
}

void SaveToFile(const std::string& path, std::string_view bytes) {
    const FileHandle file = TPatience().Open(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
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
