// What differs between two texts, as the real client says it, and the window that shows it.

#include <gtest/gtest.h>

#include <random>

#include "framework/ui/line_view.h"
#include "framework/ui/status_bar.h"
#include "tests/cvs/Sandbox.h"
#include "tests/workbench/Projects.h"
#include "workbench/AnnotationForm.h"
#include "workbench/ComparisonForm.h"

namespace {

using namespace tests;
using TKind = TComparedLine::TKind;

constexpr std::string_view Unfinished = "\n\\ No newline at end of file";

/// The texts that stand in the two columns, and how they differ: "=" for the same, "|", "-", "+".
struct TColumns {
    std::vector<std::string> From, To;
    std::string Kinds;
};

TColumns ColumnsOf(const std::vector<TComparedLine>& lines) {
    TColumns columns;
    for (const TComparedLine& line : lines) {
        columns.Kinds += "=|-+."[static_cast<int>(line.Kind)];
        if (line.FromNumber > 0)
            columns.From.push_back(line.From);
        if (line.ToNumber > 0)
            columns.To.push_back(line.To);
        EXPECT_TRUE(line.FromNumber == 0 ||
                    line.FromNumber == static_cast<int>(columns.From.size()));
        EXPECT_TRUE(line.ToNumber == 0 || line.ToNumber == static_cast<int>(columns.To.size()));
    }
    return columns;
}

/// Some lines, with others put in, taken out and changed.
std::string Edited(const std::string& text, std::mt19937& random) {
    std::string edited;
    for (const std::string& line : LinesOf(text))
        switch (random() % 12) {
            case 0:
                break;
            case 1:
                edited += line + " and more\r\n";
                break;
            case 2:
                edited += "new " + std::to_string(random() % 5) + "\r\n" + line + "\r\n";
                break;
            default:
                edited += line + "\r\n";
        }
    return edited;
}

class Comparisons : public testing::Test {
protected:
    std::string Differences(const std::string& options) const {
        return support::RunProcess("cvs -q diff -N -u " + options, Copy).Output;
    }
    /// Commits files with their first texts and then has them hold the second ones.
    void Make(const std::map<std::string, std::pair<std::string, std::string>>& texts) const {
        std::string names;
        for (const auto& [name, both] : texts) {
            Sandbox.Write(Copy + "\\" + name, both.first);
            names += " " + name;
        }
        Sandbox.Client("add" + names, Copy);
        Sandbox.Client("commit -m m", Copy);
        for (const auto& [name, both] : texts) {
            Sandbox.Write(Copy + "\\" + name, both.second);
            Touch(Copy + "\\" + name);
        }
    }

    const TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
};

TEST_F(Comparisons, PutBothTextsSideBySide) {
    std::mt19937 random(7);
    std::string odd = "Index: a.c\r\n--- a.c\r\n+++ b.c\r\n@@ -1 +1 @@\r\n\\ No newline\r\n\r\n";
    odd += "Binary files a and b differ\r\nretrieving revision 9.9\r\n=====\r\n-- x\r\n++ y\r\n";
    for (int i = 0; i < 300; ++i)
        odd += "line " + std::to_string(i) + "\r\n";
    std::map<std::string, std::pair<std::string, std::string>> texts = {
        {"open.c", {"a\r\nb", "a\r\nc"}},
        {"closed.c", {"a\r\nb", "a\r\nb\r\n"}},
        {"emptied.c", {"a\r\nb\r\n", ""}},
        {"filled.c", {"", "a\r\n\r\nb\r\n"}},
        {"front.c", {"x\r\ny\r\n", "w\r\nx\r\ny\r\n"}},
    };
    for (int i = 0; i < 6; ++i)
        texts["odd" + std::to_string(i) + ".c"] = {odd, Edited(odd, random)};
    Make(texts);
    const TComparison comparison = ParseComparison(Differences(""));
    EXPECT_TRUE(comparison.Remarks.empty()) << comparison.Remarks.front();
    ASSERT_EQ(comparison.Files.size(), texts.size());
    for (const TFileDifference& file : comparison.Files) {
        const auto& [older, newer] = texts.at(file.Name);
        const std::vector<std::string> lines = LinesOf(newer);
        const TColumns whole = ColumnsOf(SideBySide(file, &lines));
        EXPECT_EQ(whole.From, LinesOf(older)) << file.Name;
        EXPECT_EQ(whole.To, lines) << file.Name;
        EXPECT_EQ(file.FromEndsOpen, !older.empty() && !older.ends_with('\n')) << file.Name;
        EXPECT_EQ(file.FromRevision, "1.1") << file.Name;
        // Without the text the changes are the same.
        const std::vector<TComparedLine> parts = SideBySide(file, nullptr);
        EXPECT_EQ(ChangesIn(parts).size(), ChangesIn(SideBySide(file, &lines)).size());
        // A text that has changed since is not shown as if it had not.
        const std::vector<std::string> other(lines.size() + 1, "other");
        EXPECT_TRUE(newer.empty() || SideBySide(file, &other).size() == parts.size());
    }
    // However many lines stand around the changes.
    for (const TFileDifference& file : ParseComparison(Differences("-U0")).Files) {
        const std::vector<std::string> lines = LinesOf(texts.at(file.Name).second);
        const std::vector<TComparedLine> whole = SideBySide(file, &lines);
        EXPECT_EQ(ColumnsOf(whole).From, LinesOf(texts.at(file.Name).first)) << file.Name;
        int left = 0;
        for (const TComparedLine& line : ChangesOnly(whole, 2))
            left += line.Kind == TKind::Gap ? std::stoi(line.From) : 1;
        EXPECT_EQ(left, static_cast<int>(whole.size())) << file.Name;
    }
    const auto& front = *std::ranges::find(comparison.Files, "front.c", &TFileDifference::Name);
    EXPECT_EQ(ColumnsOf(SideBySide(front, nullptr)).Kinds, "+==");
}

TEST_F(Comparisons, SayWhatIsNewRemovedAndBinary) {
    Sandbox.Client("tag before", Copy);
    Make({{"new.c", {"n\r\n", "n\r\n"}}});
    Sandbox.Client("remove -f b.c", Copy);
    Sandbox.Client("commit -m m", Copy);
    Sandbox.Write(Copy + "\\p.bin", std::string("a\0b\x1A", 4));
    Sandbox.Client("add -kb p.bin", Copy);
    Sandbox.Client("commit -m m", Copy);
    Sandbox.Write(Copy + "\\p.bin", std::string("a\0c\x1A", 4));
    Touch(Copy + "\\p.bin");
    const TComparison changed = ParseComparison(Differences(""));
    ASSERT_EQ(changed.Files.size(), 1u);
    EXPECT_TRUE(changed.Files[0].IsBinary);
    const TComparison all = ParseComparison(Differences("-r before -r HEAD"));
    // What is there on one side alone the client for Windows may not be able to show.
    std::string said;
    for (const TFileDifference& file : all.Files) {
        said += file.Name + ";";
        EXPECT_TRUE(file.IsWhole || file.IsNew || file.IsRemoved) << file.Name;
    }
    EXPECT_EQ(said, "b.c;new.c;p.bin;");
    EXPECT_TRUE(all.Remarks.empty()) << all.Remarks.front();
    const TComparison server = ParseComparison(
        "Index: n.c\n=====\nRCS file: n.c\ndiff -N n.c\n--- /dev/null\t1 Jan 1970 00:00:00 -0000\n"
        "+++ n.c\t22 Nov 2026 13:58:25 -0000\t1.1\n@@ -0,0 +1 @@\n+n\n"
        "Index: r.c\nretrieving revision 1.1\ndiff -N r.c\n--- r.c\t1.1\n"
        "+++ /dev/null\t1 Jan 1970\n@@ -1 +0,0 @@\n-r\n");
    ASSERT_EQ(server.Files.size(), 2u);
    EXPECT_TRUE(server.Files[0].IsNew && !server.Files[0].IsRemoved);
    EXPECT_TRUE(server.Files[1].IsRemoved && !server.Files[1].IsNew);
    EXPECT_EQ(ColumnsOf(SideBySide(server.Files[1], nullptr)).From, LinesOf("r"));
    // What is no comparison is kept apart, and is in no patch.
    const std::string text = Differences("-r no_such_label") + Differences("-r before");
    EXPECT_FALSE(ParseComparison(text).Remarks.empty());
    EXPECT_TRUE(ParseComparison(PatchOf(text)).Remarks.empty()) << PatchOf(text);
    EXPECT_EQ(ParseComparison(PatchOf(text)).Files.size(), ParseComparison(text).Files.size());
}

TEST(Words, ThatDifferAreMarked) {
    const auto marked = [](const std::string& from, const std::string& to) {
        const TWordDifference words = CompareWords(from, to);
        std::string text;
        for (const TWordRange& word : words.From)
            text += "-" + from.substr(word.Start, word.Length);
        for (const TWordRange& word : words.To)
            text += "+" + to.substr(word.Start, word.Length);
        return text;
    };
    EXPECT_EQ(marked("int a = b;", "int a = c;"), "-b+c");
    EXPECT_EQ(marked("if (x)", "if (x && y)"), "+ && y");
    EXPECT_EQ(marked("one two three four", "one 2 three 4"), "-two-four+2+4");
    EXPECT_EQ(marked("same", "same"), "");
    EXPECT_EQ(marked("", "all new"), "+all new");
    EXPECT_EQ(marked("a\tb", "a b"), "-\t+ ");
    const std::string longer(3000, '(');
    EXPECT_EQ(marked("x" + longer, longer + "y").size(), 2 + 2 * (longer.size() + 1) - 0)
        << "too much to be told apart is marked as a whole";
}

TEST(ComparisonTexts, MayBeAnything) {
    for (const std::string& text :
         {std::string("@@ -1 +1 @@\n+x\n"), std::string("Index: a\n@@ -99999999999 +1 @@\n"),
          std::string("Index: a\n@@ -1,3 +1,3 @@\n x\nIndex: b\n@@ -5,0 +2 @@\n+y\n\\ No\n"),
          std::string("Index: \r\n@@ -1,9 +1,9 @@\n-\n+\n\\\n"), std::string("\0\n", 2)}) {
        for (const TFileDifference& file : ParseComparison(text).Files) {
            const std::vector<std::string> lines = {"x", "y"};
            SideBySide(file, nullptr);
            SideBySide(file, &lines);
        }
        EXPECT_LE(PatchOf(text).size(), text.size());
    }
    const TComparison cut = ParseComparison("Index: a\n@@ -1,3 +1,3 @@\n x\nIndex: b\n");
    ASSERT_EQ(cut.Files.size(), 2u);
    EXPECT_EQ(cut.Files[1].Name, "b");
}

TEST(Versions, AreReadAsTheyAreWritten) {
    for (const std::string text :
         {"working copy", "last update", "1.2.2.1", "release_1", "2026-05-04 10:30"})
        EXPECT_EQ(VersionOf(" " + text + " ").Text(), text);
    EXPECT_EQ(VersionOf("2026-05-04").Text(), "2026-05-04 00:00");
    EXPECT_EQ(VersionOf("2026-13-04").Kind, TVersion::TKind::Revision);
    EXPECT_EQ(VersionOf("2026-05-04x").Kind, TVersion::TKind::Revision);
    EXPECT_TRUE(TVersion::Of("1.10").IsNumber());
    for (const char* changing : {"1.2.2", "HEAD", "", "1.2 "})
        EXPECT_FALSE(TVersion::Of(changing).IsNumber()) << changing;
}

// --- the windows ------------------------------------------------------------------------------

/// The window of a kind that is open, or none.
template <class TView>
TView* OpenView() {
    const std::vector<TView*> open = support::OpenForms<TView>();
    return open.empty() ? nullptr : open.front();
}

void PickIn(const TForm& form, const std::string& caption) {
    for (const TMenuItem* menu : form.Find<TMainMenu>("Menu1")->Items())
        for (TMenuItem* item : menu->Items())
            if (item->Caption() == caption)
                return item->Click();
    ADD_FAILURE() << "no such item: " << caption;
}

class Views : public Projects {
protected:
    Views() {
        Sandbox.Write(Copy + "\\a.c", "one\r\ntwo\r\nthree\r\n");
        Sandbox.Client("commit -m second", Copy);
        Sandbox.Write(Copy + "\\a.c", "one\r\n2\r\nthree\r\nfour\r\n");
        Touch(Copy + "\\a.c");
        Sandbox.Write(Copy + "\\sub\\c.c", "changed\r\n");
        Touch(Copy + "\\sub\\c.c");
        Answer(true);
        Form.OpenProject(Copy);
    }
    std::string Status(const TForm& form, int part = 0) const {
        return support::Part<TStatusBar>(form, "Status").PartText(part);
    }
    static std::string Kinds(const TComparisonForm& form) {
        return ColumnsOf(form.Compared()).Kinds;
    }

    const TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
};

TEST_F(Views, CompareFilesWithWhatTheyWere) {
    Select("a.c");
    Pick(Form, "C&ompare");
    auto* form = OpenView<TComparisonForm>();
    ASSERT_TRUE(form) << Told();
    EXPECT_EQ(Kinds(*form), "=|=+");
    EXPECT_EQ(Status(*form), "Change 1 of 2");
    auto& lines = support::Part<TLineView>(*form, "Lines");
    EXPECT_EQ(lines.Current(), 1);
    EXPECT_EQ(lines.Line(1, 0).Margin, "2 |");
    EXPECT_EQ(lines.Line(3, 1).Margin, "4 +");
    EXPECT_EQ(lines.Line(1, 1).Marks.size(), 1u);
    support::Press(*form, "Next");
    EXPECT_EQ(lines.Current(), 3);
    EXPECT_EQ(Status(*form), "Change 2 of 2");
    support::Press(*form, "Previous");
    EXPECT_EQ(lines.Current(), 1);
    // Other versions: what was committed last against what was before.
    ExpectForm("Compare", [](TForm& asked) {
        EXPECT_EQ(TextOf(asked, "Input1"), "last update");
        support::Type(asked, "Input1", "1.1");
        support::Type(asked, "Input2", "1.2");
        Click(asked, "BitBtn1");
    });
    support::Press(*form, "Versions");
    EXPECT_EQ(form->Text(), "a.c: 1.1 and 1.2");
    EXPECT_EQ(TextOf(*form, "ToHead"), "1.2");
    EXPECT_EQ(ColumnsOf(form->Compared()).To, (std::vector<std::string>{"one", "two", "three"}));
    // A patch is written as the client gives it.
    DialogFunctions().SaveFile = [&](const std::string&, std::string& file) {
        file = Folder / "a.patch";
        return true;
    };
    support::Press(*form, "SavePatch");
    const std::string patch = support::ReadBytes(Folder / "a.patch");
    EXPECT_TRUE(patch.starts_with("Index: a.c")) << patch;
    EXPECT_NE(patch.find("+three"), std::string::npos) << patch;
    // A version that is not there leaves what is shown.
    ExpectForm("Compare", [](TForm& asked) {
        support::Type(asked, "Input1", "no_such");
        Click(asked, "BitBtn1");
    });
    support::Press(*form, "Versions");
    EXPECT_NE(Status(*form, 1), "");
    EXPECT_NE(Told().find("no_such"), std::string::npos) << Told();
}

TEST_F(Views, CompareWholeFoldersFileByFile) {
    Sandbox.Write(Copy + "\\sub\\c.c", "c \tc\r\n");
    Pick(Form, "C&ompare");
    auto* form = OpenView<TComparisonForm>();
    ASSERT_TRUE(form) << Told();
    auto& files = support::Part<TListView>(*form, "FileList");
    ASSERT_EQ(files.Count(), 2);
    EXPECT_EQ(files.Row(1).Caption, "sub/c.c");
    EXPECT_EQ(files.SelectedIndex(), 0);
    // Behind the last change of a file come those of the next one.
    for (int i = 0; i < 2; ++i)
        PickIn(*form, "&Next change");
    EXPECT_EQ(files.SelectedIndex(), 1);
    EXPECT_EQ(Status(*form), "Change 1 of 1");
    PickIn(*form, "&Previous change");
    EXPECT_EQ(files.SelectedIndex(), 0);
    EXPECT_EQ(Status(*form), "Change 2 of 2");
    support::Check(*form, "ChangesOnly");
    EXPECT_EQ(Kinds(*form), "=|=+");
    // Closed windows go with the next one, all of them with their project.
    PickIn(*form, "&Close");
    EXPECT_FALSE(OpenView<TComparisonForm>());
    Pick(Form, "C&ompare");
    EXPECT_TRUE(OpenView<TComparisonForm>());
    Pick(Form, "&Close project");
    EXPECT_FALSE(OpenView<TComparisonForm>());
}

TEST_F(Views, ShowWhatOneSideAloneHas) {
    Sandbox.Client("tag start", Copy);
    Sandbox.Write(Copy + "\\n.c", "n\r\n");
    Sandbox.Client("add n.c", Copy);
    Sandbox.Client("remove -f b.c", Copy);
    Pick(Form, "C&ompare");
    auto* form = OpenView<TComparisonForm>();
    ASSERT_TRUE(form) << Told();
    auto& files = support::Part<TListView>(*form, "FileList");
    std::map<std::string, std::string> kinds;
    for (int i = 0; i < files.Count(); ++i) {
        files.Select(i);
        kinds[files.Row(i).Caption] = Kinds(*form);
    }
    EXPECT_EQ(kinds["n.c"], "+");
    EXPECT_EQ(kinds["b.c"].find_first_not_of('-'), std::string::npos);
    EXPECT_NE(kinds["b.c"], "");
}

TEST_F(Views, ShowNoFileThatAServerNamesElsewhere) {
    Sandbox.Write(Sandbox.Folder / "work\\outside.c", "b\r\nsecret\r\n");
    Sandbox.Write(Sandbox.Folder / "said", "Index: ../outside.c\r\n@@ -1 +1 @@\r\n-a\r\n+b\r\n");
    Form.Project()->Cvs().CvsExecutable =
        support::FakeClient() + " say-file \"" + (Sandbox.Folder / "said") + "\"";
    Pick(Form, "C&ompare");
    auto* form = OpenView<TComparisonForm>();
    ASSERT_TRUE(form) << Told();
    EXPECT_EQ(Kinds(*form), "|");
    PickIn(*form, "&Open the file");
    PickIn(*form, "&Annotate");
    EXPECT_TRUE(support::OpenForms<TDocumentForm>().empty());
    EXPECT_FALSE(OpenView<TAnnotationForm>());
}

TEST_F(Views, SayWhoWroteEachLine) {
    support::WriteBytes(Copy + "\\a.c", "one\r\ntwo\r\nthree\r\n");
    Select("a.c");
    Pick(Form, "A&nnotate");
    auto* form = OpenView<TAnnotationForm>();
    ASSERT_TRUE(form) << Told();
    auto& lines = support::Part<TLineView>(*form, "Lines");
    ASSERT_EQ(lines.Count(), 3);
    EXPECT_EQ(lines.Line(1, 0).Text, "two");
    EXPECT_TRUE(lines.Line(0, 0).Margin.starts_with("1.1 ")) << lines.Line(0, 0).Margin;
    EXPECT_TRUE(lines.Line(2, 0).Margin.starts_with("1.2 ")) << lines.Line(2, 0).Margin;
    EXPECT_NE(lines.OnHint(2, 0).find("second"), std::string::npos) << lines.OnHint(2, 0);
    lines.SetCurrent(2);
    EXPECT_EQ(Status(*form), "Line 3: second");
    PickIn(*form, "As it was &before its revision");
    EXPECT_EQ(form->Text(), "a.c 1.1: who wrote its lines");
    PickIn(*form, "As it was &before its revision");
    EXPECT_EQ(Status(*form), "1.1 is the first revision");
    PickIn(*form, "Back &again");
    EXPECT_EQ(lines.Count(), 3);
    lines.SetCurrent(2);
    PickIn(*form, "&What was changed in its revision");
    auto* compared = OpenView<TComparisonForm>();
    ASSERT_TRUE(compared);
    EXPECT_EQ(compared->Text(), "a.c: 1.1 and 1.2");
}

TEST(Annotations, AreReadLineByLine) {
    const auto lines = ParseAnnotation(
        "\r\nAnnotations for a.c\r\n***************\r\n"
        "1.1          (somebody 04-May-26): text (x 04-May-99): y\r\n"
        "1.1.2.345678 (me       31-Dec-70): \n1.2          (a b      01-Foo-26):\n");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0],
              (TAnnotatedLine{"1.1", "somebody", EncodeDate(2026, 5, 4), "text (x 04-May-99): y"}));
    EXPECT_EQ(lines[1], (TAnnotatedLine{"1.1.2.345678", "me", EncodeDate(1970, 12, 31), ""}));
    EXPECT_EQ(lines[2], (TAnnotatedLine{"1.2", "a b", 0, ""}));
}

}  // namespace
