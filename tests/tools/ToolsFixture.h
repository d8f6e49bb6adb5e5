#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>

#include "framework/base/exceptions.h"
#include "tools/Tools_obj.h"

namespace tests {

/// What the error says that an action raises.
inline std::string MessageOf(const std::function<void()>& action) {
    try {
        action();
        return "no error";
    } catch (const framework::Exception& error) {
        return error.what();
    }
}

/// The tools, with a registry key of their own that is deleted in the end.
class TToolsTest : public testing::Test {
protected:
    TToolsTest() {
        Tools.RootKey = HKEY_CURRENT_USER;
        Tools.Keyname = "Software\\TandrelTest\\Tools" + std::to_string(::GetCurrentProcessId());
    }
    ~TToolsTest() override {
        ::RegDeleteKeyA(HKEY_CURRENT_USER, Tools.Keyname.c_str());
        ::RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\TandrelTest");
    }

    void Store(const std::string& bytes, DWORD type = REG_BINARY) {
        ::RegSetKeyValueA(HKEY_CURRENT_USER, Tools.Keyname.c_str(), "TOOLSCOMMANDS", type,
                          bytes.data(), static_cast<DWORD>(bytes.size()));
    }
    std::string Stored() const {
        std::string bytes(1 << 20, '\0');
        auto size = static_cast<DWORD>(bytes.size());
        const bool found =
            ::RegGetValueA(HKEY_CURRENT_USER, Tools.Keyname.c_str(), "TOOLSCOMMANDS",
                           RRF_RT_REG_BINARY, nullptr, bytes.data(), &size) == ERROR_SUCCESS;
        return found ? bytes.substr(0, size) : "nothing";
    }

    tandrel::TToolsClass Tools;
};

}  // namespace tests
