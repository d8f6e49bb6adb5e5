// The status browser on working copies of the real client: what it shows of each file, when it asks
// the client and when it does not, and that it stays usable whatever the client does.

#include <gtest/gtest.h>
#include <richedit.h>

#include <algorithm>
#include <utility>

#include "core/CvsExecute.h"
#include "core/Cvs_utils.h"
#include "core/Progress_frm.h"
#include "cvs/Dialogs.h"
#include "framework/base/files.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/page_control.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/timer.h"
#include "framework/ui/tree_view.h"
#include "support/Drive.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Leaks.h"

namespace {

using namespace tandrel;
using namespace framework;
using support::Part;
using support::StepOf;
using support::WaitUntil;
using tests::ExpectForm;
using tests::Touch;

enum { Status, Log, Diff };
constexpr const char* Edits[] = {"StatusEdit", "LogEdit", "DiffEdit"};
constexpr const char* Entries[] = {"StatusItem", "LogItem", "DiffItem"};

/// Remembers what it is asked, and when. The log and the comparison need no client.
class TAskedObject : public tests::TSandboxObject {
public:
    using TSandboxObject::TSandboxObject;
    std::string LogFileEx(const std::string& file) override {
        Asked.emplace_back(::GetTickCount64(), file);
        return "the log of " + file + "\r\n";
    }
    std::string DiffFileEx(const std::string&) override { return Difference; }

    std::vector<std::pair<ULONGLONG, std::string>> Asked;
    std::string Difference;
};

/// The status page of an open browser.
class TPage {
public:
    explicit TPage(TForm& browser) : Form(StepOf(browser)) {}

    TTreeViewNode& Node(const std::string& name) const {
        for (const auto& node : Tree.Root().Children().front()->Children())
            if (node->Text() == name)
                return *node;
        throw std::runtime_error("There is no node " + name);
    }
    int RowOf(const std::string& caption) const {
        for (int i = 0; i < List.Count(); ++i)
            if (List.Row(i).Caption == caption)
                return i;
        throw std::runtime_error("There is no row " + caption);
    }
    void Select(const std::string& caption) const {
        List.Select(RowOf(caption));
        Rest();
    }
    /// Waits until the pages show what is selected.
    void Rest() const {
        EXPECT_TRUE(WaitUntil([&] {
            return !Part<TTimer>(Form, "Timer1").Enabled() &&
                   !Part<TTimer>(Form, "Timer2").Enabled();
        }));
    }
    /// The status names and colours of all rows.
    std::string Rows() const {
        std::string all;
        for (int i = 0; i < List.Count(); ++i)
            all += List.Row(i).Caption + ": " + List.Row(i).SubItems[0] + ", " +
                   Name(List.OnRowColor(List.Row(i))) + "\n";
        return all;
    }
    std::string NodeColour(const std::string& name) const {
        return Name(Tree.OnNodeColor(Node(name)));
    }
    /// Which pages can be used and which tabs show: "sld" and a capital for the active one.
    std::string PagesState() const {
        std::string state;
        for (int i = 0; i < Pages.PageCount(); ++i) {
            const bool active = i == Pages.ActivePageIndex();
            EXPECT_TRUE(Pages.Page(i).TabVisible() || (i == Diff && !Pages.Page(i).Enabled()));
            state += !Pages.Page(i).TabVisible() ? ""
                     : !Pages.Page(i).Enabled()  ? "-"
                                                 : std::string(1, (active ? "SLD" : "sld")[i]);
        }
        return state;
    }
    void ClickTab(int index) const {
        RECT tab{};
        ::SendMessageW(Pages.Handle(), TCM_GETITEMRECT, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(&tab));
        const LPARAM place = MAKELPARAM((tab.left + tab.right) / 2, (tab.top + tab.bottom) / 2);
        ::SendMessageW(Pages.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, place);
        ::SendMessageW(Pages.Handle(), WM_LBUTTONUP, 0, place);
    }
    void DoubleClick(int row) const {
        RECT place{};
        place.left = LVIR_LABEL;
        ::SendMessageW(List.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                       reinterpret_cast<LPARAM>(&place));
        List.Select(row);
        ::SendMessageW(List.Handle(), WM_LBUTTONDBLCLK, MK_LBUTTON,
                       MAKELPARAM(place.left + 2, (place.top + place.bottom) / 2));
    }
    void Choose(const char* entry) const { Part<TMenuItem>(Form, entry).Click(); }
    TRichEdit& Edit(int page) const { return Part<TRichEdit>(Form, Edits[page]); }
    std::string Text(int page) const { return Edit(page).Text(); }

    TForm& Form;
    TTreeView& Tree = Part<TTreeView>(Form, "TreeView1");
    TListView& List = Part<TListView>(Form, "ListView1");
    TPageControl& Pages = Part<TPageControl>(Form, "PageControl1");

private:
    static std::string Name(std::optional<COLORREF> colour) {
        if (!colour)
            return "usual";
        return *colour == 0x0000FF   ? "red"
               : *colour == 0x008000 ? "green"
               : *colour == 0        ? "black"
                                     : "?";
    }
};

/// For each line its colour as a letter; "*" when it is not all of one.
std::string ColoursOf(TRichEdit& edit) {
    std::string colours;
    const std::string text = edit.Text();
    for (std::size_t start = 0, lines = 0; start < text.size(); ++lines) {
        const std::size_t end = std::min(text.find("\r\n", start), text.size());
        // A line's end is one character to the control.
        CHARRANGE range{static_cast<LONG>(start - lines), static_cast<LONG>(end - lines)};
        ::SendMessageW(edit.Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        ::SendMessageW(edit.Handle(), EM_GETCHARFORMAT, SCF_SELECTION,
                       reinterpret_cast<LPARAM>(&format));
        const bool usual = (format.dwEffects & CFE_AUTOCOLOR) != 0;
        colours += !(format.dwMask & CFM_COLOR)     ? '*'
                   : usual                          ? '-'
                   : format.crTextColor == 0x0000FF ? 'r'
                   : format.crTextColor == 0xFF0000 ? 'b'
                                                    : '?';
        start = end + 2;
    }
    return colours;
}

/// Whether something of that colour is drawn in a control.
bool Draws(TControl& control, COLORREF colour) {
    ::RedrawWindow(control.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const HDC dc = ::GetDC(control.Handle());
    bool found = false;
    for (int y = 0; y < std::min(control.Height(), 160) && !found; ++y)
        for (int x = 0; x < std::min(control.Width(), 300) && !found; ++x)
            found = ::GetPixel(dc, x, y) == colour;
    ::ReleaseDC(control.Handle(), dc);
    return found;
}

class Browser : public testing::Test {
protected:
    Browser() {
        Sandbox.Write(Copy + "\\a.c", "one\r\nTWO\r\nthree\r\n");
        Touch(Copy + "\\a.c");
        Obj.OutputListLimit = 100000;
    }
    /// Opens the browser, lets it be used, and closes it as the user does.
    void Open(const std::function<void(TPage page)>& use) {
        ExpectForm("StatusBrowser", [use](TForm& form) {
            use(TPage(form));
            tests::PressKey(form, VK_ESCAPE);
        });
        EXPECT_FALSE(Sh_StatusBrowser(Obj));
    }
    /// How many runs of the client have ended.
    std::ptrdiff_t Runs() const {
        return std::ranges::count_if(Obj.Messages.Texts, [](const std::string& text) {
            return text.find("with Exitcode") != std::string::npos;
        });
    }
    /// What the client says to the command that was run last, without its empty lines.
    std::string OwnText(const std::string& commandLine) const {
        TStringList lines;
        lines.SetText(support::RunProcess("cvs" + commandLine, Copy).Output);
        ClearEmptyLines(lines);
        return lines.Text();
    }

    tests::TSandbox Sandbox;
    // Under another name than its module's.
    const std::string Copy = [this] {
        const std::string copy = Sandbox.CheckOut("work");
        MoveFileA(copy.c_str(), (copy + "-2").c_str());
        return copy + "-2";
    }();
    tests::TSandboxObject Obj{Sandbox, Copy};
};

TEST_F(Browser, ShowsEachFileInTheColourOfItsState) {
    for (const char* name : {"new.c", "stray.txt", "left.o", "sub\\own.txt"})
        Sandbox.Write(Copy + "\\" + name, "text\r\n");
    Sandbox.Write(Copy + "\\.cvsignore", "left.o\r\n");
    Sandbox.Client("-Q add new.c", Copy);
    DeleteFileA((Copy + "\\sub\\c.c").c_str());
    ExpectForm("StatusBrowser", [&](TForm& form) {
        auto& outer = Part<TPageControl>(form, "PageControl1");
        EXPECT_EQ(outer.Page(0).Text() + "|" + outer.Page(1).Text(), "Status|File include list");
        const TPage page(form);
        std::string listed = page.Rows();
        const auto has = [&](const std::string& row) {
            EXPECT_NE(listed.find(row + "\n"), std::string::npos) << row << " in\n" << listed;
        };
        EXPECT_EQ(page.List.Count(), 7) << listed;
        has("a.c: Changed in workspace, red");
        has("b.c: Not changed, black");
        has("new.c: Changed in workspace, red");
        has("stray.txt: Not in repository, green");
        has(".cvsignore: Not in repository, green");
        has("left.o: Ignore, black");
        has("sub: Directory, black");
        EXPECT_EQ(page.NodeColour("a.c") + page.NodeColour("stray.txt"), "redgreen");
        EXPECT_EQ(page.NodeColour("left.o") + page.NodeColour("b.c"), "usualusual");
        for (TControl* control :
             {static_cast<TControl*>(&page.Tree), static_cast<TControl*>(&page.List)}) {
            EXPECT_TRUE(Draws(*control, RGB(255, 0, 0)));
            EXPECT_TRUE(Draws(*control, RGB(0, 128, 0)));
        }
        const TListRow& row = page.List.Row(page.RowOf("b.c"));
        EXPECT_EQ(row.SubItems[1] + row.SubItems[4], "1.1.1.1b.c,v");
        EXPECT_NE(row.SubItems[2].find("20"), std::string::npos) << "the time";
        EXPECT_EQ(row.SubItems[3], Obj.Get_RepositoryPath(Copy));
        // A file that is gone ends what is known of its folder, and is told.
        EXPECT_NE(Obj.Messages.All().find("Error  reading " + Copy + "\\sub\\CVS\\Entries"),
                  std::string::npos);
        EXPECT_EQ(page.PagesState(), "--");
        page.Node("sub").SetSelected(true);
        page.Rest();
        EXPECT_EQ(page.Rows(), "own.txt: Not in repository, green\n");
        EXPECT_EQ(page.PagesState(), "--") << "a folder leaves the pages as they were";
        page.Select("own.txt");
        EXPECT_EQ(page.PagesState(), "--");
        page.Node("b.c").SetSelected(true);
        page.Rest();
        EXPECT_EQ(page.Rows(), "b.c: Not changed, black\n");
        EXPECT_EQ(page.PagesState(), "Sl") << "of a file itself the pages are filled";
        EXPECT_NE(page.Text(Status).find("Up-to-date"), std::string::npos) << page.Text(Status);
        page.Tree.Root().Children().front()->SetSelected(true);
        page.Rest();
        EXPECT_EQ(page.List.Count(), 7);
        EXPECT_EQ(page.PagesState(), "--") << "they tell of no file";

        // Opened from the list, by mouse and by keyboard, also below what was closed again.
        for (const bool mouse : {true, false}) {
            const auto open = [&](const std::string& row) {
                if (mouse)
                    return page.DoubleClick(page.RowOf(row));
                page.List.SetFocus();
                page.List.Select(page.RowOf(row));
                tests::PressKey(form, VK_RETURN);
            };
            open("sub");
            EXPECT_TRUE(WaitUntil([&] { return page.List.Count() == 1; }));
            EXPECT_TRUE(page.Node("sub").Selected() && page.Node("sub").Expanded());
            page.Node("sub").SetExpanded(false);
            page.Rest();
            open("own.txt");
            EXPECT_TRUE(WaitUntil([&] { return page.Node("sub").Expanded(); }));
            ASSERT_EQ(page.Node("sub").Children().size(), 1u);
            EXPECT_TRUE(page.Node("sub").Children().front()->Selected());
            page.Rest();
            EXPECT_EQ(page.Rows(), "own.txt: Not in repository, green\n");
            page.Node("sub").SetExpanded(false);
            page.Tree.Root().Children().front()->SetSelected(true);
            page.Rest();
        }
        tests::PressKey(form, VK_ESCAPE);
    });
    EXPECT_FALSE(Obj.StatusBrowser());
}

TEST_F(Browser, AsksTheClientOnceAndAgainWhenTold) {
    Obj.Load_WorkDirTree();
    Open([&](TPage page) {
        page.Select("a.c");
        EXPECT_EQ(Runs(), 3);
        EXPECT_EQ(page.PagesState(), "Sld");
        EXPECT_EQ(page.Text(Diff), OwnText(Obj.CommandLine));
        EXPECT_EQ(ColoursOf(page.Edit(Diff)), "------r-bb") << page.Text(Diff);
        page.ClickTab(Diff);
        page.Select("b.c");
        EXPECT_EQ(Runs(), 5);
        EXPECT_EQ(page.PagesState(), "sL") << "from a page that goes";
        EXPECT_EQ(page.Text(Log), OwnText(Obj.CommandLine));
        EXPECT_EQ(page.Text(Diff), "");
        page.Select("a.c");
        EXPECT_EQ(Runs(), 5) << "what was fetched is shown again";
        EXPECT_NE(page.Text(Status).find("Locally Modified"), std::string::npos);

        std::ptrdiff_t runs = Runs();
        const auto refresh = [&](TControl& control) {
            control.SetFocus();
            tests::PressKey(page.Form, VK_F5);
            EXPECT_TRUE(WaitUntil([&] { return Runs() == runs + 3; }));
            runs += 3;
        };
        refresh(page.List);
        for (const int index : {Status, Log, Diff}) {
            page.ClickTab(index);
            refresh(page.Edit(index));
        }
        EXPECT_EQ(Part<TMenuItem>(page.Form, "RefreschF51").Caption(), "Refresch(F5)");
        page.Choose("RefreschF51");
        EXPECT_EQ(Runs(), runs + 3) << "at once";
        page.Tree.SetFocus();
        tests::PressKey(page.Form, VK_F5);
        page.Rest();
        EXPECT_EQ(Runs(), runs + 3);
        EXPECT_EQ(page.PagesState(), "slD");
        page.Tree.OnClick(&page.Tree);
        page.Rest();
        EXPECT_EQ(page.PagesState(), "--") << "all files are listed, none is told of";
        EXPECT_EQ(page.Pages.ActivePageIndex(), Log);
    });
    const std::ptrdiff_t runs = Runs();
    Open([&](TPage page) {
        page.Select("a.c");
        EXPECT_EQ(Runs(), runs) << "another browser on the same model";
        EXPECT_FALSE(page.Text(Status).empty() || page.Text(Log).empty());
    });
}

TEST_F(Browser, LoadsThePagesThatAreWanted) {
    Obj.Load_WorkDirTree();
    Open([&](TPage page) {
        page.ClickTab(Log);
        EXPECT_EQ(page.Pages.ActivePageIndex(), Status) << "there is no page to turn to";
        for (const char* entry : Entries) {
            EXPECT_TRUE(Part<TMenuItem>(page.Form, entry).Checked());
            page.Choose(entry);
        }
        page.Select("a.c");
        EXPECT_EQ(Runs(), 0);
        EXPECT_EQ(page.PagesState(), "--");
        // Wanted from now on, and turned to before the timer comes.
        page.Choose(Entries[Log]);
        page.ClickTab(Log);
        EXPECT_EQ(Runs(), 1) << "this page alone";
        EXPECT_FALSE(page.Text(Log).empty());
        page.Rest();
        EXPECT_EQ(Runs(), 1);
        EXPECT_EQ(page.PagesState(), "-L");
        for (const int index : {Status, Diff})
            page.Choose(Entries[index]);
        page.Rest();
        EXPECT_EQ(page.PagesState(), "sLd");
        for (const int index : {Status, Log, Diff})
            page.Choose(Entries[index]);
        EXPECT_EQ(page.Text(Status) + page.Text(Log), "") << "at once";
        EXPECT_TRUE(page.Pages.Page(Diff).TabVisible());
        page.Rest();
        EXPECT_FALSE(page.Pages.Page(Diff).TabVisible());
        EXPECT_FALSE(page.Text(Diff).empty()) << "the comparison is not taken away";
        EXPECT_EQ(Runs(), 3);
    });
}

TEST_F(Browser, WaitsUntilTheSelectionRests) {
    for (int i = 0; i < 30; ++i)
        Sandbox.Write(Copy + "\\z" + std::to_string(i) + ".c", "z\r\n");
    TAskedObject obj(Sandbox, Copy);
    obj.Load_WorkDirTree();
    for (TWorkDirItem& item : obj.WorkDirTree)
        item.InRepository = !item.IsDirectory;
    ExpectForm("StatusBrowser", [&](TForm& form) {
        const TPage page(form);
        for (const int index : {Status, Diff})
            page.Choose(Entries[index]);
        page.Rest();
        std::vector<std::pair<ULONGLONG, std::string>> selected;
        page.List.SetFocus();
        for (int i = 0; i < page.List.Count(); ++i) {
            tests::PressKey(form, VK_DOWN);
            WaitUntil([&] { return page.List.SelectedIndex() == i; });
            selected.emplace_back(::GetTickCount64(), page.List.Row(i).Caption);
        }
        page.Rest();
        ASSERT_FALSE(obj.Asked.empty());
        EXPECT_TRUE(obj.Asked.back().second.ends_with("\\" + selected.back().second));
        // On a machine that is slow enough more files are rested on; each was for its time.
        for (const auto& [when, file] : obj.Asked) {
            const auto next = std::ranges::find_if(
                selected, [&, at = when](const auto& one) { return one.first > at; });
            ASSERT_NE(next, selected.begin());
            EXPECT_TRUE(file.ends_with("\\" + std::prev(next)->second)) << file;
            EXPECT_GE(when - std::prev(next)->first, 200u - 32u) << file;
        }
        form.ModalResult = mrCancel;
    });
    Sh_StatusBrowser(obj);
}

TEST_F(Browser, WaitsForASlowClientWithoutHidingItsProgress) {
    Sandbox.Write(Copy + "\\b.c", "another\r\n");
    Touch(Copy + "\\b.c");
    Obj.Load_WorkDirTree();
    const auto progress = [&]() -> TForm& { return *Obj.ExecuteClass->ProgressForm; };
    Open([&](TPage page) {
        page.Choose(Entries[Log]);
        page.Rest();
        // One delay is pending when the client begins, the other one begins meanwhile.
        Obj.CvsExecutable = support::FakeClient() + " say-and-sleep slow 3000 1 ";
        Obj.OnMessage = [&, log = Obj.OnMessage, first = true](TObject* sender,
                                                               const std::string& text) mutable {
            log(sender, text);
            if (std::exchange(first, false))
                page.List.Select(page.RowOf("b.c"));
        };
        bool marked = false;
        Obj.ExecuteClass->OnEndProgress = [&](TObject*) {
            marked = marked || Obj.ExecuteClass->Thread->CancelMark;
            Obj.CvsExecutable = "cvs";
        };
        TTimer press(2300);
        press.OnTimer = [&](TObject*) {
            press.SetEnabled(false);
            ASSERT_TRUE(progress().Visible() && progress().Enabled());
            tests::PressKey(progress(), VK_ESCAPE);
        };
        press.SetEnabled(true);
        page.Node("b.c").SetSelected(true);
        page.Choose("RefreschF51");
        EXPECT_TRUE(marked) << "the run can be cancelled";
        page.Rest();
        Obj.ExecuteClass->OnEndProgress = {};
        EXPECT_EQ(page.Rows(), "b.c: Changed in workspace, red\n");
        EXPECT_NE(page.Text(Diff).find("b.c"), std::string::npos) << page.Text(Diff);
        EXPECT_EQ(Runs(), 2) << Obj.Messages.All();
    });
}

TEST_F(Browser, ColoursComparisonsOfAllKindsOfLines) {
    TAskedObject obj(Sandbox, Copy);
    obj.CvsExecutable = support::FakeClient() + " exit 0 ";
    const auto expect = [&](const std::string& text, const std::string& colours) {
        obj.Load_WorkDirTree();
        obj.Difference = text;
        ExpectForm("StatusBrowser", [&](TForm& form) {
            const TPage page(form);
            page.Select("a.c");
            EXPECT_EQ(ColoursOf(page.Edit(Diff)), colours) << text;
            EXPECT_EQ(std::ranges::count(page.Text(Diff), '\n'), std::ranges::count(text, '\n'));
            form.ModalResult = mrCancel;
        });
        Sh_StatusBrowser(obj);
    };
    for (const std::string end : {"\r\n", "\n"}) {
        std::string text;
        // From the second character on a line has the colour of that one.
        for (const char* line :
             {"Index: a.c", "1,2c1", "< old <", "<", "---", "> new \xE4\xF6 <b>", "mid < dle >",
              "<< old", ">> new", "<> both", " < half", "   > none", "\\ No newline", "> last"})
            text += line + end;
        expect(text, "--rr-b-rb**--b");
        expect(text.substr(0, text.size() - end.size()), "--rr-b-rb**--b");
        expect("< first" + end + "< second" + end, "-r");
    }
    expect("", "");
}

TEST_F(Browser, StaysUsableWhateverTheClientDoes) {
    for (const std::string& client :
         {std::string("no-such-client "), support::FakeClient() + " exit 3 ",
          support::FakeClient() + " sleep 1300 ", support::FakeClient() + " exit 0 "}) {
        Obj.CvsExecutable = client;
        Obj.Load_WorkDirTree();
        Obj.Messages.Clear();
        const bool hangs = client.find("sleep") != std::string::npos;
        // What cannot be started has the system's reason behind it.
        const std::size_t each = client.starts_with("no-such") ? 2 : 1;
        Open([&](TPage page) {
            if (hangs)
                for (const int index : {Log, Diff})
                    page.Choose(Entries[index]);
            page.Select("a.c");
            const std::size_t messages = Obj.Messages.Texts.size();
            EXPECT_EQ(messages, (hangs ? 1 : 3) * each) << client << Obj.Messages.All();
            EXPECT_EQ(page.PagesState(), hangs ? "S-" : "Sld");
            EXPECT_TRUE(page.List.Enabled() && page.Form.Enabled());
            EXPECT_EQ(Trim(page.Text(Status)), "") << client;
            // Nothing was fetched: turning to a page tries again.
            if (!hangs) {
                page.ClickTab(Log);
                EXPECT_EQ(Obj.Messages.Texts.size(), messages + each);
            }
        });
    }
    // The real one, once the repository is gone.
    Obj.CvsExecutable = "cvs";
    support::DeleteFolder(Sandbox.Repository);
    Obj.Load_WorkDirTree();
    Open([&](TPage page) {
        page.Select("a.c");
        EXPECT_NE(page.Text(Log).find("[log aborted]"), std::string::npos) << page.Text(Log);
    });
}

TEST(BrowserOfNothing, LeavesNothingBehind) {
    const support::TTempFolder folder("nothing");
    TCvsObject cvs;
    cvs.Set_WorkingDirectory(folder.Path());
    const auto look = [&] {
        ExpectForm("StatusBrowser", [](TForm& form) {
            const TPage page(form);
            ASSERT_EQ(page.Tree.Root().Children().size(), 1u);
            EXPECT_EQ(page.Tree.Root().Children().front()->Text(), "Full list");
            EXPECT_EQ(page.List.Count(), 0);
            EXPECT_EQ(page.PagesState(), "--");
            form.ModalResult = mrCancel;
        });
        cvs.StatusBrowser();
    };
    look();
    const tests::TResources before = tests::CountResources();
    for (int i = 0; i < 100; ++i)
        look();
    const tests::TResources after = tests::CountResources();
    EXPECT_EQ(after.Windows, before.Windows);
    EXPECT_EQ(after.GdiObjects, before.GdiObjects);
    EXPECT_LE(after.Handles, before.Handles + 2);
}

}  // namespace
