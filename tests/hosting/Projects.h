#pragma once

#include <gtest/gtest.h>

#include <string>

#include "framework/base/files.h"
#include "framework/base/text.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/Process.h"
#include "tests/hosting/TestHost.h"
#include "tests/support/FormDriver.h"

namespace tests {

using namespace framework;
using namespace hosting;
using tandrel::TCvsObject;

/// A host without a window, with two folders to open: "one" and "two".
class Projects : public testing::Test {
protected:
    Projects() {
        support::WriteBytes(Folder / "one\\a.c", "a");
        support::WriteBytes(Folder / "two\\b.c", "b");
    }
    ~Projects() override { ::RegDeleteTreeA(HostRegistryKey, Key.c_str()); }

    /// Makes a folder the working copy of a repository's module.
    void Record(const std::string& folder, const std::string& root,
                const std::string& entries = "/a.c/1.1/dummy//\r\nD/sub////\r\n",
                const std::string& module = "one") const {
        support::WriteBytes(Folder / (folder + "\\CVS\\Root"), root + "\r\n");
        support::WriteBytes(Folder / (folder + "\\CVS\\Repository"), module + "\r\n");
        support::WriteBytes(Folder / (folder + "\\CVS\\Entries"), entries);
    }
    /// Runs the fake client in a project.
    bool Run(TProject& project, const std::string& arguments) const {
        return project.Operate([&](TCvsObject& cvs) {
            cvs.CvsExecutable = support::FakeClient();
            cvs.CommandLine = " " + arguments;
            cvs.Execute(Folder.Path());
            return cvs.ExitCode == 0;
        });
    }
    /// What was told has this in it.
    void ExpectTold(const std::string& text) const {
        EXPECT_NE(Host.Told.find(text), std::string::npos) << text << " is not in:\n" << Host.Told;
    }

    const support::TTempFolder Folder{"projects"};
    const std::string Key = "Software\\Tandrel Test " + std::to_string(::GetCurrentProcessId());
    TSettings Settings{Key, Folder / "data"};
    TTestHost Host;
};

}  // namespace tests
