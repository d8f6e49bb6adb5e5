#pragma once

#include <string>

#include "cvs/Cvstempl.h"
#include "support/Files.h"
#include "support/Process.h"
#include "tests/support/Messages.h"

namespace tests {

/// A repository made by the real client, with a module "mod" (a.c, b.c, sub\c.c), and a folder for
/// working copies. Made once for a program and copied for each test.
class TSandbox {
public:
    TSandbox();

    support::TTempFolder Folder{"cvs"};
    const std::string Repository = Folder / "repository";

    /// Runs the bare client against the repository; returns what it says.
    std::string Ask(const std::string& arguments) const;
    /// Runs the bare client in a folder below the sandbox; its exit code must be zero.
    std::string Client(const std::string& arguments, const std::string& folder) const;
    /// Checks the module out into a folder below the sandbox; returns the working copy's path.
    std::string CheckOut(const std::string& folder) const;

    std::string Read(const std::string& path) const { return support::ReadBytes(path); }
    void Write(const std::string& path, const std::string& text) const {
        support::WriteBytes(path, text);
    }
};

/// An object that is connected to a sandbox's repository and keeps its messages.
class TSandboxObject : public tandrel::TCvsObject {
public:
    explicit TSandboxObject(const TSandbox& sandbox);
    /// Works on a working copy.
    TSandboxObject(const TSandbox& sandbox, const std::string& workingCopy);

    TMessageLog Messages{*this};
};

/// Makes a file look changed, also in the second in which the client recorded it.
void Touch(const std::string& path);

/// A variable that describes the tests' password server; the test fails when there is none.
std::string Surroundings(const char* name);

/// Makes the object one of the tests' password server, which knows it once it has logged in.
void ConnectToServer(tandrel::TCvsObject& obj);

}  // namespace tests
