#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "framework/api.h"
#include "framework/base/handle.h"

namespace framework {

/// Access to the values of one registry key at a time.
class FRAMEWORK_API TRegistry {
public:
    /// @param rootKey a predefined or opened key, which stays the caller's.
    explicit TRegistry(HKEY rootKey) : RootKey_(rootKey) {}

    /// Opens a key below the root for reading; false when it cannot be opened. The key opened
    /// before is closed in any case.
    bool OpenKeyReadOnly(const std::string& key);
    /// Opens a key for reading and writing, creating it if asked to; false when it cannot be.
    bool OpenKey(const std::string& key, bool canCreate);
    void CloseKey() { Key_.Reset(); }

    /// True when the open key has the value.
    bool ValueExists(const std::string& name) const;
    /// A string value of the open key, at most up to its first zero; raises ERegistryError when it
    /// is missing or not a string.
    std::string ReadString(const std::string& name) const;
    /// Writes a string value; raises ERegistryError when it cannot.
    void WriteString(const std::string& name, const std::string& value);

    /// True when the open key has the value and its type is binary.
    bool IsBinary(const std::string& name) const;
    /// All bytes of a binary value; raises ERegistryError when it is missing or of another type.
    std::string ReadBinary(const std::string& name) const;
    /// Writes a binary value in one piece; raises ERegistryError when it cannot.
    void WriteBinary(const std::string& name, std::string_view bytes);

private:
    std::string Read(const std::string& name, DWORD& type) const;
    void Write(const std::string& name, DWORD type, const char* bytes, std::size_t size);

    HKEY RootKey_;
    RegistryKey Key_;
};

}  // namespace framework
