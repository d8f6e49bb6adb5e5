#pragma once

#include <string>
#include <string_view>

namespace support {

/// Writes a file, byte for byte; folders above it are made. Raises framework::EInOutError.
void WriteBytes(const std::string& path, std::string_view bytes);
/// Reads a file, byte for byte. Raises framework::EInOutError.
std::string ReadBytes(const std::string& path);

/// Deletes a folder with everything in it, read-only files too. Links are not walked through.
void DeleteFolder(const std::string& path);

/// A new, empty folder on drive C that is deleted with the object.
class TTempFolder {
public:
    /// @param name part of the folder's name. @param parent where to make it; the system's folder
    /// for temporary files when empty.
    explicit TTempFolder(const std::string& name, const std::string& parent = {});
    ~TTempFolder();
    TTempFolder(const TTempFolder&) = delete;
    TTempFolder& operator=(const TTempFolder&) = delete;

    /// Without a trailing backslash.
    const std::string& Path() const { return Path_; }
    /// The path of something in the folder.
    std::string operator/(const std::string& name) const { return Path_ + "\\" + name; }
    /// Leaves the folder where it is, for somebody to look at.
    void Keep() { Keep_ = true; }

private:
    std::string Path_;
    bool Keep_ = false;
};

}  // namespace support
