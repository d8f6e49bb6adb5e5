// Every operation that names files or a project, with names that a command line makes something
// else of.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "framework/base/files.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Unique.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using framework::FileExists;

/// How often a text holds another.
int Times(const std::string& text, const std::string& wanted) {
    int times = 0;
    for (std::size_t at = 0; (at = text.find(wanted, at)) != std::string::npos; at += wanted.size())
        ++times;
    return times;
}

std::string WithSlashes(std::string path) {
    std::ranges::replace(path, '\\', '/');
    return path;
}

class OddNames : public testing::TestWithParam<bool> {
protected:
    OddNames() {
        Obj.OutputListLimit = 1000;
        Obj.StrictQuoting = true;
        Obj.CommitMessage = "-f he said \"no\", 100% & 'why' \xF6 \\";
        if (GetParam()) {
            tests::ConnectToServer(Obj);
            EXPECT_TRUE(Obj.Login(false)) << Obj.Messages.All();
            Module += tests::UniqueWord();
        }
        framework::ForceDirectories(Work);
        for (const std::string& name : Names)
            Sandbox.Write(Sandbox.Folder / Module + "\\" + name, "first\r\n");
    }
    ~OddNames() override {
        if (GetParam())
            Obj.Logout(false);
    }

    /// What a bare client says about the repository. A name in the arguments is in quotes.
    std::string Ask(const std::string& arguments) const {
        const auto result = support::RunProcess("cvs -Q -d \"" + Obj.CVSROOT() + "\" " + arguments,
                                                Sandbox.Folder.Path());
        EXPECT_EQ(result.ExitCode, 0u) << arguments << result.Output;
        return result.Output;
    }
    std::string Read(const std::string& name) const { return Sandbox.Read(Copy() + "\\" + name); }
    void Write(const std::string& name, const std::string& text) const {
        Sandbox.Write(Copy() + "\\" + name, text);
    }
    std::string Copy() const { return Work + "\\" + Module; }

    void Select(const std::vector<std::string>& names) {
        Obj.FileItems.Clear();
        for (const std::string& name : names)
            Obj.FileItems.AddFile(Copy() + "\\" + name, Km_none);
    }
    /// Runs one operation; returns what was said.
    std::string Run(bool succeeds, const std::function<bool()>& operation) {
        Obj.Messages.Clear();
        EXPECT_EQ(operation(), succeeds) << Obj.CommandLine << "\n" << Obj.Messages.All();
        return Obj.Messages.All();
    }
    std::string Run(bool (TCustomCvsObj::*operation)(), bool succeeds = true) {
        return Run(succeeds, [&] { return (Obj.*operation)(); });
    }
    std::string Run(bool (TCustomCvsObj::*operation)(bool)) {
        return Run(true, [&] { return (Obj.*operation)(false); });
    }
    std::string Update() {
        tests::ExpectForm("CVS update",
                          [](framework::TForm& form) { tests::Click(form, "BitBtn1"); });
        return Run(&TCustomCvsObj::Update);
    }
    void ImportAndCheckOut();
    void Look();
    void Change();
    void Label();
    void Leave();

    tests::TSandbox Sandbox;
    tests::TSandboxObject Obj{Sandbox};
    // A path has no room for two names of 150 characters: the project's is one here, a file's
    // there.
    const std::size_t LongProject = GetParam() ? 127 : 0, LongFile = GetParam() ? 18 : 148;
    std::string Module = std::string(LongProject, 'm') + "it's 100% p\xF6 & co";
    const std::string Work = Sandbox.Folder / "w\xE4 & rk";
    const std::vector<std::string> Names{
        "it's 100% n\xF6w & odd.c", std::string(LongFile, 'l') + ".c", "-l.c",
        "[a]{b};,=~^`!@$HOME(#).c", "s\xFC\x62 5% & 'x'\\it's in.c",
    };
};

void OddNames::ImportAndCheckOut() {
    const std::string source = Sandbox.Folder / Module, bytes("\r\n\x1A\n$Id$\xFF", 9);
    Sandbox.Write(source + "\\-not [this] one.x", "private");
    Sandbox.Write(source + "\\p\xEFx 1.dat", bytes);
    Obj.Set_ProjectRoot(Sandbox.Folder.Path());
    Obj.Set_Modulename(Module);
    Obj.FileItems.AddIgnore(source + "\\-not [this] one.x");
    Obj.FileItems.AddExt("*.dat", false, Km_kb);
    Obj.VendorTag = "V";
    Obj.ReleaseTag = "START";
    Run(&TCustomCvsObj::Import);
    const std::string list = Ask("rls -R \"" + Module + "\"");
    for (const std::string& name : Names)
        EXPECT_NE(list.find(name.substr(name.find('\\') + 1)), std::string::npos) << name << list;
    EXPECT_EQ(list.find("this"), std::string::npos) << list;

    Obj.Set_ProjectRoot(Work);
    Run(&TCustomCvsObj::CheckOut);
    for (const std::string& name : Names)
        EXPECT_EQ(Read(name), "first\r\n") << name;
    EXPECT_EQ(Read("p\xEFx 1.dat"), bytes);
    Obj.Set_WorkingDirectory(Copy());
    EXPECT_EQ(Obj.Modulename(), Module);
}

void OddNames::Look() {
    const int all = static_cast<int>(Names.size());
    Select(Names);
    EXPECT_EQ(Times(Run(&TCustomCvsObj::Status), "Status: Up-to-date"), all);
    EXPECT_EQ(Times(Run(&TCustomCvsObj::Log), "Working file: "), all);
    EXPECT_EQ(Times(Run(&TCustomCvsObj::Annotate), ": first\r\n"), all);
    EXPECT_EQ(Times(Run(true, [&] { return Obj.RLog(); }), "RCS file: "), all + 1);
    Run(&TCustomCvsObj::watch);
    Obj.WatchCommand = wsAdd;
    Run(&TCustomCvsObj::watch);
    const std::string watchers = Run(&TCustomCvsObj::Watchers);
    Run(&TCustomCvsObj::Edit);
    const std::string editors = Run(&TCustomCvsObj::Editors);
    for (const std::string& name : Names) {
        EXPECT_NE(WithSlashes(watchers).find(WithSlashes(name) + "\t"), std::string::npos)
            << watchers;
        EXPECT_NE(WithSlashes(editors).find(WithSlashes(name) + "\t"), std::string::npos)
            << editors;
    }
    Run(&TCustomCvsObj::Unedit);
    EXPECT_EQ(Run(&TCustomCvsObj::Editors), " CVS command execute successful  with Exitcode 0\r\n");
    Run(&TCustomCvsObj::Admin);
    for (const std::string& name : Names)
        ::SetFileAttributesA((Copy() + "\\" + name).c_str(), FILE_ATTRIBUTE_NORMAL);
}

void OddNames::Change() {
    for (const std::string& name : Names)
        Write(name, "first\r\nsecond, and longer\r\n");
    Select(Names);
    EXPECT_EQ(Times(Run(&TCustomCvsObj::Diff, false), "> second, and longer"),
              static_cast<int>(Names.size()));
    EXPECT_NE(Obj.DiffFileEx(Copy() + "\\" + Names[0]).find("> second"), std::string::npos);
    // Servers search folders by patterns, and pass over those with brackets in their names.
    const std::string added = "-n\xE9w & 1%\\d'eep (1)\\n\xE8w 'file' & 1%.c";
    Write(added, "new\r\n");
    Obj.FileItems.Clear();
    Run(true, [&] { return Obj.AddFile(Copy() + "\\" + added); });
    Run(true, [&] { return Obj.RemoveFile(Copy() + "\\" + Names[2], true); });
    ASSERT_TRUE(FileExists(Copy() + "\\" + Names[3]));
    const std::string moved = Names[4] + " moved & gone.c";
    Run(true, [&] { return Obj.MoveFile(Copy() + "\\" + Names[4], Copy() + "\\" + moved, true); });
    std::vector<std::string> all = Names;
    all.insert(all.end(), {added, moved});
    Select(all);
    Run(&TCustomCvsObj::Commit);
    EXPECT_NE(Ask("rlog \"" + Module + "/" + Names[0] + "\"").find(Obj.CommitMessage),
              std::string::npos);
    Ask("checkout -d again \"" + Module + "\"");
    for (const std::string& name : {Names[0], Names[1], Names[3], moved, added})
        EXPECT_EQ(Sandbox.Read(Sandbox.Folder / "again\\" + name), Read(name)) << name;
    EXPECT_EQ(Read(moved), "first\r\nsecond, and longer\r\n");
    const std::string list = Ask("rlog -R \"" + Module + "\"");
    EXPECT_EQ(Times(list, ",v\r\n"), 8) << list;
    EXPECT_EQ(Times(list, "/Attic/"), 2) << list;
}

void OddNames::Label() {
    const std::vector<std::string> two{Names[0], Names[1]};
    Obj.TagName = "REL";
    Obj.TagDeleteBranch = false;
    Select(two);
    Run(&TCustomCvsObj::Create_Tag);
    const auto names = [this] { return Ask("rlog -h \"" + Module + "\""); };
    EXPECT_EQ(Times(names(), "REL: 1.2"), 2);
    Obj.StikyType = stTag;
    Obj.StikyTag = "START";
    Update();
    for (const std::string& name : two)
        EXPECT_EQ(Read(name), "first\r\n");
    Obj.DiffSpec.Kind = dctTwoRevision;
    Obj.DiffSpec.Rev1 = "START";
    Obj.DiffSpec.Rev2 = "HEAD";
    // This one has differences, which are no failure to the client here.
    EXPECT_GE(Times(Run(&TCustomCvsObj::Rdiff), "+ second"), 2);
    Obj.StikyType = stNone;
    Obj.ResetSticky = true;
    Update();
    EXPECT_EQ(Read(two[0]) + Read(two[1]),
              "first\r\nsecond, and longer\r\nfirst\r\nsecond, and longer\r\n");
    Run(&TCustomCvsObj::Del_Tag);
    EXPECT_EQ(Times(names(), "REL: 1.2"), 0);
    Obj.TagDelete = false;
    Obj.TagName = "BRANCH";
    Obj.LocalOnly = false;  // as the difference of one file left it
    Run(&TCustomCvsObj::Create_Rtag);
    EXPECT_GE(Times(names(), "BRANCH: 1."), 5);
    EXPECT_TRUE(Obj.ParseLogInfo());
    EXPECT_TRUE(CheckTagNameExists(Obj, "BRANCH"));
    Obj.TagDeleteBranch = true;
    Run(&TCustomCvsObj::Del_Rtag);
    EXPECT_EQ(Times(names(), "BRANCH: 1."), 0);
}

void OddNames::Leave() {
    Obj.FileItems.Clear();
    Obj.StikyType = stHead;
    Obj.UseTargetDir = true;
    Obj.TargetDir = "-exp\xF6rted & 'clean'";
    Run(&TCustomCvsObj::Export_cmd);
    EXPECT_EQ(Sandbox.Read(Work + "\\" + Obj.TargetDir + "\\" + Names[0]),
              "first\r\nsecond, and longer\r\n");
    Obj.ReleaseDelete = true;
    Obj.OnMessage = [this, before = Obj.OnMessage](framework::TObject* sender,
                                                   const std::string& said) {
        before(sender, said);
        // The command is built: nobody is to be asked, but the client is not to be told.
        if (said.starts_with("Release directory"))
            Obj.ReleaseForce = true;
    };
    Run(true, [&] { return Obj.ReleaseAccepted(); });
    EXPECT_FALSE(DirectoryExists(Copy()));
}

TEST_P(OddNames, WorkInEveryOperation) {
    ImportAndCheckOut();
    Look();
    Change();
    Label();
    Leave();
}

/// What a client makes of such names without the quotes.
TEST(PlainNames, PartAtBlanksOnly) {
    const tests::TSandbox sandbox;
    const std::string copy = sandbox.CheckOut("work"), whole = "100%&it's(n\xF6w).c";
    tests::TSandboxObject obj(sandbox, copy);
    for (const std::string& name : {whole, std::string(150, 'l'), std::string("a.c b.c")})
        sandbox.Write(copy + "\\" + name, "text\r\n");
    obj.FileItems.AddFile(copy + "\\" + whole, Km_none);
    obj.FileItems.AddFile(copy + "\\" + std::string(150, 'l'), Km_none);
    EXPECT_TRUE(obj.Add()) << obj.Messages.All();
    EXPECT_TRUE(obj.Commit(false)) << obj.Messages.All();
    EXPECT_EQ(sandbox.Ask("checkout -p \"mod/" + whole + "\""), "text\r\n");
    EXPECT_EQ(sandbox.Ask("checkout -p mod/" + std::string(150, 'l')), "text\r\n");

    // Two other files are meant instead.
    obj.FileItems.Clear();
    EXPECT_FALSE(obj.AddFile(copy + "\\a.c b.c")) << obj.Messages.All();
    obj.Messages.Clear();
    EXPECT_TRUE(obj.StatusFile(copy + "\\a.c b.c"));
    EXPECT_NE(obj.Messages.All().find("File: a.c "), std::string::npos) << obj.Messages.All();
    EXPECT_NE(obj.Messages.All().find("File: b.c "), std::string::npos);
    EXPECT_FALSE(obj.AddFile(copy + "\\-l"));
    // A module in two words is looked for as two modules.
    obj.Set_ProjectRoot(sandbox.Folder.Path());
    obj.Set_Modulename("mod it's");
    obj.Messages.Clear();
    EXPECT_FALSE(obj.CheckOut(false));
    EXPECT_NE(obj.Messages.All().find("cannot find module `it's'"), std::string::npos)
        << obj.Messages.All();
    EXPECT_TRUE(FileExists(sandbox.Folder / "mod\\a.c"));
}

INSTANTIATE_TEST_SUITE_P(, OddNames, testing::Bool(), [](const auto& info) {
    return std::string(info.param ? "OnAServer" : "Locally");
});

}  // namespace
