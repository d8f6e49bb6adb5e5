#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "framework/base/handle.h"
#include "tests/cvs/Sandbox.h"

namespace tests {

/// The bytes of all files below a folder, by their relative names.
using TSnapshot = std::map<std::string, std::string>;
TSnapshot Snapshot(const std::string& folder);

/// Opens a file so that nobody else can.
framework::FileHandle OpenForOneself(const std::string& path);

// What the disk does instead of the system's own functions.

inline std::string Victim;  ///< The calls for names that end like this fail.
BOOL WINAPI RefuseToMove(const char* from, const char* to, DWORD flags);
BOOL WINAPI CopyHalf(const char* from, const char* to, BOOL failIfExists);
BOOL WINAPI WriteNothing(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*);

/// An operation on a project as a whole, with the real client.
class WholeProject : public testing::Test {
protected:
    ~WholeProject() override { framework::FileFunctions() = {}; }

    /// The next form that tells how placing ended says so; it is closed.
    void ExpectResult(bool success) const;
    /// Acts when the user is told something that begins like this.
    void When(const std::string& text, std::function<void()> action) {
        Obj.OnMessage = [text, action, before = Obj.OnMessage](framework::TObject* sender,
                                                               const std::string& said) {
            before(sender, said);
            if (said.starts_with(text))
                action();
        };
    }
    bool WasSaid(const std::string& text) const {
        return Obj.Messages.All().find(text) != std::string::npos;
    }

    tests::TSandbox Sandbox;
    tests::TSandboxObject Obj{Sandbox};
};

/// A project with files of all kinds is placed.
class PlaceProject : public WholeProject {
protected:
    PlaceProject();

    /// Runs it; its form is to tell of a failure.
    void PlaceInVain() {
        ExpectResult(false);
        EXPECT_FALSE(Obj.PlaceProjectAccepted());
    }
    /// Each file is in the project or aside.
    void ExpectNothingLost() const;
    void ExpectUntouched() const {
        EXPECT_EQ(Snapshot(Project), Before);
        EXPECT_FALSE(framework::DirectoryExists(Project + "\\CVS"));
    }
    /// What the user reads when the files were moved aside.
    std::string MovedAside() const {
        return framework::Format("For directory(%s) created copy =  %s  \r\n", {Project, Backup});
    }

    const TSnapshot Files{
        {"main.c", "main\r\n"},
        {"lf.c", "line\nline\n"},
        {"mixed.c", "\r\na\nb\r\r\nlast"},
        {"keyword.c", "$Id$ $Revision$\r\n"},
        {"data.bin", std::string("\r\n\0\x1A\n\xFF$Id$", 10)},
        {"nothing.c", ""},
        {"read only.c", "mine\r\n"},
        {"hidden.c", "hidden\r\n"},
        {"gr\xFC\xDF e 100%.c", "\xE4\r\n"},
        {"main.o", "ignored by default"},
        {"sub\\private.x", "ignored\r\n"},
        {"out\\result.c", "in an ignored folder\r\n"},
        {"sub\\deep\\c.c", "c\r\n"},
    };
    const std::string Project = Sandbox.Folder / "pr\xF6 j", Backup = Project + ".precvs";
    TSnapshot Before;
};

}  // namespace tests
