#include "tests/support/Links.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "framework/base/handle.h"
#include "tests/support/Messages.h"

namespace tests {

// The system's own call reports success here without making a link, so the host's tool makes it.
void MakeLink(const std::string& folder, const std::string& name, const std::string& target) {
    std::string command = "Z:\\bin\\ln -s " + target + " " + name;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    ASSERT_TRUE(::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                 folder.c_str(), &startup, &information));
    const framework::KernelHandle process(information.hProcess), thread(information.hThread);
    const std::string path = folder + "\\" + name;
    ASSERT_TRUE(PumpUntil(
        [&] { return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }))
        << path;
}

}  // namespace tests
