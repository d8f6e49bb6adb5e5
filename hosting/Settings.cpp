#include "hosting/Settings.h"

#include <windows.h>
// After the system's types.
#include <shlobj.h>

#include <array>
#include <cstdint>
#include <cstdio>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/registry.h"
#include "framework/base/text.h"
#include "hosting/BinaryFiles.h"

namespace hosting {

using namespace framework;

namespace {

constexpr std::size_t MostRecent = 8;

std::string RecentName(std::size_t index) {
    return "Recent" + std::to_string(index);
}

}  // namespace

std::string TSettings::ProjectKey(const std::string& folder) const {
    // A key's name holds no backslash.
    std::string name = UpperCase(folder);
    ReplaceCharacter(name, '\\', '/');
    return Key_ + "\\Projects\\" + name;
}

std::string TSettings::Read(const std::string& key, const std::string& name,
                            const std::string& missing) const {
    TRegistry registry(HostRegistryKey);
    return registry.OpenKeyReadOnly(key) && registry.ValueExists(name) ? registry.ReadString(name)
                                                                       : missing;
}

void TSettings::Write(const std::string& key, const std::string& name, const std::string& value) {
    TRegistry registry(HostRegistryKey);
    if (!registry.OpenKey(key, true))
        throw ERegistryError("The registry key " + key + " cannot be opened for writing");
    registry.WriteString(name, value);
}

void TSettings::Delete(const std::string& key, const std::string& name) {
    RegistryKey opened;
    if (::RegOpenKeyExA(HostRegistryKey, key.c_str(), 0, KEY_SET_VALUE, opened.Receive()) ==
        ERROR_SUCCESS)
        ::RegDeleteValueA(opened.Get(), name.c_str());
}

std::vector<std::string> TSettings::Names(const std::string& key) const {
    std::vector<std::string> names;
    RegistryKey opened;
    if (::RegOpenKeyExA(HostRegistryKey, key.c_str(), 0, KEY_READ, opened.Receive()) !=
        ERROR_SUCCESS)
        return names;
    constexpr DWORD LongestName = 16384;
    std::vector<char> name(LongestName);
    for (DWORD i = 0, size = LongestName;
         ::RegEnumValueA(opened.Get(), i, name.data(), &size, nullptr, nullptr, nullptr, nullptr) ==
         ERROR_SUCCESS;
         ++i, size = LongestName)
        names.emplace_back(name.data(), size);
    return names;
}

std::string TSettings::BinaryEndings() const {
    return Read(Key_, "BinaryEndings", UsualBinaryEndings);
}

std::string TSettings::UserDataFolder() {
    std::array<char, MAX_PATH> folder{};
    // Without one there is still the folder for temporary files.
    if (FAILED(::SHGetFolderPathA(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                  SHGFP_TYPE_CURRENT, folder.data())))
        ::GetTempPathA(MAX_PATH, folder.data());
    return tandrel::SlashSep(folder.data(), "Tandrel");
}

std::string TSettings::ProjectFile(const std::string& kind, const std::string& folder) const {
    // A path is too long for a name, and holds what a name must not.
    std::uint64_t hash = 14695981039346656037u;
    for (const char c : UpperCase(folder))
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%08lx%08lx",
                  static_cast<unsigned long>(hash >> 32),
                  static_cast<unsigned long>(hash & 0xFFFFFFFFu));
    return Data_ + "\\" + kind + "\\" + ExtractFileName(folder) + " " + digits.data() + ".txt";
}

std::vector<std::string> TSettings::RecentProjects() const {
    std::vector<std::string> folders;
    for (std::size_t i = 0; i < MostRecent; ++i) {
        std::string folder = Read(Key_, RecentName(i), "");
        if (!folder.empty())
            folders.push_back(std::move(folder));
    }
    return folders;
}

void TSettings::WriteRecent(const std::vector<std::string>& folders) {
    for (std::size_t i = 0; i < MostRecent; ++i)
        Write(Key_, RecentName(i), i < folders.size() ? folders[i] : "");
}

void TSettings::Remember(const std::string& folder) {
    std::vector<std::string> folders = RecentProjects();
    std::erase_if(folders, [&](const std::string& other) { return SameText(other, folder); });
    folders.insert(folders.begin(), folder);
    WriteRecent(folders);
}

void TSettings::Forget(const std::string& folder) {
    std::vector<std::string> folders = RecentProjects();
    std::erase_if(folders, [&](const std::string& other) { return SameText(other, folder); });
    WriteRecent(folders);
}

}  // namespace hosting
