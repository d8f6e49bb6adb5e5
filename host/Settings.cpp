#include "host/Settings.h"

#include <algorithm>

#include "framework/base/registry.h"
#include "framework/base/text.h"

namespace host {

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
    std::replace(name.begin(), name.end(), '\\', '/');
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
    if (registry.OpenKey(key, true))
        registry.WriteString(name, value);
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

}  // namespace host
