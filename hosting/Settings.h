#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace hosting {

/// The root of all settings, the package's included.
inline const HKEY HostRegistryKey = HKEY_CURRENT_USER;

/// The host's own part of the registry, below which the package keeps its settings, too.
///
/// Two hosts may run: every change reads what is there first.
class TSettings {
public:
    /// @param key below HostRegistryKey.
    /// @param data the folder for files of the host's own; made when the first one is.
    explicit TSettings(std::string key = "Software\\Tandrel Host",
                       std::string data = UserDataFolder())
        : Key_(std::move(key)), Data_(std::move(data)) {}

    /// Where this user's programs keep their data, and there the host's.
    static std::string UserDataFolder();

    /// The key of a project's settings.
    std::string ProjectKey(const std::string& folder) const;
    /// The key of the user's tools.
    std::string ToolsKey() const { return Key_ + "\\Tools"; }

    /// The key of how the window is arranged.
    std::string WindowKey() const { return Key_ + "\\Window"; }

    /// The client that the user has chosen, with its folder; empty when it is to be looked for.
    std::string Client() const { return Read(Key_, "Client", ""); }
    void SetClient(const std::string& path) { Write(Key_, "Client", path); }

    /// The endings of files that are kept byte for byte whatever is in them, parted by blanks; the
    /// usual ones until the user has changed them.
    std::string BinaryEndings() const;
    void SetBinaryEndings(const std::string& endings) { Write(Key_, "BinaryEndings", endings); }

    /// The key of what the last commits said.
    std::string MessagesKey() const { return Key_ + "\\Messages"; }

    /// Whether commits ask with the package's own dialogs.
    bool CommitsByPackage() const { return Read(Key_, "CommitsByPackage", "") == "1"; }
    void SetCommitsByPackage(bool byPackage) {
        Write(Key_, "CommitsByPackage", byPackage ? "1" : "");
    }

    /// The folders opened last, the latest first.
    std::vector<std::string> RecentProjects() const;
    /// Puts a folder to the front of them.
    void Remember(const std::string& folder);
    /// Takes a folder off them.
    void Forget(const std::string& folder);

    /// A value of a project; `missing` when there is none.
    std::string Read(const std::string& key, const std::string& name,
                     const std::string& missing) const;
    /// Raises framework::ERegistryError when the value cannot be written.
    void Write(const std::string& key, const std::string& name, const std::string& value);
    /// The names of a key's values, in no order.
    std::vector<std::string> Names(const std::string& key) const;
    /// Takes a value away; one that is not there is no error.
    void Delete(const std::string& key, const std::string& name);

    /// A file of the host's own about a project, in the folder for the user's data. @param kind the
    /// folder it is in.
    std::string ProjectFile(const std::string& kind, const std::string& folder) const;
    /// A folder in the folder for the user's data.
    std::string DataFolder(const std::string& kind) const { return Data_ + "\\" + kind; }

private:
    void WriteRecent(const std::vector<std::string>& folders);

    std::string Key_;
    std::string Data_;
};

}  // namespace hosting
