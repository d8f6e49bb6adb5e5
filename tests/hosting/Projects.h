#pragma once

#include <string>

#include "framework/base/files.h"
#include "framework/base/text.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "tests/hosting/TestHost.h"
#include "tests/hosting/TwoFolders.h"
#include "tests/support/FormDriver.h"

namespace tests {

using namespace framework;
using namespace hosting;
using tandrel::TCvsObject;

/// A host without a window, with two folders to open.
class Projects : public TwoFolders {
protected:
    /// Runs the fake client in a project.
    bool Run(TProject& project, const std::string& arguments) const {
        return project.Operate([&](TCvsObject& cvs) {
            cvs.CvsExecutable = support::FakeClient();
            cvs.CommandLine = " " + arguments;
            cvs.Execute(Folder.Path());
            return cvs.ExitCode == 0;
        });
    }
    void ExpectTold(const std::string& text) const { ExpectIn(Host.Told, text); }

    TTestHost Host;
};

}  // namespace tests
