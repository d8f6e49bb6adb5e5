#pragma once

#include <gtest/gtest.h>

#include <string>

#include "hosting/Settings.h"
#include "support/Files.h"

namespace tests {

/// Two folders to open as projects, "one" and "two", and settings of the test's own.
class TwoFolders : public testing::Test {
protected:
    TwoFolders() {
        support::WriteBytes(Folder / "one\\a.c", "a");
        support::WriteBytes(Folder / "two\\b.c", "b");
    }
    ~TwoFolders() override { ::RegDeleteTreeA(hosting::HostRegistryKey, Key.c_str()); }

    /// Makes a folder the working copy of a repository's module.
    void Record(const std::string& folder, const std::string& root,
                const std::string& entries = "/a.c/1.1/dummy//\r\n",
                const std::string& module = "one") const {
        support::WriteBytes(Folder / (folder + "\\CVS\\Root"), root + "\r\n");
        support::WriteBytes(Folder / (folder + "\\CVS\\Repository"), module + "\r\n");
        support::WriteBytes(Folder / (folder + "\\CVS\\Entries"), entries);
    }
    /// A text has this in it.
    static void ExpectIn(const std::string& text, const std::string& part) {
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in:\n" << text;
    }

    const support::TTempFolder Folder{"projects"};
    const std::string Key = "Software\\Tandrel Test " + std::to_string(::GetCurrentProcessId());
    hosting::TSettings Settings{Key, Folder / "data"};
};

}  // namespace tests
