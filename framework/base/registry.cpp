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

std::string TRegistry::ReadString(const std::string& name) const {
    std::string value;
    DWORD type = REG_NONE;
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
    if (type != REG_SZ && type != REG_EXPAND_SZ)
        Fail(name, "not a text");
    // The stored text need not end in a zero.
    value.resize(value.find('\0') == std::string::npos ? value.size() : value.find('\0'));
    return value;
}

void TRegistry::WriteString(const std::string& name, const std::string& value) {
    Check(::RegSetValueExA(Key_.Get(), name.c_str(), 0, REG_SZ,
                           reinterpret_cast<const BYTE*>(value.c_str()),
                           static_cast<DWORD>(value.size() + 1)),
          name);
}

}  // namespace framework
