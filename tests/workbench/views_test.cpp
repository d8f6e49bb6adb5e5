// The list, the tree and the output: what they show, and what stays as it was.

#include <gtest/gtest.h>

#include <set>

#include "framework/base/files.h"
#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/status_bar.h"
#include "support/WaitUntil.h"
#include "tests/workbench/Projects.h"
#include "workbench/Conflicts.h"
#include "workbench/FileList.h"

namespace {

using namespace tests;
using enum TFileState;

// --- rows -------------------------------------------------------------------------------------

TFileRow Row(const std::string& name, TFileState state, const std::string& revision = "",
             const std::string& folder = "C:\\p") {
    TFileRow row;
    row.Directory = folder;
    row.Name = name;
    row.State = state;
    row.Revision = revision;
    row.IsDirectory = state == Folder;
    return row;
}

std::string Names(const std::vector<TFileRow>& rows) {
    std::string names;
    for (const TFileRow& row : rows)
        names += row.Name + " ";
    return names;
}

TEST(Rows, AreFilteredAndSortedWithFoldersFirst) {
    const std::vector<TFileRow> rows = {Row("b.c", Changed, "1.10"),     Row("Lib", Folder),
                                        Row("a.h", Unchanged, "1.9"),    Row("x.o", Ignored),
                                        Row("c.C", Conflict, "1.9.2.1"), Row("new", Unknown)};
    EXPECT_EQ(Names(Arrange(rows, {})), "Lib a.h b.c c.C new x.o ");
    EXPECT_EQ(Names(Arrange(rows, {.Descending = true})), "Lib x.o new c.C b.c a.h ");
    EXPECT_EQ(Names(Arrange(rows, {.SortColumn = 2})), "Lib new x.o a.h c.C b.c ")
        << "numbers, not texts";
    EXPECT_EQ(Names(Arrange(rows, {.ChangedOnly = true})), "b.c c.C new ");
    EXPECT_EQ(Names(Arrange(rows, {.HideIgnored = true, .SortColumn = 1})), "Lib a.h b.c c.C new ");
    EXPECT_EQ(Names(Arrange(rows, {.Filter = "*.c"})), "b.c c.C ");
    EXPECT_EQ(Names(Arrange(rows, {.Filter = "L"})), "Lib ");
    EXPECT_EQ(Names(Arrange({}, {.ChangedOnly = true, .Filter = "?"})), "");
}

TEST(Rows, KeepTheirPlaceAndSelectionWhenOthersComeAndGo) {
    TForm form("List");
    auto& view = form.Make<TListView>("List", form, TListViewStyle{.MultiSelect = true});
    TFileList list(view);
    int told = 0;
    list.OnSelect = [&] { ++told; };
    std::vector<TFileRow> rows = {Row("b", Changed), Row("c", Unchanged), Row("d", Unchanged)};
    const auto selected = [&] {
        std::string names;
        for (const TFileRow* row : list.Selection())
            names += row->Name + " ";
        return names;
    };
    list.Show("C:\\p", false, rows);
    view.SelectAll();
    EXPECT_EQ(selected(), "b c d ");
    EXPECT_TRUE(list.Select("c:\\P\\c"));
    view.Select(2);
    EXPECT_EQ(selected(), "c d ");
    told = 0;
    list.Show("C:\\p", false, rows);
    EXPECT_EQ(told, 0) << "nothing has changed";
    rows.insert(rows.begin(), Row("a", Unknown));
    rows.erase(rows.begin() + 2);
    list.Show("C:\\p", false, rows);
    EXPECT_EQ(selected(), "d ") << "c is gone";
    EXPECT_EQ(view.Row(0).Caption + view.Row(0).SubItems[0], "aNot in repository");
    list.SetView({.Descending = true});
    EXPECT_EQ(selected(), "d ");
    EXPECT_EQ(view.SelectedIndex(), 0);
    list.Show("C:\\q", false, {Row("d", Changed, "1.1", "C:\\q")});
    EXPECT_EQ(selected(), "") << "another one of that name";
    list.Show("C:\\q", false, {});
    EXPECT_EQ(view.Count(), 0);
    EXPECT_FALSE(list.Select("C:\\q\\d"));
}

// --- conflicts --------------------------------------------------------------------------------

TEST(Conflicts, AreFoundForwardAndBackward) {
    const std::string first = "<<<<<<< a.c\r\nmine\r\n=======\r\ntheirs\r\nmore\r\n>>>>>>> 1.2\r\n";
    const std::string second = "<<<<<<< a.c\n=======\nnew\n>>>>>>> 1.3";
    const std::string text = "top\r\n" + first + "between <<<<<<< no\r\n=======\r\n" + second;
    const auto one = NextConflict(text, 0);
    ASSERT_TRUE(one);
    EXPECT_EQ(text.substr(one->Start, one->End - one->Start), first);
    EXPECT_EQ(one->Mine + "|" + one->Theirs, "mine\r\n|theirs\r\nmore\r\n");
    const auto two = NextConflict(text, one->Start + 1);
    ASSERT_TRUE(two);
    EXPECT_EQ(text.substr(two->Start, two->End - two->Start), second);
    EXPECT_EQ(two->Mine + "|" + two->Theirs, "|new\n");
    EXPECT_FALSE(NextConflict(text, two->Start + 1));
    EXPECT_FALSE(NextConflict(text, text.size() + 5));
    EXPECT_EQ(PreviousConflict(text, text.size())->Start, two->Start);
    EXPECT_EQ(PreviousConflict(text, two->Start)->Start, one->Start);
    EXPECT_FALSE(PreviousConflict(text, one->Start));
    for (const char* torn : {"<<<<<<< a\nmine\n=======\ntheirs\n", "<<<<<<< a\nmine\n>>>>>>> b\n",
                             "=======\n>>>>>>> b\n", "", "<<<<<<< "})
        EXPECT_FALSE(NextConflict(torn, 0)) << torn;
    // The marks of one that was cut off do not swallow the next.
    EXPECT_EQ(NextConflict("<<<<<<< torn\n" + second, 0)->Start, 13u);
}

TEST(Conflicts, AreResolvedInTheEditor) {
    const support::TTempFolder folder("conflicts");
    const std::string path = folder / "a.c";
    const auto conflict = [](const std::string& mine, const std::string& theirs) {
        return "<<<<<<< a.c\r\n" + mine + "=======\r\n" + theirs + ">>>>>>> 1.2\r\n";
    };
    support::WriteBytes(path, "top\r\n" + conflict("A\r\n", "B\r\n") + "mid\r\n" +
                                  conflict("C\r\n", "") + conflict("E\r\n", "F\r\n") + "end\r\n");
    TDocumentForm form(path);
    auto& memo = support::Part<TMemo>(form, "Memo1");
    const auto choose = [&](const char* caption) { support::Pick(form, "Menu1", caption); };
    choose("&Next");
    EXPECT_EQ(memo.SelectionStart(), 5u);
    choose("Take &theirs");
    choose("Take &mine");
    choose("Take &both");
    EXPECT_EQ(memo.Text(), "top\r\nB\r\nmid\r\nC\r\nE\r\nF\r\nend\r\n");
    EXPECT_TRUE(form.Modified());
    EXPECT_TRUE(form.Save());
    EXPECT_EQ(support::ReadBytes(path), memo.Text());
    choose("&Next");
    EXPECT_TRUE(form.Text().ends_with("no conflicts")) << form.Text();
}

// --- the window -------------------------------------------------------------------------------

TEST_F(Projects, StayAsTheyWereSeenOverACommand) {
    for (const char* file : {"a\\x.c", "b\\deep\\y.c", "c\\z.c", "m.c"})
        support::WriteBytes(Folder / "one\\" + file, file);
    Form.OpenProject(Folder / "one");
    auto& tree = support::Part<TTreeView>(Form, "Tree");
    auto& list = support::Part<TListView>(Form, "List");
    const auto shown = [&] {
        std::string text;
        for (const auto& node : tree.Root().Children().front()->Children())
            text += node->Text() + (node->Expanded() ? "+" : "") + (node->Selected() ? "!" : "");
        for (int i = 0; i < list.Count(); ++i)
            text += " " + list.Row(i).Caption;
        return text;
    };
    const auto& nodes = tree.Root().Children().front()->Children();
    ASSERT_EQ(nodes.size(), 3u);
    nodes[1]->SetExpanded(true);
    nodes[1]->SetSelected(true);
    EXPECT_EQ(shown(), "ab+!c deep");
    std::string during;
    EXPECT_TRUE(Operate([&](TCvsObject&) {
        during = shown();
        support::WriteBytes(Folder / "one\\b\\fresh.c", "");
        return true;
    }));
    EXPECT_EQ(during, "ab+!c deep") << "nothing is cleared";
    EXPECT_EQ(shown(), "ab+!c deep fresh.c");
    Select("fresh.c");
    // Folders come and go.
    EXPECT_TRUE(Operate([&](TCvsObject&) {
        support::DeleteFolder(Folder / "one\\a");
        support::WriteBytes(Folder / "one\\d\\w.c", "");
        return true;
    }));
    EXPECT_EQ(shown(), "b+!cd deep fresh.c");
    EXPECT_EQ(Form.Selection(), std::vector{Folder / "one\\b\\fresh.c"});
    EXPECT_TRUE(Operate([&](TCvsObject&) {
        support::DeleteFolder(Folder / "one\\b");
        return true;
    }));
    EXPECT_EQ(shown(), "cd c d a.c m.c") << "what was around it";
    support::Check(Form, "WithFolders");
    EXPECT_EQ(shown(), "cd a.c m.c w.c z.c");
    support::Type(Form, "Filter", "?.c");
    EXPECT_EQ(list.Count(), 4);
    support::Type(Form, "Filter", "w");
    EXPECT_EQ(shown(), "cd w.c");
    EXPECT_EQ(list.Row(0).SubItems.back(), "d");
}

TEST_F(Projects, ShowWhatOthersChange) {
    Form.OpenProject(Folder / "one");
    Form.Show();
    auto& list = support::Part<TListView>(Form, "List");
    EXPECT_EQ(list.Count(), 1);
    support::WriteBytes(Folder / "one\\by others.c", "");
    EXPECT_TRUE(support::WaitUntil([&] { return list.Count() == 2; }));
    ::DeleteFileA((Folder / "one\\a.c").c_str());
    EXPECT_TRUE(support::WaitUntil([&] { return list.Count() == 1; }));
    // Also records that name another repository.
    Record("one", "C:\\none", "");
    EXPECT_TRUE(support::WaitUntil([&] { return Form.Project()->Stored(); }));
    ExpectTold("belong to the repository C:\\none");
}

TEST_F(Projects, SayWhatRunsAndStopIt) {
    Form.OpenProject(Folder / "one");
    Form.Show();
    auto& status = support::Part<TStatusBar>(Form, "Status");
    std::string during;
    bool enabled = false;
    // It talks all the time: no progress form, which waits for quiet, ever comes.
    const ULONGLONG start = ::GetTickCount64();
    TTimer presser(2500);
    presser.OnTimer = [&](TObject*) {
        during = status.PartText(1);
        enabled = Form.Enabled();
        tests::PressKey(Form, VK_ESCAPE);
    };
    presser.SetEnabled(true);
    EXPECT_FALSE(Run("say-and-sleep x 200 300"));
    presser.SetEnabled(false);
    EXPECT_LT(::GetTickCount64() - start, 30000u);
    ExpectIn(during, "say-and-sleep x 200 300 - ");
    EXPECT_TRUE(enabled) << "mouse and keyboard reach it";
    EXPECT_EQ(status.PartText(1), "Stopped");
    // What is done without a command is not what the one before has come to.
    Form.Busily([](TProject&) {});
    EXPECT_EQ(status.PartText(1), "Done");
    EXPECT_TRUE(Run("exit 0"));
    EXPECT_EQ(status.PartText(1), "Done");
}

TEST_F(Projects, LeaveTheKeysOfATextToIt) {
    Record("one", "C:\\none");
    Form.OpenProject(Folder / "one");
    Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " arguments";
    Form.Show();
    Answer(true);
    Select("a.c");
    auto& filter = support::Part<TEdit>(Form, "Filter");
    const auto press = [&](TControl& control) {
        control.SetFocus();
        ::PostMessageW(control.Handle(), WM_KEYDOWN, VK_DELETE, 1);
        ::PostMessageW(control.Handle(), WM_KEYDOWN, VK_END, 1);
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE))
            Application().ProcessMessages();
    };
    press(filter);
    press(support::Part<TRichEdit>(Form, "Output"));
    EXPECT_EQ(Told().find("[remove]"), std::string::npos) << Told();
    press(support::Part<TListView>(Form, "List"));
    ExpectTold("[remove]");
    ExpectIn(Asked, "a.c");
}

TEST_F(Projects, HaveOneLetterForEachThingInAMenu) {
    const auto letterOf = [](const std::string& caption) {
        const std::size_t at = caption.find('&');
        return at == std::string::npos ? ' ' : static_cast<char>(std::toupper(caption[at + 1]));
    };
    std::set<char> menus;
    std::set<std::string> shortcuts;
    for (const TMenuItem* menu : support::Part<TMainMenu>(Form, "Menu").Items()) {
        EXPECT_TRUE(menus.insert(letterOf(menu->Caption())).second) << menu->Caption();
        std::set<char> letters;
        for (const TMenuItem* item : menu->Items()) {
            if (item->Caption() == "-")
                continue;
            EXPECT_TRUE(letters.insert(letterOf(item->Caption())).second) << item->Caption();
            EXPECT_NE(letterOf(item->Caption()), ' ') << item->Caption();
        }
    }
}

TEST_F(Projects, RememberHowTheirWindowIsArranged) {
    auto& list = support::Part<TListView>(Form, "List");
    std::vector<int> widths = list.ColumnWidths();
    widths[0] = 231;
    list.SetColumnWidths(widths);
    support::Check(Form, "ChangedOnly");
    Form.SetClientSize(Form.Scale(700), Form.Scale(500));
    ::SendMessageW(Form.Handle(), WM_ENDSESSION, TRUE, 0);
    Application().SetMainWindow(nullptr);
    TMainForm again(Settings, Packages);
    EXPECT_EQ(support::Part<TListView>(again, "List").ColumnWidths(), widths);
    EXPECT_TRUE(support::Part<TCheckBox>(again, "ChangedOnly").Checked());
    EXPECT_FALSE(support::Part<TCheckBox>(again, "HideIgnored").Checked());
    EXPECT_EQ(again.ClientSize().cx, again.Scale(700));
}

TEST_F(Projects, ShowTheEndOfAFloodAndKeepAllOfIt) {
    Form.OpenProject(Folder / "one");
    constexpr int Lines = 100000;  // of 64 bytes
    EXPECT_TRUE(Run("flood " + std::to_string(Lines)));
    const std::string told = Told();
    EXPECT_LE(told.size(), TOutputPane::MostShown + 1000);
    ExpectIn(told, "not shown");
    ExpectIn(told, std::to_string(Lines - 1) + "....");
    TFileSearch search(Folder / "data\\Output\\*.txt", faAnyFile);
    TSearchRec kept;
    ASSERT_TRUE(search.Next(kept));
    EXPECT_GT(FileSize(Folder / ("data\\Output\\" + kept.Name)), 64u * Lines);
    // It goes on from there.
    EXPECT_TRUE(Run("say-and-sleep afterwards 0 1"));
    ExpectTold("afterwards");
}

}  // namespace
