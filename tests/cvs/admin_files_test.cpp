// What a working copy tells about itself.

#include <gtest/gtest.h>

#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/Japanese.h"

namespace {

using namespace tandrel;

TEST(AdminFiles, TakesARootApart) {
    struct {
        const char* Line;
        bool HasMethod, IsLocal;
        TConnectionType Type;
        const char *User, *Server, *Path;
    } const cases[] = {
        {"C:\\repo", true, true, cnLocal, "", "", "C:\\repo"},
        {"/home/me@work/repo", true, true, cnLocal, "", "", "/home/me@work/repo"},
        {":local:C:\\repo", true, true, cnLocal, "", "", "C:\\repo"},
        {":pserver:me@host:/repo", true, false, cnPServer, "me", "host", "/repo"},
        {":pserver:me:secret@host:/repo", true, false, cnPServer, "me", "host", "/repo"},
        {":pserver:host:/repo", true, false, cnPServer, "", "host", "/repo"},
        {":pserver:me@host:2402/repo", true, false, cnPServer, "me", "host", "2402/repo"},
        {":ext:me@host:/repo", true, false, cnSSH, "me", "host", "/repo"},
        {":ext:me@host/repo", true, false, cnSSH, "me", "host", "/repo"},
        {":fork:/repo", true, true, cnLocal, "", "", "/repo"},
        {":gserver:me@host:/repo", true, false, cnLocal, "me", "host", "/repo"},
        {"::me@host:/repo", false, false, cnLocal, "me", "host", "/repo"},
        {":", false, false, cnLocal, "", "", ""},
        {":pserver", true, false, cnPServer, "", "", ""},
        {":pserver:@", true, false, cnPServer, "", "", ""},
        {"", true, true, cnLocal, "", "", ""},
    };
    for (const auto& [line, method, local, type, user, server, path] : cases) {
        const TRootLine root = ParseRootLine(line);
        EXPECT_EQ(root.HasMethod, method) << line;
        EXPECT_EQ(root.IsLocal, local) << line;
        EXPECT_EQ(root.ConnectionType, type) << line;
        EXPECT_EQ(root.User, user) << line;
        EXPECT_EQ(root.Server, server) << line;
        EXPECT_EQ(root.Path, path) << line;
    }
}

TEST(AdminFiles, TakesARootWithLettersOfTwoBytesApart) {
    const tests::Japanese letters;
    const TRootLine root = ParseRootLine(":pserver:\x83@me:\x83@@host:/r\x83@x");
    EXPECT_EQ(root.User, "\x83@me");
    EXPECT_EQ(root.Server, "host");
    EXPECT_EQ(ParseRootLine(":ext:host:/r\x83@x").Server, "host");
    TCvsObject obj;
    obj.SetCVSROOT("C:\\repo");
    obj.Set_Modulename("X");
    const std::string copy = "C:\\" + std::string(tests::Source);
    EXPECT_EQ(obj.Get_RepositoryPath(copy + "\\x\\a"), "C:\\repo\\x\\a");
    EXPECT_EQ(obj.Get_RepositoryPath(copy), "");
}

TEST(AdminFiles, RecognisesAWorkingCopy) {
    const tests::TSandbox sandbox;
    const std::string copy = sandbox.CheckOut("work");
    TCvsObject obj;
    EXPECT_FALSE(obj.GetIsVCSstored());
    obj.Set_WorkingDirectory(copy + "\\sub");
    EXPECT_TRUE(obj.IsVCSStoredFlag);
    EXPECT_EQ(obj.ConnectionType, cnLocal);
    EXPECT_EQ(obj.Path, sandbox.Repository);
    EXPECT_EQ(obj.CVSROOT(), sandbox.Repository);
    EXPECT_EQ(obj.Modulename(), "mod/sub");
    EXPECT_EQ(obj.WorkingDirectory(), copy + "\\sub");
    // Any file or folder of that name will not do.
    support::WriteBytes(sandbox.Folder / "plain\\CVS", "a file");
    obj.Set_WorkingDirectory(sandbox.Folder / "plain");
    EXPECT_FALSE(obj.IsVCSStoredFlag);
    framework::ForceDirectories(sandbox.Folder / "lower\\cvs");
    obj.Set_WorkingDirectory(sandbox.Folder / "lower");
    EXPECT_FALSE(obj.IsVCSStoredFlag);
}

TEST(AdminFiles, ComposesTheRootOfARemoteCopy) {
    const tests::TSandbox sandbox;
    const std::string copy = sandbox.Folder / "remote";
    support::WriteBytes(copy + "\\CVS\\Root", ":pserver:me:secret@host:2402/repo\n");
    support::WriteBytes(copy + "\\CVS\\Repository", "group/mod\r\n");
    TCvsObject obj;
    obj.Set_WorkingDirectory(copy);
    EXPECT_EQ(obj.CVSROOT(), ":pserver:me@host:2402/repo");
    EXPECT_EQ(obj.Modulename(), "group/mod");
    EXPECT_TRUE(obj.CVS_SystemDirectory("CVS") && !obj.CVS_SystemDirectory("cvs"));
    EXPECT_TRUE(obj.CVS_SystemFile(".CVSIGNORE"));
    EXPECT_EQ(obj.Get_RepositoryFileName("a.c", false) + obj.Get_RepositoryFileName("a", true),
              "a.c,va");
    // A method that is not named leaves the type as it is.
    support::WriteBytes(copy + "\\CVS\\Root", "::you@other:/repo\n");
    obj.Set_WorkingDirectory(copy);
    EXPECT_EQ(obj.CVSROOT(), ":pserver:you@other:/repo");
    support::WriteBytes(copy + "\\CVS\\Root", ":pserver:me@host:2402/repo\n");
    obj.Set_WorkingDirectory(copy);
    obj.Set_Modulename("mod");
    EXPECT_EQ(obj.Get_RepositoryPath("C:\\work\\MOD\\a.c"), ":pserver:me@host:2402/repo\\MOD\\a.c");
    EXPECT_EQ(obj.Get_RepositoryPath("C:\\work\\a.c"), "");
}

TEST(AdminFiles, TakesNothingFromTheFolderBefore) {
    const support::TTempFolder folder("before");
    struct {
        const char *Root, *Expected;
    } const cases[] = {
        {":pserver:host2:/repo2\r\n", ":pserver:host2:/repo2"},  // and no user
        {"", ""},
        {"\r\n", ""},
        {"C:\\repo\r\n", "C:\\repo"},
    };
    for (const auto& [root, expected] : cases) {
        TCvsObject obj;
        support::WriteBytes(folder / "one\\CVS\\Root", ":pserver:me@host:/repo\r\n");
        support::WriteBytes(folder / "two\\CVS\\Root", root);
        support::WriteBytes(folder / "two\\CVS\\Repository", "");
        obj.Set_WorkingDirectory(folder / "one");
        ASSERT_EQ(obj.CVSROOT(), ":pserver:me@host:/repo");
        obj.Set_WorkingDirectory(folder / "two");
        EXPECT_EQ(obj.CVSROOT(), expected);
        char variable[64] = "";
        ::GetEnvironmentVariableA("CVSROOT", variable, sizeof variable);
        EXPECT_STREQ(variable, expected) << "what a child would inherit";
        EXPECT_EQ(obj.Modulename(), "two");
    }
    // A part of this would be a root, too.
    TCvsObject obj;
    obj.Set_WorkingDirectory(folder / "one");
    support::WriteBytes(folder / "two\\CVS\\Root", "C:\\" + std::string(20000, 'x'));
    EXPECT_THROW(obj.Set_WorkingDirectory(folder / "two"), framework::EInOutError);
    EXPECT_EQ(obj.CVSROOT(), "");
    EXPECT_EQ(::GetEnvironmentVariableA("CVSROOT", nullptr, 0), 0u);
}

TEST(AdminFiles, FindsNamesInTheLogListInAnyCase) {
    TCvsObject obj;
    EXPECT_FALSE(CheckTagNameExists(obj, "REL"));
    EXPECT_EQ(obj.LogListA.Add("REL", "1.4", true), nullptr);
    EXPECT_EQ(obj.LogListA.Add("rel", "1.5", true), nullptr) << "another name";
    TLogClass* const known = obj.LogListA.Add("REL", "1.6", false);
    ASSERT_NE(known, nullptr);
    EXPECT_EQ(known->Value, "1.4");
    EXPECT_FALSE(known->IsLabel);
    EXPECT_TRUE(CheckTagNameExists(obj, "Rel"));
    EXPECT_FALSE(CheckTagNameExists(obj, "REL2"));
}

}  // namespace
