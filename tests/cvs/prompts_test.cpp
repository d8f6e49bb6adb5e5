// The client's questions, and who answers them.

#include <gtest/gtest.h>

#include <utility>

#include "framework/base/files.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using tests::TSandboxObject;

class Prompts : public testing::Test {
protected:
    /// Runs the object's command of the operation, its question to be answered.
    static void Run(TCvsObject& obj) {
        obj.AnswerPrompts = true;
        obj.CommandLine.clear();
        ASSERT_TRUE(obj.ParseCommand());
        obj.Execute(obj.Get_CurrentProcDirectory());
    }
    /// The client's next output, holding this text, is put to the user, who presses the button.
    static void ExpectQuestion(const std::string& text, const std::string& button) {
        tests::ExpectForm("CVS confirmation", [text, button](framework::TForm& form) {
            EXPECT_EQ(tests::TextOf(form, "Label2"),
                      "CVS is requirring you answer \"Yes\" or \"No\"");
            EXPECT_NE(tests::TextOf(form, "Label1").find(text), std::string::npos)
                << tests::TextOf(form, "Label1");
            tests::Click(form, button);
        });
    }

    tests::TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
};

TEST_F(Prompts, ReleaseAsksTheUser) {
    TSandboxObject obj(Sandbox, Copy);
    obj.TCustomCvsObj::Release();
    obj.ReleaseDelete = true;
    const std::string question = "Are you sure you want to release (and delete) directory `mod': ";
    ExpectQuestion(question, "BitBtn2");
    // As long as answers are asked for, every piece of output counts as a question. A host that
    // wants only the first one put clears AnswerPrompts when it gets that output.
    ExpectQuestion("aborted by user choice", "BitBtn2");
    Run(obj);
    EXPECT_TRUE(DirectoryExists(Copy)) << "the answer was No";
    EXPECT_NE(obj.Messages.All().find("***Enter Yes/No***\r\n"), std::string::npos);

    ExpectQuestion(question, "BitBtn1");
    obj.OnMessage = [&](framework::TObject*, const std::string& text) {
        if (text.find(question) != std::string::npos)
            obj.AnswerPrompts = false;
    };
    Run(obj);
    EXPECT_FALSE(DirectoryExists(Copy)) << "the answer was Yes";
}

TEST_F(Prompts, ReleaseByForceAsksNobody) {
    TSandboxObject obj(Sandbox, Copy);
    obj.TCustomCvsObj::Release();
    obj.ReleaseForce = true;  // without ReleaseDelete the client is not told of it
    Run(obj);
    EXPECT_EQ(obj.ExitCode, 0);
    EXPECT_NE(obj.Messages.All().find("***Enter Yes/No***\r\n"), std::string::npos);
    EXPECT_EQ(obj.Messages.All().find("aborted"), std::string::npos) << obj.Messages.All();
}

TEST_F(Prompts, OtherOperationsGetAnEmptyLine) {
    TSandboxObject obj(Sandbox);
    std::string answer = "as it came";
    obj.Operation = otUpdate;
    obj.ProcessConfirm("sure?", answer);
    EXPECT_EQ(answer, "as it came\r\n");
    EXPECT_EQ(obj.Messages.All(), "");
}

TEST_F(Prompts, OnlyAPasswordServerKnowsLogins) {
    TSandboxObject obj(Sandbox, Copy);
    EXPECT_FALSE(obj.Login(false) || obj.Logout(false));
    EXPECT_EQ(obj.Messages.All(),
              "Loging in is required for pserver  authentication only\r\n"
              "Logout is required for pserver  authentication only\r\n");
}

TEST_F(Prompts, LoginAnswersThePasswordServer) {
    TSandboxObject obj(Sandbox);
    tests::ConnectToServer(obj);
    const std::string password = std::exchange(obj.Password, "a wrong one");
    std::string events;
    obj.OnLogin = [&](TCvsObject&) { events += "in "; };
    obj.OnLogout = [&](TCvsObject&) { events += "out "; };
    EXPECT_FALSE(obj.Login(false));
    EXPECT_FALSE(obj.AnswerPrompts);
    EXPECT_NE(obj.Messages.All().find("authorization failed"), std::string::npos)
        << obj.Messages.All();
    obj.Password = password;
    obj.Messages.Clear();
    EXPECT_TRUE(obj.Login(false)) << obj.Messages.All();
    EXPECT_NE(obj.Messages.All().find("CVS password: "), std::string::npos);

    // From here on the server lets the client in without asking.
    framework::ForceDirectories(Sandbox.Folder / "remote");
    obj.Set_ProjectRoot(Sandbox.Folder / "remote");
    obj.Set_Modulename("CVSROOT");
    EXPECT_TRUE(obj.CheckOut(false)) << obj.Messages.All();
    EXPECT_TRUE(framework::FileExists(Sandbox.Folder / "remote\\CVSROOT\\modules"));

    EXPECT_TRUE(obj.Logout(false));
    EXPECT_EQ(events, "in in out ");
    obj.Messages.Clear();
    EXPECT_FALSE(obj.CheckOut(false)) << "logged out";
}

}  // namespace
