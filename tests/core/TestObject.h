#pragma once

#include <string>

#include "core/Customvcs.h"
#include "core/CvsExecute.h"
#include "core/Progress_frm.h"
#include "support/Process.h"
#include "tests/support/Messages.h"

namespace tests {

/// The abstract object with just enough body to run the fake client and to see what it is told.
class TTestObject : public tandrel::TCustomCvsObj {
public:
    TTestObject() { CvsExecutable = support::FakeClient(); }

    bool GetIsVCSstored() override { return false; }

    /// Runs the fake client with these arguments in the folder for temporary files.
    void Run(const std::string& arguments) {
        Messages.Clear();
        CommandLine = " " + arguments;
        Execute("C:\\");
    }

    TMessageLog Messages{*this};
};

}  // namespace tests
