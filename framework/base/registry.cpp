#include "framework/base/registry.h"

#include "framework/base/exceptions.h"

namespace framework {

namespace {

[[noreturn]] void Fail(const std::string& name, const std::string& why) {
    throw ERegistryError("Registry value \"" + name + "\": " + why);
}

void Check(LSTATUS status, const std::string& name) {
    if (status != ERROR_SUCCESS)
        Fail(name, SysErrorMessage(static_cast<unsigned long>(status)));
}

}  // namespace

bool TRegistry::OpenKeyReadOnly(const std::string& key) {
    return ::RegOpenKeyExA(RootKey_, key.c_str(), 0, KEY_READ, Key_.Receive()) == ERROR_SUCCESS;
}

bool TRegistry::OpenKey(const std::string& key, bool canCreate) {
    constexpr REGSAM Access = KEY_READ | KEY_WRITE;
    const LSTATUS status =
        canCreate ? ::RegCreateKeyExA(RootKey_, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                      Access, nullptr, Key_.Receive(), nullptr)
                  : ::RegOpenKeyExA(RootKey_, key.c_str(), 0, Access, Key_.Receive());
    return status == ERROR_SUCCESS;
}

bool TRegistry::ValueExists(const std::string& name) const {
    return Key_ && ::RegQueryValueExA(Key_.Get(), name.c_str(), nullptr, nullptr, nullptr,
                                      nullptr) == ERROR_SUCCESS;
}

std::string TRegistry::Read(const std::string& name, DWORD& type) const {
    std::string value;
    LSTATUS status = ERROR_MORE_DATA;
    // Somebody else may lengthen the value between the two questions.
    while (status == ERROR_MORE_DATA) {
        DWORD size = 0;
        Check(::RegQueryValueExA(Key_.Get(), name.c_str(), nullptr, &type, nullptr, &size), name);
        value.resize(size);
        status = ::RegQueryValueExA(Key_.Get(), name.c_str(), nullptr, &type,
                                    reinterpret_cast<BYTE*>(value.data()), &size);
        value.resize(size);
    }
    Check(status, name);
    return value;
}

void TRegistry::Write(const std::string& name, DWORD type, const char* bytes, std::size_t size) {
    Check(::RegSetValueExA(Key_.Get(), name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes),
                           static_cast<DWORD>(size)),
          name);
}

std::string TRegistry::ReadString(const std::string& name) const {
    DWORD type = REG_NONE;
    std::string value = Read(name, type);
    if (type != REG_SZ && type != REG_EXPAND_SZ)
        Fail(name, "not a text");
    // The stored text need not end in a zero.
    value.resize(value.find('\0') == std::string::npos ? value.size() : value.find('\0'));
    return value;
}

void TRegistry::WriteString(const std::string& name, const std::string& value) {
    Write(name, REG_SZ, value.c_str(), value.size() + 1);
}

bool TRegistry::IsBinary(const std::string& name) const {
    DWORD type = REG_NONE;
    return Key_ &&
           ::RegQueryValueExA(Key_.Get(), name.c_str(), nullptr, &type, nullptr, nullptr) ==
               ERROR_SUCCESS &&
           type == REG_BINARY;
}

std::string TRegistry::ReadBinary(const std::string& name) const {
    DWORD type = REG_NONE;
    std::string value = Read(name, type);
    if (type != REG_BINARY)
        Fail(name, "not binary");
    return value;
}

void TRegistry::WriteBinary(const std::string& name, std::string_view bytes) {
    Write(name, REG_BINARY, bytes.data(), bytes.size());
}

}  // namespace framework
