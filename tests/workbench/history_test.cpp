// The window with a file's or a project's past, on histories that the real client has made.

#include <gtest/gtest.h>

#include "framework/base/system_time.h"
#include "framework/ui/application.h"
#include "framework/ui/clipboard.h"
#include "support/Drive.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/hosting/TwoFolders.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Looks.h"
#include "tests/workbench/TestViews.h"
#include "workbench/HistoryForm.h"

namespace {

using namespace tests;
using namespace framework;
using namespace hosting;
using namespace workbench;
using support::Part;

class HistoryForms : public TwoFolders {
protected:
    HistoryForms() {
        Commit("both", "a.c sub\\c.c");
        Client("-Q tag FIRST");
        Client("-Q tag -b TWIG");
        ::DeleteFileA((Copy + "\\b.c").c_str());
        Client("-Q remove b.c");
        Commit("Second on the trunk\n\nwith more to say", "a.c b.c");
        Client("-Q update -r TWIG a.c sub");
        Commit("twig", "a.c sub\\c.c");
        Client("-Q update -A a.c sub");
    }
    void Client(const std::string& arguments) const { Sandbox.Client(arguments, Copy); }
    /// Adds a line to the files, those that are there, and commits them.
    void Commit(const std::string& message, const std::string& files) const {
        for (std::size_t at = 0; at < files.size();) {
            const std::size_t end = std::min(files.find(' ', at), files.size());
            const std::string path = Copy + "\\" + files.substr(at, end - at);
            if (::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES)
                Sandbox.Write(path, Sandbox.Read(path) + message.substr(0, 6) + "\r\n");
            at = end + 1;
        }
        Sandbox.Write(Sandbox.Folder / "message", message);
        Client("-Q commit -F \"" + (Sandbox.Folder / "message") + "\" " + files);
    }

    /// The rows of a list: the caption and some of the columns behind it.
    static std::vector<std::string> Rows(const TForm& form, const std::string& name,
                                         const std::vector<int>& columns) {
        auto& list = Part<TListView>(form, name);
        std::vector<std::string> rows;
        for (int i = 0; i < list.Count(); ++i) {
            rows.push_back(list.Row(i).Caption);
            for (const int column : columns)
                rows.back() += "|" + list.Row(i).SubItems[static_cast<std::size_t>(column)];
        }
        return rows;
    }
    static void Select(const TForm& form, const std::string& name, const std::vector<int>& rows) {
        auto& list = Part<TListView>(form, name);
        list.Select(-1);
        for (const int row : rows)
            list.Select(row);
    }
    static std::string Status(const TForm& form) {
        return Part<TStatusBar>(form, "Status").PartText(0);
    }

    const TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
    TTestViews Views{Settings, Copy};
};

using Lines = std::vector<std::string>;

TEST_F(HistoryForms, ShowTheRevisionsOfAFile) {
    THistoryForm form(Views, {Copy + "\\a.c"});
    ASSERT_TRUE(form.Load()) << Views.Window.Told;
    form.Show();
    EXPECT_EQ(form.Text(), "History of a.c");
    EXPECT_EQ(Status(form), "5 revisions");
    EXPECT_EQ(Rows(form, "List", {1, 4, 5, 6, 7}),
              (Lines{"1.2.2.1|TWIG|Exp|+1 -0|TWIG|twig", "1.3||Exp|+1 -0||Second on the trunk",
                     "1.2||Exp|+1 -0|FIRST|both", "1.1.1.1|VENDOR|Exp|+0 -0|START, VENDOR|first",
                     "1.1||Exp|||Initial revision"}));
    EXPECT_EQ(TextOf(form, "Message"), "twig") << "the newest is chosen";
    Select(form, "List", {1});
    EXPECT_EQ(TextOf(form, "Message"), "Second on the trunk\r\n\r\nwith more to say");
    EXPECT_EQ(Rows(form, "Details", {}), Lines{});
    Select(form, "List", {3});
    EXPECT_EQ(Rows(form, "Details", {0}), (Lines{"START|label", "VENDOR|branch, its end"}));

    // One row with the one it was made from, the first of all with nothing, two with each other.
    for (const auto& [rows, wish, line] :
         {std::tuple{std::vector{0}, "compare a.c: 1.2 and 1.2.2.1\n", "+twig"},
          {{1}, "compare a.c: 1.2 and 1.3\n", "+Second"},
          {{0, 2}, "compare a.c: 1.2 and 1.2.2.1\n", "+twig"},
          {{1, 4}, "compare a.c: 1.1 and 1.3\n", "+both"}}) {
        Select(form, "List", rows);
        support::Press(form, "Compare");
        EXPECT_EQ(Views.Wished(), wish);
        ExpectIn(Views.Difference, line);
    }
    Select(form, "List", {4});
    support::Press(form, "Compare");
    ExpectIn(Views.Wished(), " and 1.1\n");
    Select(form, "List", {0, 1, 2});
    EXPECT_FALSE(Part<TButton>(form, "Compare").Enabled());
    EXPECT_FALSE(Part<TButton>(form, "CompareWorking").Enabled());
    Select(form, "List", {2});
    support::Press(form, "CompareWorking");
    EXPECT_EQ(Views.Wished(), "compare a.c: 1.2 and working copy\n");
    ExpectIn(Views.Difference, "+Second");
    support::Press(form, "Annotate");
    support::Press(form, "Open");
    EXPECT_EQ(Views.Wished(), "annotate a.c 1.2\nopen a.c\n");
    support::Press(form, "Get");
    EXPECT_EQ(Views.Wished(), "text a.c 1.2 in \none\r\ntwo\r\nboth\r\n");
    support::Press(form, "Copy");
    const std::string copied = TextOfClipboard(form.Handle());
    EXPECT_TRUE(copied.starts_with("a.c 1.2  20") && copied.ends_with("\r\nboth\r\n")) << copied;

    // A label on an older revision shows at once, with the same row chosen.
    ExpectForm("Label", [](TForm& asked) {
        support::Type(asked, "Input1", " LATER ");
        Click(asked, "BitBtn1");
    });
    support::Press(form, "Label");
    EXPECT_EQ(Part<TListView>(form, "List").SelectedIndices(), std::vector{2});
    EXPECT_EQ(Rows(form, "Details", {0}), (Lines{"LATER|label", "FIRST|label"}));
    ExpectForm("Label", [](TForm& asked) {
        support::Type(asked, "Input1", "no label!");
        Click(asked, "BitBtn1");
    });
    support::Press(form, "Label");
    ExpectIn(Status(form), "could not be set");
}

TEST_F(HistoryForms, FindWhatIsLookedFor) {
    THistoryForm form(Views, {Copy + "\\a.c"});
    ASSERT_TRUE(form.Load()) << Views.Window.Told;
    form.Show();
    auto& list = Part<TListView>(form, "List");
    Select(form, "List", {2});
    const auto shows = [&](const Lines& rows) {
        return support::WaitUntil([&] { return Rows(form, "List", {}) == rows; });
    };
    support::Type(form, "Search", "MORE to");
    EXPECT_TRUE(shows({"1.3"}));
    EXPECT_EQ(Status(form), "1 of 5 revisions");
    EXPECT_EQ(TextOf(form, "Message").substr(0, 6), "Second");
    support::Type(form, "Search", "fir");
    EXPECT_TRUE(shows({"1.2", "1.1.1.1"})) << "a label, a message";
    // Whoever presses Enter sees it at once, and is in the list.
    Part<TEdit>(form, "Search").SetText("no such");
    Part<TEdit>(form, "Search").SetFocus();
    PressKey(form, VK_RETURN);
    EXPECT_TRUE(support::WaitUntil([&] { return list.Focused(); }));
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(TextOf(form, "Message"), "");
    EXPECT_FALSE(Part<TButton>(form, "Copy").Enabled());
    support::Type(form, "Search", "");
    EXPECT_TRUE(shows({"1.2.2.1", "1.3", "1.2", "1.1.1.1", "1.1"}));
    PressKey(form, VK_RETURN);
    EXPECT_TRUE(support::WaitUntil([&] { return !Views.Difference.empty(); }));
    EXPECT_EQ(Views.Wished(), "compare a.c: 1.2 and 1.2.2.1\n");

    EXPECT_FALSE(Part<TDateTimePicker>(form, "From").Enabled());
    support::Check(form, "Since");
    EXPECT_EQ(list.Count(), 5) << "all of it is from today";
    auto& from = Part<TDateTimePicker>(form, "From");
    from.SetDate(Now() + 2);
    from.OnChange(&from);
    EXPECT_TRUE(shows({}));
    support::Check(form, "Since", false);
    EXPECT_EQ(list.Count(), 5);
}

TEST_F(HistoryForms, ShowTheCommitsOfAProject) {
    THistoryForm form(Views, {});
    ASSERT_TRUE(form.Load()) << Views.Window.Told;
    form.Show();
    EXPECT_EQ(form.Text(), "History of mod");
    EXPECT_EQ(Status(form), "4 commits");
    EXPECT_EQ(Rows(form, "List", {1, 2, 3}).size(), 4u);
    EXPECT_TRUE(Rows(form, "List", {1, 2, 3})[0].ends_with("|TWIG|a.c, sub/c.c|twig"));
    EXPECT_TRUE(Rows(form, "List", {1, 2, 3})[3].ends_with("|VENDOR|3 files|first"));
    Select(form, "List", {1});
    EXPECT_EQ(Rows(form, "Details", {0, 1}), (Lines{"a.c|1.3|changed", "b.c|1.2|removed"}));
    // Both files at once by the moments before and after, one of them by its numbers.
    support::Press(form, "Compare");
    ExpectIn(Views.Wished(), "compare a.c b.c: 20");
    ExpectIn(Views.Difference, "+Second");
    EXPECT_EQ(Views.Difference.find("+both"), std::string::npos) << Views.Difference;
    EXPECT_FALSE(Part<TButton>(form, "Annotate").Enabled() && Views.Difference.empty());
    Select(form, "Details", {0});
    support::Press(form, "Compare");
    support::Press(form, "Annotate");
    support::Press(form, "Get");
    EXPECT_EQ(Views.Wished(),
              "compare a.c: 1.2 and 1.3\nannotate a.c 1.3\n"
              "text a.c 1.3 in \none\r\ntwo\r\nboth\r\nSecond\r\n");
    support::Pick(form, "Menu1", "&History of the file");
    EXPECT_EQ(Views.Wished(), "history a.c\n");
    Select(form, "Details", {1});
    EXPECT_FALSE(Part<TButton>(form, "Get").Enabled()) << "it was taken away";
    support::Press(form, "Compare");
    EXPECT_EQ(Views.Wished(), "compare b.c: 1.1 and 1.2\n");
    // A commit on a branch, with what the branch was before.
    Select(form, "List", {0});
    support::Press(form, "Compare");
    ExpectIn(Views.Wished(), "compare a.c sub\\c.c: TWIG:20");
    ExpectIn(Views.Difference, "+twig");
    ExpectIn(Views.Difference, "sub/c.c");
    EXPECT_EQ(Views.Difference.find("Second"), std::string::npos) << Views.Difference;
    support::Press(form, "CompareWorking");
    ExpectIn(Views.Wished(), " and working copy");
    ExpectIn(Views.Difference, "+Second");
    // Two of them: all that came to be between them.
    Select(form, "List", {1, 3});
    support::Press(form, "Compare");
    ExpectIn(Views.Wished(), "compare: VENDOR:20");
    ExpectIn(Views.Difference, "+both");
    ExpectIn(Views.Difference, "b.c");
    // A label on the files of a commit, each in its revision.
    Select(form, "List", {2});
    ExpectForm("Label", [](TForm& asked) {
        ExpectIn(TextOf(asked, "Input3"), "2 files");
        support::Type(asked, "Input1", "BOTH");
        Click(asked, "BitBtn1");
    });
    support::Press(form, "Label");
    const std::string log = Sandbox.Client("log -h", Copy);
    EXPECT_NE(log.find("BOTH: 1.2"), log.rfind("BOTH: 1.2")) << log;

    // What a folder has, and what several files have, too.
    THistoryForm folder(Views, {Copy + "\\sub"});
    ASSERT_TRUE(folder.Load());
    EXPECT_EQ(folder.Text(), "History of sub");
    EXPECT_EQ(Status(folder), "3 commits");
    THistoryForm files(Views, {Copy + "\\b.c", Copy + "\\sub\\c.c"});
    ASSERT_TRUE(files.Load());
    EXPECT_EQ(files.Text(), "History of b.c, c.c");
    EXPECT_EQ(Status(files), "4 commits");
    THistoryForm both(Views, {Copy + "\\b.c", Copy + "\\sub", Copy + "\\sub\\c.c"});
    ASSERT_TRUE(both.Load());
    EXPECT_EQ(Rows(both, "List", {1, 3}), Rows(files, "List", {1, 3}));
    THistoryForm none(Views, {Copy + "\\new.c"});
    EXPECT_FALSE(none.Load());
    ExpectIn(Status(none), "see the output");
}

TEST_F(HistoryForms, RememberHowTheyAreArranged) {
    const std::string file = Copy + "\\a.c";
    std::vector<int> widths;
    {
        THistoryForm form(Views, {file});
        ASSERT_TRUE(form.Load());
        auto& list = Part<TListView>(form, "List");
        widths = list.ColumnWidths();
        widths[0] = 131;
        list.SetColumnWidths(widths);
        form.SetClientSize(form.Scale(800), form.Scale(500));
        list.SetBounds(0, list.Bounds().top, list.Width(), form.Scale(200));
    }
    THistoryForm again(Views, {file}), commits(Views, {});
    ASSERT_TRUE(again.Load());
    auto& list = Part<TListView>(again, "List");
    EXPECT_EQ(list.ColumnWidths(), widths);
    EXPECT_EQ(again.ClientSize().cx, again.Scale(800));
    EXPECT_EQ(list.Height(), again.Scale(200));
    EXPECT_NE(commits.ClientSize().cx, again.ClientSize().cx) << "they differ";
}

// --- how they look ----------------------------------------------------------------------------

/// The records of a file with branches of branches, long messages and many labels.
std::string ManyBranches() {
    std::string symbols, revisions, texts;
    const auto add = [&](const std::string& number, int day, const std::string& next,
                         const std::string& branches, const std::string& message,
                         const std::string& state = "Exp") {
        revisions += number + "\ndate 2026.03." + (day < 10 ? "0" : "") + std::to_string(day) +
                     ".10.00.00; author someone; state " + state + ";\nbranches " + branches +
                     ";\nnext " + next + ";\n\n";
        texts += number + "\nlog\n@" + message + "\n@\ntext\n@@\n\n";
    };
    for (int i = 0; i < 12; ++i)
        symbols += " RELEASE_" + std::to_string(i) + ":1.3";
    add("1.5", 28, "1.4", "", "Bring it back, and let it read what it has written itself");
    add("1.4", 24, "1.3", "", "Take it out", "dead");
    add("1.3", 14, "1.2", "1.3.2.1",
        "Release\n\nWith all that was asked for:\n  - a list\n  - another line of it");
    add("1.2", 8, "1.1", "", "Second");
    add("1.1", 2, "", "1.1.2.1", "First");
    add("1.1.2.1", 5, "1.1.2.2", "", "For the old ones");
    add("1.1.2.2", 26, "", "", "Still alive");
    add("1.3.2.1", 16, "1.3.2.2", "1.3.2.1.2.1", "Stabilise");
    add("1.3.2.2", 20, "1.3.2.3", "", "Mend what was broken by the one before, as far as it shows");
    add("1.3.2.3", 27, "", "", "Merge");
    add("1.3.2.1.2.1", 18, "1.3.2.1.2.2", "", "Fix the first");
    add("1.3.2.1.2.2", 22, "", "", "Fix the second");
    return "head 1.5;\naccess;\nsymbols" + symbols +
           " STABLE:1.3.0.2 FIXES:1.3.2.1.0.2 OLD:1.1.0.2 NOTHING_YET:1.4.0.2;\nlocks; strict;\n"
           "comment @# @;\n\n" +
           revisions + "desc\n@@\n\n" + texts;
}

class HistoryLooks : public HistoryForms {};

TEST_F(HistoryLooks, AreTidy) {
    Sandbox.Write(Sandbox.Repository + "\\mod\\tree.c,v", ManyBranches());
    Client("-Q update");
    THistoryForm file(Views, {Copy + "\\tree.c"});
    ASSERT_TRUE(file.Load()) << Views.Window.Told;
    file.Show();
    Select(file, "List", {8});
    Look(file, "history");
    THistoryForm project(Views, {});
    ASSERT_TRUE(project.Load()) << Views.Window.Told;
    project.Show();
    Look(project, "commits");
}

TEST(HistoryLooksAtHighResolution, AreTidy) {
    RunAtHighResolution("HistoryLooks.*");
}

}  // namespace
