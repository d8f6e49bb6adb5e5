// The window that commits, with the real client, and what it knows about messages.

#include <gtest/gtest.h>

#include "hosting/RecentMessages.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/Japanese.h"
#include "tests/workbench/Projects.h"
#include "workbench/CommitForm.h"
#include "workbench/CommitMessage.h"

namespace {

using namespace tests;

TEST(Messages, AreSentWithoutRemarks) {
    EXPECT_EQ(MessageToSend("CVS: a\r\n one \r\n\r\nCVS:\r\nNo CVS: here\r\nCVS: end"),
              " one \r\n\r\nNo CVS: here\r\n");
    for (const std::string same : {"", "\n", "a", "\r\n\r\n b\nc\r\n", "cvs: small", "a\rb"})
        EXPECT_EQ(MessageToSend(same), same);
}

TEST(Messages, AreKnownToSayNothing) {
    const std::string asked = "BugId:\nReviewer: \nCVS: fill this in\n";
    for (const char* nothing : {"", " \r\n\t", "CVS: only\r\n", "BugId:\r\nReviewer:",
                                " BugId: \n\n"
                                "Reviewer:\n"})
        EXPECT_TRUE(IsUnfilled(nothing, asked)) << nothing;
    for (const char* something : {"BugId: 7\r\nReviewer:", "BugId:", "x"})
        EXPECT_FALSE(IsUnfilled(something, asked)) << something;
    EXPECT_FALSE(IsUnfilled("BugId:", ""));
}

TEST(Messages, AreDescribedByLineAndColumn) {
    const std::string fits(72, '\xE4'), over = fits + "x";
    EXPECT_EQ(DescribePlace("", 0), "Line 1, column 1");
    EXPECT_EQ(DescribePlace("ab\r\ncd", 5), "Line 2, column 2");
    EXPECT_EQ(DescribePlace(fits + "\r\nCVS: " + over, 99), "Line 2, column 26");
    EXPECT_EQ(DescribePlace("a\r\n" + fits + "\r\n" + over, 1),
              "Line 1, column 2: line 3 is longer than 72");
    EXPECT_EQ(DescribePlace(over + "\r\n" + over + "\n" + over, 0),
              "Line 1, column 1: line 1 is longer than 72, and 2 more");
    EXPECT_EQ(SummaryOf("\r\n CVS: x\r\n"), "CVS: x");
    EXPECT_EQ(SummaryOf("CVS: x\r\n\r\none\r\ntwo"), "one...");
    EXPECT_EQ(SummaryOf(over), over.substr(0, 60) + "...");
    const Japanese letters;
    EXPECT_EQ(DescribePlace("\x83\\\x83\\z", 4), "Line 1, column 3") << "letters, not bytes";
}

class LastMessages : public TwoFolders {};

TEST_F(LastMessages, AreKeptOnceAndByAllHosts) {
    TSettings another(Key, Folder / "data");
    TRecentMessages mine(Settings), theirs(another);
    EXPECT_TRUE(mine.All().empty());
    const std::string odd = "say \"what\"\r\n\r\n\\ %PATH% ; \xE4\xF6\xFC\t|,'\r\n";
    mine.Remember(odd);
    for (int i = 0; i < 30; ++i)
        (i % 2 == 0 ? mine : theirs).Remember("message " + std::to_string(i));
    EXPECT_EQ(mine.All().size(), TRecentMessages::MostKept);
    EXPECT_EQ(mine.All().back(), "message 10");
    theirs.Remember(odd);
    mine.Remember("message 20");
    mine.Remember("Message 20");
    const std::vector<std::string> all = theirs.All();
    ASSERT_EQ(all.size(), TRecentMessages::MostKept);
    EXPECT_EQ(all[0], "Message 20");
    EXPECT_EQ(all[1], "message 20");
    EXPECT_EQ(all[2], odd);
    EXPECT_EQ(std::ranges::count(all, "message 20"), 1);
    EXPECT_EQ(Settings.Names(Settings.MessagesKey()).size(), all.size());
}

// --- the window -------------------------------------------------------------------------------

class CommitWindow : public Projects {
protected:
    CommitWindow() {
        Sandbox.Write(Copy + "\\m.c", "m\r\n");
        Sandbox.Client("add m.c", Copy);
        Sandbox.Client("commit -m first", Copy);
        Answer(true);
        Change("a.c");
        Change("sub\\c.c");
    }
    void Change(const std::string& name, const std::string& text = "changed\r\n") const {
        Sandbox.Write(Copy + "\\" + name, text);
        Touch(Copy + "\\" + name);
    }
    static TCommitForm* Window() {
        const std::vector<TCommitForm*> open = support::OpenForms<TCommitForm>();
        EXPECT_LE(open.size(), 1u);
        return open.empty() ? nullptr : open.front();
    }
    /// Opens the window for the whole project.
    TCommitForm& Open() {
        Form.OpenProject(Copy);
        Pick(Form, "&Commit...");
        if (!Window())
            throw std::runtime_error("there is no window: " + Told());
        return *Window();
    }
    static TListView& Files() { return support::Part<TListView>(*Window(), "FileList"); }
    static std::string Message() { return TextOf(*Window(), "Message"); }
    static std::string Status(int part) {
        return support::Part<TStatusBar>(*Window(), "Status").PartText(part);
    }
    /// The rows: name, state, whether they are ticked.
    static std::string Rows() {
        std::string rows;
        for (int i = 0; i < Files().Count(); ++i) {
            const TListRow& row = Files().Row(i);
            EXPECT_EQ(row.SubItems.back(), row.Ticked ? "yes" : "no");
            rows += row.Caption + " " + row.SubItems[0] + (row.Ticked ? " x\n" : "\n");
        }
        return rows;
    }
    static void Tick(const std::string& name, bool ticked) {
        for (int i = 0; i < Files().Count(); ++i)
            if (Files().Row(i).Caption == name)
                return Files().SetTicked({i}, ticked);
        ADD_FAILURE() << "no " << name;
    }
    static void Press(WPARAM key, bool ctrl = false) {
        BYTE keys[256]{};
        keys[VK_CONTROL] = ctrl ? 0x80 : 0;
        ::SetKeyboardState(keys);
        ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1);
        Application().ProcessMessages();
        keys[VK_CONTROL] = 0;
        ::SetKeyboardState(keys);
    }
    /// What the newest revision of a file says, or all about it.
    std::string Log(const std::string& name) const {
        std::string log = Sandbox.Ask("rlog -N mod/" + name);
        std::erase(log, '\r');
        return log;
    }

    const TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
};

TEST_F(CommitWindow, TakeTheTickedFilesAndTheMessageAsItWasTyped) {
    Sandbox.Write(Copy + "\\n.c", "n\r\n");
    Sandbox.Write(Copy + "\\stray.c", "n\r\n");
    Sandbox.Client("add n.c", Copy);
    Sandbox.Client("remove -f b.c", Copy);
    ::DeleteFileA((Copy + "\\m.c").c_str());
    Open();
    EXPECT_EQ(Rows(),
              "a.c Changed x\nb.c Removed x\nm.c Missing\nn.c Added x\nsub\\c.c Changed x\n");
    EXPECT_EQ(Status(0), "4 of 5 files");
    EXPECT_TRUE(support::Part<TMemo>(*Window(), "Message").Focused());
    // The keyboard: to the last file, whose tick goes.
    for (int i = 0; i < 5; ++i)
        Press(VK_F8);
    EXPECT_EQ(Files().SelectedIndices(), std::vector<int>{4});
    Files().SetFocus();
    Press(VK_SPACE);
    EXPECT_EQ(Status(0), "3 of 5 files");
    const std::string message =
        "say \"what\" -m \"-m\r\n\r\n-m \\\\\" %PATH% ^& 'x' \xE4\xF6\xFC \\";
    support::Type(*Window(), "Message", message);
    Press(VK_RETURN, true);
    EXPECT_FALSE(Window()) << Told();
    std::string sent = message;
    std::erase(sent, '\r');
    for (const char* name : {"a.c", "b.c", "n.c"})
        ExpectIn(Log(name), "\n" + sent + "\n");
    EXPECT_EQ(Log("sub/c.c").find("what"), std::string::npos);
    EXPECT_EQ(TRecentMessages(Settings).All(), std::vector<std::string>{message});
    // What was chosen alone is offered, and what was committed is forgotten.
    Form.OpenProject(Copy);
    Select("a.c");
    Pick(Form, "&Commit...");
    EXPECT_EQ(Rows(), "m.c Missing\nsub\\c.c Changed x\n");
    EXPECT_EQ(Message(), "");
    EXPECT_EQ(support::Part<TComboBox>(*Window(), "Earlier").Item(1), "say \"what\" -m \"-m...");
    Press(VK_ESCAPE);
    EXPECT_FALSE(Window());
}

TEST_F(CommitWindow, LoseNothingWhenTheyAreRefused) {
    const std::string other = Sandbox.CheckOut("other");
    Sandbox.Write(other + "\\a.c", "theirs\r\n");
    Touch(other + "\\a.c");
    Sandbox.Client("commit -m theirs", other);
    Change("b.c", "mine\r\n");
    Open();
    Tick("b.c", false);
    support::Type(*Window(), "Message", "mine\r\nBugId: 9");
    support::Press(*Window(), "Commit");
    ASSERT_TRUE(Window()) << "it is not up to date";
    ExpectTold("Up-to-date check failed");
    EXPECT_NE(Status(2), "");
    const std::string rows = "a.c Changed x\nb.c Changed\nsub\\c.c Changed x\n";
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Message(), "mine\r\nBugId: 9");
    EXPECT_TRUE(TRecentMessages(Settings).All().empty());
    // There is one window for a project, and what is typed is there again when it was closed.
    Pick(Form, "&Commit...");
    EXPECT_EQ(Rows(), rows);
    support::Press(*Window(), "Close");
    EXPECT_FALSE(Window());
    Pick(Form, "&Close project");
    Open();
    EXPECT_EQ(Message(), "mine\r\nBugId: 9");
    support::Type(*Window(), "Message", "mine");
    EXPECT_TRUE(support::WaitUntil([&] {
        return Settings.Read(Settings.ProjectKey(Copy), "DRAFT", "") == "mine";
    })) << "it is kept before anybody closes it";
    // Two texts that nobody has put together are not ticked, and asked about.
    support::RunProcess("cvs -q update", Copy);
    support::Pick(*Window(), "Menu1", "&Refresh");
    EXPECT_EQ(Rows(), "a.c Conflict\nb.c Changed x\nsub\\c.c Changed x\n");
    support::Press(*Window(), "TickNone");
    support::Press(*Window(), "Commit");
    EXPECT_EQ(Status(2), "No file is ticked");
    Tick("a.c", true);
    Asked.clear();
    Answer(false);
    support::Press(*Window(), "Commit");
    ExpectIn(Asked, "\r\na.c\r\n");
    EXPECT_EQ(Log("a.c").find("mine"), std::string::npos);
    EXPECT_EQ(Rows(), "a.c Conflict x\nb.c Changed\nsub\\c.c Changed\n");
    Answer(true);
    Touch(Copy + "\\a.c");
    support::Press(*Window(), "Commit");
    EXPECT_FALSE(Window()) << Told();
    ExpectIn(Log("a.c"), "\nmine\n");
    EXPECT_EQ(Settings.Read(Settings.ProjectKey(Copy), "DRAFT", "none"), "none");
}

TEST_F(CommitWindow, GoOnlyWhereTheUserSaysYes) {
    Change("a.c", std::string("a\0b\x1A", 4));
    Sandbox.Write(Copy + "\\CVS\\Template", "BugId:\nCVS: fill it in\n");
    Open();
    EXPECT_EQ(Message(), "BugId:\r\nCVS: fill it in\r\n");
    Answer(false);
    support::Press(*Window(), "Commit");
    ExpectIn(Asked, "only what its template says");
    support::Type(*Window(), "Message", " \r\n");
    support::Press(*Window(), "Commit");
    ExpectIn(Asked, "The message is empty");
    support::Type(*Window(), "Message", "BugId: 7\r\nCVS: fill it in\r\n" + std::string(73, 'x'));
    EXPECT_EQ(Status(1), "Line 1, column 1: line 3 is longer than 72");
    // One would be damaged: he gives up.
    DialogFunctions().AskYesNoCancel = [](const std::string&, const std::string&) {
        return TAnswer::Cancel;
    };
    support::Press(*Window(), "Commit");
    ASSERT_TRUE(Window());
    EXPECT_EQ(Rows(), "a.c Changed x\nsub\\c.c Changed x\n");
    EXPECT_EQ(Log("sub/c.c").find("BugId"), std::string::npos);
    Answer(true);
    support::Press(*Window(), "Commit");
    EXPECT_FALSE(Window()) << Told();
    ExpectIn(Log("sub/c.c"), "\nBugId: 7\n" + std::string(73, 'x') + "\n----");
    // Earlier messages come in the place of a template, and behind what was typed.
    Change("b.c");
    Open();
    support::Choose(*Window(), "Earlier", 1);
    const std::string earlier = Message();
    EXPECT_TRUE(earlier.starts_with("BugId: 7\r\nCVS: fill it in\r\nxxx")) << earlier;
    support::Type(*Window(), "Message", "typed");
    for (int i = 0; i < 2; ++i)
        support::Choose(*Window(), "Earlier", 1);
    EXPECT_EQ(Message(), "typed\r\n" + earlier);
    support::Choose(*Window(), "Earlier", 0);
    EXPECT_EQ(Message(), "typed");
    // The other way, for who is used to it.
    support::Press(*Window(), "Close");
    ExpectForm("Options", [](TForm& form) {
        support::Check(form, "Input9");
        Click(form, "BitBtn1");
    });
    Pick(Form, "Optio&ns...");
    ExpectForm("CVS commit-step 1", [](TForm& form) { form.ModalResult = mrCancel; });
    Pick(Form, "&Commit...");
    EXPECT_FALSE(Window());
}

TEST_F(CommitWindow, AreOfManyFilesWithOneMessage) {
    std::vector<std::string> paths;
    const std::string folder = "a folder with a name of some length";
    for (int i = 0; i < 110; ++i) {
        const std::string name = std::string(100, 'n') + std::to_string(i);
        paths.push_back(Copy + "\\" + folder + "\\" + name);
        Sandbox.Write(paths.back(), "x\r\n");
    }
    Form.OpenProject(Copy);
    Form.Busily([&](TProject& project) { EXPECT_TRUE(project.Add(paths)); });
    Open();
    ASSERT_EQ(Files().Count(), 112);
    Tick("a.c", false);
    support::Type(*Window(), "Message", "many");
    support::Press(*Window(), "Commit");
    EXPECT_FALSE(Window()) << Told();
    EXPECT_EQ(support::RunProcess("cvs -n -q update", Copy).Output.find_first_of("A"),
              std::string::npos);
    ExpectIn(Log("sub/c.c"), "\nmany\n");
    EXPECT_EQ(Log("a.c").find("many"), std::string::npos);
}

}  // namespace
