// Passwords are not shown, and left nowhere.

#include <cstdlib>
#include <cstring>

#include "hosting/PasswordMask.h"
#include "hosting/Trust.h"
#include "tests/cvs/Sandbox.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Japanese.h"
#include "tests/support/Unique.h"

namespace {

using namespace tests;
using support::ReadBytes;
using support::WriteBytes;

TEST(Passwords, AreNeverShown) {
    for (const auto& [text, masked] :
         {std::pair{"cvs -d :pserver:me:secret@host:/repo  login",
                    "cvs -d :pserver:me:***@host:/repo  login"},
          {":pserver:me:a@b:c@host:2401/repo", ":pserver:me:***@host:2401/repo"},
          {":pserver:me@host:/repo", ":pserver:me@host:/repo"},
          {":pserver:host:/repo of you@there", ":pserver:host:/repo of you@there"},
          {":ext:me:pw@host:/r and :pserver:you:x@h:/r",
           ":ext:me:***@host:/r and :pserver:you:***@h:/r"},
          {":pserver:me:a b/c;\"d\\@host:/r\r\nnext", ":pserver:me:***@host:/r\r\nnext"},
          {":PServer;proxy=x:me:pw@host:/r", ":PServer;proxy=x:me:***@host:/r"},
          {":sserver:me:pw@host:/r", ":sserver:me:***@host:/r"},
          {"a mail to me@host: nothing", "a mail to me@host: nothing"},
          {"12:30:00 me@host:/x C:\\a@b", "12:30:00 me@host:/x C:\\a@b"},
          {":pserver:", ":pserver:"}})
        EXPECT_EQ(MaskPasswords(text), masked);
    EXPECT_EQ(MaskPasswords("it is tops3cret", "tops3cret"), "it is ***");
    EXPECT_EQ(MaskPasswords("as it was", "as"), "as it was") << "too short to be told from words";
}

TEST(Passwords, AreNotShownInPiecesEither) {
    const std::string text = "root :pserver:me:pass word@host:/repo\r\nand topsecret, C:\\x: done";
    for (std::size_t cut = 1; cut < text.size(); ++cut)
        for (std::size_t second = cut; second < text.size(); second += 7) {
            TMaskedPieces pieces;
            std::string shown = pieces.Next(text.substr(0, cut), "topsecret");
            shown += pieces.Next(text.substr(cut, second - cut), "topsecret");
            shown += pieces.Next(text.substr(second), "topsecret");
            shown += pieces.Rest("topsecret");
            ASSERT_EQ(shown, "root :pserver:me:***@host:/repo\r\nand ***, C:\\x: done") << cut;
        }
    TMaskedPieces pieces;
    EXPECT_EQ(pieces.Next("CVS password: ", ""), "CVS password: ") << "a question is not held back";
}

TEST(Passwords, KnowLettersOfTwoBytes) {
    const Japanese letters;
    EXPECT_EQ(MaskPasswords(":pserver:\x83@me:pw@host:/r"), ":pserver:\x83@me:***@host:/r");
    EXPECT_EQ(CutPassword(":pserver:me:pw@host:/r\x83@x"), ":pserver:me@host:/r\x83@x");
    EXPECT_EQ(CutPassword(":pserver:me@host:/r\x83@x"), ":pserver:me@host:/r\x83@x");
    EXPECT_TRUE(IsPlainRoot(":pserver:me@host:/r\x83@x"));
    EXPECT_FALSE(IsPlainRoot(":ext:a\x83@-oProxyCommand=x@host:/r"));
    // What is held back begins like a password, with the second half of a letter.
    TMaskedPieces pieces;
    EXPECT_EQ(pieces.Next("a\x83X", "Xsecret"), "a");
    EXPECT_EQ(pieces.Next("b", "Xsecret"), "\x83Xb");
}

/// All files below a folder.
std::string FilesBelow(const std::string& folder) {
    std::string all;
    TFileSearch search(folder + "\\*.*", faAnyFile);
    for (TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        const std::string path = folder + "\\" + entry.Name;
        all += entry.IsDirectory() ? FilesBelow(path) : ReadBytes(path) + "\n";
    }
    return all;
}

std::string WholeEnvironment() {
    std::string all;
    const LPCH block = ::GetEnvironmentStringsA();
    for (const char* at = block; *at; at += std::strlen(at) + 1)
        if (!std::string_view(at).starts_with("TANDREL_"))
            all += std::string(at) + "\n";
    ::FreeEnvironmentStringsA(block);
    return all;
}

TEST_F(Projects, LeaveNoPasswordAnywhere) {
    const std::string password = Surroundings("TANDREL_PSERVER_PASSWORD");
    TProject project(Host, Settings, Folder / "one");
    TCvsObject& cvs = project.Cvs();
    cvs.ConnectionType = tandrel::cnPServer;
    cvs.Server = "127.0.0.1";
    cvs.UserName = Surroundings("TANDREL_PSERVER_USER");
    cvs.Path = Surroundings("TANDREL_PSERVER_PORT") + Surroundings("TANDREL_PSERVER_PATH");
    std::string commands;
    const auto close = [&](const std::string& caption) {
        ExpectForm(caption, [&](TForm& form) {
            commands += cvs.CommandLine + TextOf(form, "Label1") + "\n";
            Click(form, "BitBtn1");
        });
    };
    for (const std::string& typed : {"wrong " + password, password}) {
        ExpectForm("CVS login -step 1", [&](TForm& form) {
            support::Type(support::StepOf(form), "Edit3", typed);
            support::Press(form, "BitBtn4");
            support::Press(form, "BitBtn1");
        });
        close("CVS login");
        EXPECT_EQ(project.Operate([](TCvsObject& obj) { return obj.Login(true); }),
                  typed == password)
            << Host.Told;
        EXPECT_EQ(WholeEnvironment().find(password), std::string::npos);
        // What the program starts next gets the environment as it is now.
        EXPECT_TRUE(Run(project, "surroundings CVSROOT"));
        cvs.CvsExecutable = "cvs";
    }
    const std::string module = "safe " + UniqueWord();
    WriteBytes(Folder / (module + "\\x.c"), "x");
    TProject placed(Host, Settings, Folder / module);
    TProjectState::Of(cvs).PutInto(placed.Cvs());
    close("CVS PlaceProject");
    EXPECT_TRUE(placed.Operate([](TCvsObject& obj) { return obj.PlaceProjectAccepted(); }))
        << Host.Told;
    close("CVS Pull Project ");
    EXPECT_TRUE(project.Operate([&](TCvsObject& obj) {
        obj.Password = password;  // as a wizard leaves it
        obj.SetCVSROOT(":pserver:" + obj.UserName + ":" + password + "@127.0.0.1:" + obj.Path);
        obj.Set_ProjectRoot(Folder / "pulled");
        obj.Set_Modulename(module);
        return obj.PullProjectAccepted();
    })) << Host.Told;
    EXPECT_TRUE(FileExists(Folder / ("pulled\\" + module + "\\x.c")));
    project.Save();
    placed.Save();
    ExpectForm("CVS logout", [](TForm& form) { support::Press(form, "BitBtn1"); });
    close("CVS logout");
    EXPECT_TRUE(project.Operate([](TCvsObject& obj) { return obj.Logout(true); })) << Host.Told;

    const auto registry = support::RunProcess("reg query \"HKCU\\" + Key + "\" /s", "C:\\");
    ExpectIn(registry.Output, "CVSROOT");
    for (const auto& [where, text] : {std::pair{"messages", Host.Told},
                                      {"commands and results", commands},
                                      {"the registry", registry.Output},
                                      {"files", FilesBelow(Folder.Path())},
                                      {"the environment", WholeEnvironment()}}) {
        EXPECT_EQ(text.find(password), std::string::npos) << "in " << where << ": " << text;
        EXPECT_FALSE(text.empty()) << where;
    }
}

TEST_F(Projects, TakeOldPasswordsOutOfTheRecords) {
    for (const char* folder : {"one", "one\\sub"})
        Record(folder, ":pserver:me:a@b@host:/repo");
    Host.Say(true);
    const TProject project(Host, Settings, Folder / "one");
    ExpectIn(Host.Asked, "hold a password");
    EXPECT_EQ(ReadBytes(Folder / "one\\sub\\CVS\\Root"), ":pserver:me@host:/repo\r\n");
    EXPECT_EQ(Host.Told.find("a@b"), std::string::npos);
}

}  // namespace
