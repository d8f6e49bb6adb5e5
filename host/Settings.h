#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace host {

/// The root of all settings, the package's included.
inline const HKEY HostRegistryKey = HKEY_CURRENT_USER;

/// The host's own part of the registry, below which the package keeps its settings, too.
///
/// Two hosts may run: every change reads what is there first.
class TSettings {
public:
    /// @param key below HostRegistryKey.
    explicit TSettings(std::string key = "Software\\Tandrel Host") : Key_(std::move(key)) {}

    /// The key of a project's settings.
    std::string ProjectKey(const std::string& folder) const;
    /// The key of the user's tools.
    std::string ToolsKey() const { return Key_ + "\\Tools"; }

    /// The folders opened last, the latest first.
    std::vector<std::string> RecentProjects() const;
    /// Puts a folder to the front of them.
    void Remember(const std::string& folder);
    /// Takes a folder off them.
    void Forget(const std::string& folder);

    /// A value of a project; `missing` when there is none.
    std::string Read(const std::string& key, const std::string& name,
                     const std::string& missing) const;
    /// Does nothing when the key cannot be opened; raises framework::ERegistryError when the value
    /// cannot be written.
    void Write(const std::string& key, const std::string& name, const std::string& value);

private:
    void WriteRecent(const std::vector<std::string>& folders);

    std::string Key_;
};

}  // namespace host
