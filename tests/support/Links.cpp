#include "tests/support/Links.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "framework/base/handle.h"
#include "support/WaitUntil.h"

namespace tests {

namespace {

/// Runs one of the host's tools until the link is there, or is not.
// The system's own calls report success here without making a link, and delete what it leads to.
void Run(std::string command, const std::string& folder, const std::string& name, bool made) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    ASSERT_TRUE(::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                 folder.c_str(), &startup, &information));
    const framework::KernelHandle process(information.hProcess), thread(information.hThread);
    const std::string path = folder + "\\" + name;
    ASSERT_TRUE(support::WaitUntil([&] {
        return (::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES) == made;
    })) << path;
}

}  // namespace

void MakeLink(const std::string& folder, const std::string& name, const std::string& target) {
    Run("Z:\\bin\\ln -s " + target + " " + name, folder, name, true);
}

void RemoveLink(const std::string& folder, const std::string& name) {
    Run("Z:\\bin\\rm " + name, folder, name, false);
}

}  // namespace tests
