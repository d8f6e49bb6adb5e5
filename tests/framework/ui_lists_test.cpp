// The controls that show a model: trees, lists and texts.

#include <gtest/gtest.h>
// clang-format off
#include <windows.h>
#include <richedit.h>
// clang-format on

#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/form.h"
#include "framework/ui/image_list.h"
#include "framework/ui/list_view.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/tree_view.h"
#include "tests/support/Japanese.h"

namespace {

using namespace framework;

TEST(TreeViews, ShowNodesAndForgetThem) {
    TForm form("tree");
    form.SetClientSize(200, 300);
    auto& tree = form.Make<TTreeView>("TreeView1", form);
    tree.SetAlign(TAlign::Client);
    form.Show();
    TObject data;
    int changes = 0, deleted = 0;
    tree.OnChange = [&](TObject*) { ++changes; };
    tree.OnDeletion = [&](TTreeViewNode&) { ++deleted; };
    tree.OnExpanding = [&](TTreeViewNode& node) {
        node.DeleteChildren();
        for (int i = 0; i < 3 && node.Data(); ++i) {
            TTreeViewNode& child = node.AddChild("child");
            child.SetImages(1, 1, 4);
            child.SetHasChildren(i == 0);
        }
        return node.Data() != nullptr;
    };
    {
        const TTreeUpdate update(tree);
        for (int i = 0; i < 1000; ++i) {
            TTreeViewNode& node = tree.Root().AddChild("n\xE4me");
            node.SetData(i == 0 ? &data : nullptr);
            node.SetHasChildren(true);
            if (i == 1)
                node.AddChild("below").AddChild("further below");
        }
    }
    EXPECT_EQ(::SendMessageW(tree.Handle(), TVM_GETCOUNT, 0, 0), 1002);
    TTreeViewNode& first = *tree.Root().Children()[0];
    TTreeViewNode& second = *tree.Root().Children()[1];
    EXPECT_EQ(first.Parent(), nullptr);
    first.SetSelected(true);
    EXPECT_EQ(tree.Selected(), &first);
    EXPECT_EQ(changes, 1);
    for (int round = 1; round <= 2; ++round) {
        first.SetExpanded(true);
        EXPECT_TRUE(first.Expanded());
        ASSERT_EQ(first.Children().size(), 3u);
        EXPECT_EQ(first.Children()[1]->Parent(), &first);
        first.SetExpanded(false);
    }
    EXPECT_EQ(deleted, 3) << "an expansion fills anew each time";
    TTreeViewNode& hidden = *first.Children()[1];
    hidden.SetSelected(true);
    EXPECT_EQ(deleted, 3) << "but not one that only shows the node that is selected";
    EXPECT_EQ(tree.Selected(), &hidden);
    EXPECT_TRUE(first.Expanded());
    first.SetExpanded(false);
    second.SetExpanded(true);
    EXPECT_FALSE(second.Expanded()) << "refused";
    EXPECT_EQ(deleted, 5);

    first.SetExpanded(true);
    first.Children()[2]->SetSelected(true);
    changes = 0;
    first.DeleteChildren();
    EXPECT_EQ(tree.Selected(), &first);
    EXPECT_EQ(changes, 1);
    first.SetSelected(false);
    EXPECT_EQ(tree.Selected(), nullptr);
    tree.Clear();
    EXPECT_EQ(deleted, 1011);
    EXPECT_EQ(::SendMessageW(tree.Handle(), TVM_GETCOUNT, 0, 0), 0);
    tree.Root().AddChild("one more");
    tree.Free();
    EXPECT_EQ(deleted, 1012);
}

void PressSpace(TControl& control) {
    control.SetFocus();
    ::SendMessageW(control.Handle(), WM_KEYDOWN, VK_SPACE, 1);
}

TEST(TreeViews, HearOfTheirStateImages) {
    TImageList images;
    images.Add(6,
               [](int i, HDC dc, const RECT& area) { TImageList::DrawCheckBox(dc, area, i == 5); });
    TForm form("states");
    form.SetClientSize(200, 100);
    auto& tree = form.Make<TTreeView>("TreeView1", form);
    tree.SetAlign(TAlign::Client);
    tree.SetStateImages(images.Get());
    int drawn = 0;
    tree.OnNodeColor = [&](TTreeViewNode& node) {
        ++drawn;
        node.SetStateImage(node.StateImage() == 0 ? 0 : 5);
        return std::optional<COLORREF>(RGB(255, 0, 0));
    };
    tree.OnStateClick = [](TTreeViewNode& node) { node.SetImages(0, 0, 3); };
    TTreeViewNode& node = tree.Root().AddChild("with an image");
    tree.Root().AddChild("without");
    node.SetImages(0, 0, 4);
    form.Show();
    Application().ProcessMessages();
    ::UpdateWindow(tree.Handle());
    EXPECT_EQ(node.StateImage(), 5);
    EXPECT_EQ(drawn, 3)
        << "two nodes, and once more for the image that changed while they were drawn";

    tree.OnNodeColor = nullptr;
    const RECT text = node.TextRect().value();
    const LPARAM place = MAKELPARAM(text.left - 10, (text.top + text.bottom) / 2);
    ::SendMessageW(tree.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, place);
    EXPECT_EQ(node.StateImage(), 3);
    node.SetStateImage(4);
    node.SetSelected(true);
    PressSpace(tree);
    EXPECT_EQ(node.StateImage(), 3);
    tree.Root().Children()[1]->SetSelected(true);
    PressSpace(tree);
    EXPECT_EQ(tree.Root().Children()[1]->StateImage(), 0);
}

TEST(ListViews, KeepTheirRowsThemselves) {
    TForm form("list");
    form.SetClientSize(400, 300);
    auto& list = form.Make<TListView>("ListView1", form);
    list.SetAlign(TAlign::Client);
    list.AddColumn("Filename", 150);
    list.AddColumn("Status", 170);
    EXPECT_EQ(::SendMessageW(list.Handle(), LVM_GETCOLUMNWIDTH, 1, 0), form.Scale(170));
    form.Show();
    int selections = 0, changes = 0;
    list.OnSelectItem = [&](TObject*) { ++selections; };
    list.OnChange = [&](TObject*) { ++changes; };
    TObject data;
    {
        const TListUpdate update(list.Rows());
        for (int i = 0; i < 5000; ++i)
            list.Rows().Add({"row" + std::to_string(i), {"\xC4"}, 0, i == 4000 ? &data : nullptr});
    }
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(::SendMessageW(list.Handle(), LVM_GETITEMCOUNT, 0, 0), 5000);
    wchar_t text[20]{};
    LVITEMW item{};
    item.iSubItem = 1;
    item.pszText = text;
    item.cchTextMax = 20;
    EXPECT_EQ(
        ::SendMessageW(list.Handle(), LVM_GETITEMTEXTW, 4999, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_STREQ(text, L"\u00C4");

    EXPECT_EQ(list.Selected(), nullptr);
    list.Select(4000);
    ASSERT_NE(list.Selected(), nullptr);
    EXPECT_EQ(list.Selected()->Data, &data);
    EXPECT_EQ(selections, 1);
    EXPECT_GT(::SendMessageW(list.Handle(), LVM_GETTOPINDEX, 0, 0), 3900);
    list.DeleteRow(10);
    EXPECT_EQ(list.Selected()->Data, &data) << "the selection follows its row";
    list.DeleteRow(3999);
    EXPECT_EQ(list.SelectedIndex(), -1);
    EXPECT_EQ(list.Count(), 4998);
    EXPECT_EQ(selections, 1);

    list.Select(0);
    for (const char c : {'r', 'o', 'w', '7', '3'})
        ::SendMessageW(list.Handle(), WM_CHAR, static_cast<WPARAM>(c), 1);
    EXPECT_EQ(list.Selected()->Caption, "row73") << "found by typing";
    selections = changes = 0;
    {
        const TListUpdate update(list.Rows());
        list.Rows().Clear();
        list.Rows().Add({"only", {}, 0, nullptr});
    }
    EXPECT_EQ(list.SelectedIndex(), -1);
    EXPECT_EQ(selections, 0) << "a new filling is no selection";
    EXPECT_EQ(changes, 1);
    list.Select(0);
    list.Select(-1);
    EXPECT_EQ(selections, 2);
    EXPECT_THROW(list.DeleteRow(1), std::out_of_range);
}

TEST(ListViews, HaveRowsTicked) {
    TForm form("ticks");
    form.SetClientSize(300, 200);
    auto& list =
        form.Make<TListView>("ListView1", form, TListViewStyle{.MultiSelect = true, .Ticks = true});
    list.SetAlign(TAlign::Client);
    list.AddColumn("Name", 150);
    form.Show();
    for (int i = 0; i < 4; ++i)
        list.Rows().Add(
            {.Caption = "a row " + std::to_string(i), .SubItems = {}, .Ticked = i == 2});
    int told = 0, selected = 0, opened = 0;
    list.OnTick = [&](TObject*) { ++told; };
    list.OnDblClick = [&](TObject*) { ++opened; };
    // What the system draws and tells those who read screens aloud.
    const auto shown = [&] {
        std::string boxes;
        for (WPARAM i = 0; i < 4; ++i) {
            const auto state = static_cast<UINT>(
                ::SendMessageW(list.Handle(), LVM_GETITEMSTATE, i, LVIS_STATEIMAGEMASK));
            EXPECT_EQ(state >> 12, list.Row(static_cast<int>(i)).Ticked ? 2u : 1u);
            boxes += state >> 12 == 2 ? 'x' : '-';
        }
        return boxes;
    };
    EXPECT_EQ(shown(), "--x-");
    const auto press = [&](WPARAM key) {
        ::PostMessageW(list.Handle(), WM_KEYDOWN, key, 1);
        Application().ProcessMessages();
    };
    list.SetFocus();
    list.Select(1);
    press(VK_SPACE);
    EXPECT_EQ(shown(), "-xx-");
    EXPECT_EQ(list.SelectedIndices(), (std::vector<int>{1}));
    list.SelectAll();
    press(VK_SPACE);
    EXPECT_EQ(shown(), "----") << "as the one with the focus";
    press(VK_SPACE);
    EXPECT_EQ(shown(), "xxxx");
    EXPECT_EQ(told, 3);
    EXPECT_EQ(list.SelectedIndices().size(), 4u);
    list.SetTicked({0, 9}, false);
    list.SetTicked({0}, false);
    EXPECT_EQ(shown(), "-xxx");
    EXPECT_EQ(told, 4) << "nothing has changed the second time";
    // The mouse: on the box, and beside it.
    list.Select(-1);
    list.OnSelectItem = [&](TObject*) { ++selected; };
    RECT label{};
    label.left = LVIR_LABEL;
    ::SendMessageW(list.Handle(), LVM_GETITEMRECT, 3, reinterpret_cast<LPARAM>(&label));
    const auto click = [&](int x, bool twice = false) {
        const LPARAM place = MAKELPARAM(x, (label.top + label.bottom) / 2);
        ::PostMessageW(list.Handle(), twice ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON, place);
        ::PostMessageW(list.Handle(), WM_LBUTTONUP, 0, place);
        Application().ProcessMessages();
    };
    click(label.left - 8);
    EXPECT_EQ(shown(), "-xx-");
    EXPECT_EQ(selected, 0);
    click(label.left - 8, true);
    EXPECT_EQ(shown(), "-xxx");
    EXPECT_EQ(opened, 0);
    click(label.left + 8);
    click(label.left + 8, true);
    EXPECT_EQ(shown(), "-xxx");
    EXPECT_GT(selected, 0);
    EXPECT_EQ(opened, 1);
}

TEST(ListViews, LetCaptionsBeEdited) {
    TForm form("edit");
    form.SetClientSize(200, 100);
    auto& list = form.Make<TListView>("ListView1", form,
                                      TListViewStyle{.Header = false, .EditCaptions = true});
    list.SetAlign(TAlign::Client);
    list.AddColumn("", 150);
    form.Show();
    list.Rows().Add({"before", {}, -1, nullptr});
    int edited = -1;
    list.OnEdited = [&](int index, const std::string&) { edited = index; };
    for (const WPARAM end : {VK_ESCAPE, VK_RETURN}) {
        list.Select(0);
        ::SendMessageW(list.Handle(), WM_KEYDOWN, VK_F2, 1);
        const HWND edit =
            reinterpret_cast<HWND>(::SendMessageW(list.Handle(), LVM_GETEDITCONTROL, 0, 0));
        ASSERT_TRUE(edit);
        ::SetWindowTextW(edit, L"\u00E4fter");
        ::SendMessageW(edit, WM_KEYDOWN, end, 1);
        EXPECT_EQ(list.Row(0).Caption, end == VK_RETURN ? "\xE4"
                                                          "fter"
                                                        : "before");
    }
    EXPECT_EQ(edited, 0);
}

std::string AllCharacters() {
    std::string text;
    for (int c = 1; c < 256; ++c)
        if (c != '\r' && c != '\n')
            text += static_cast<char>(c);
    return text;
}

TEST(Memos, GiveBackWhatWasSet) {
    TForm form("memo");
    form.SetClientSize(300, 200);
    auto& memo = form.Make<TMemo>("Memo1", form);
    memo.SetAlign(TAlign::Client);
    form.Show();
    int changes = 0;
    memo.OnChange = [&](TObject*) { ++changes; };
    std::string large;
    for (int i = 0; i < 20000; ++i)
        large += "a line of the text\r\n";
    for (const std::string& text :
         {AllCharacters(), std::string("{\\rtf1 not}"), std::string("one\r\n\r\ntwo\r\n"),
          std::string("\xEF\xBB\xBFmarked"), std::string(), large}) {
        memo.SetText(text);
        EXPECT_EQ(memo.Text(), text);
    }
    EXPECT_GE(changes, 5);
    auto& next = form.Make<TMemo>("Memo2", form);
    next.SetFocus();
    memo.SetFocus();
    memo.SetText("one\ntwo\rthree\r\n");
    EXPECT_TRUE(memo.Focused()) << "also when a long text went";
    EXPECT_EQ(::GetNextDlgTabItem(form.Handle(), memo.Handle(), FALSE), next.Handle());
    EXPECT_EQ(memo.Height(), 200);
    EXPECT_EQ(memo.Text(), "one\r\ntwo\r\nthree\r\n");
}

TEST(Memos, ShowALetterWhenItsSecondPieceHasCome) {
    TForm form("memo");
    auto& memo = form.Make<TMemo>("Memo1", form);
    const auto shown = [&] { return ::GetWindowTextLengthW(memo.Handle()); };
    const tests::Japanese letters;
    memo.Append("a\x83");
    EXPECT_EQ(shown(), 1);
    EXPECT_EQ(memo.Text(), "a\x83") << "nothing is lost for who reads it";
    memo.Append("");
    memo.Append("\\");
    EXPECT_EQ(shown(), 3) << "here the code page takes its bytes for two";
    memo.Append("\r");
    memo.Append("\n\x83");
    EXPECT_EQ(memo.Text(), "a\x83\\\r\n\x83");
    memo.SetText("b");
    memo.Append("c");
    EXPECT_EQ(memo.Text(), "bc");
}

// Types as the keyboard does, through the dialog that the form is.
void Type(TControl& control, WPARAM key) {
    ::PostMessageW(control.Handle(), WM_KEYDOWN, key, 1);
    ::PostMessageW(control.Handle(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    Application().ProcessMessages();
}

TEST(Memos, AreTypedInto) {
    TForm form("memo");
    form.SetClientSize(300, 200);
    auto& memo = form.Make<TMemo>("Memo1", form);
    memo.SetBounds(0, 0, 300, 100);
    auto& ok = form.Make<TButton>("Ok", form, "Ok", TButtonRole::Default);
    ok.SetBounds(0, 110, 75, 25);
    int pressed = 0;
    ok.OnClick = [&](TObject*) { ++pressed; };
    form.Show();
    memo.SetFocus();
    Type(memo, 'A');
    Type(memo, VK_RETURN);
    Type(memo, 'B');
    EXPECT_EQ(memo.Text(), "a\r\nb");
    ::SendMessageW(memo.Handle(), WM_KEYDOWN, VK_HOME, 1);
    Type(memo, VK_TAB);
    EXPECT_TRUE(ok.Focused());
    memo.SetFocus();
    BYTE keys[256]{};
    keys[VK_CONTROL] = 0x80;
    ::SetKeyboardState(keys);
    Type(memo, 'A');
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
    Type(memo, 'C');
    EXPECT_EQ(memo.Text(), "c") << "it took the place of all";
    EXPECT_EQ(pressed, 0);
    memo.SetReadOnly(true);
    Type(memo, 'D');
    Type(memo, VK_RETURN);
    EXPECT_EQ(memo.Text(), "c");
    EXPECT_EQ(pressed, 1) << "a text that cannot be changed has no use for Enter";
}

COLORREF ColorAt(TRichEdit& edit, LONG character) {
    CHARRANGE range{character, character + 1};
    ::SendMessageW(edit.Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    ::SendMessageW(edit.Handle(), EM_GETCHARFORMAT, SCF_SELECTION,
                   reinterpret_cast<LPARAM>(&format));
    return format.dwEffects & CFE_AUTOCOLOR ? 0 : format.crTextColor;
}

TEST(RichEdits, ColourRanges) {
    TForm form("rich");
    form.SetClientSize(300, 200);
    auto& edit = form.Make<TRichEdit>("DiffEdit", form);
    edit.SetAlign(TAlign::Client);
    edit.SetReadOnly(true);
    form.Show();
    const std::string text =
        "1c1\r\n< \xE4lt\r\n---\r\n> neu\r\n\r\n  a\tb {c} \\par \x1B[1m \\'e4 \x80 1\\u8 2";
    edit.View().SetText(text);
    CHARFORMAT2W before{}, after{};
    before.cbSize = after.cbSize = sizeof before;
    ::SendMessageW(edit.Handle(), EM_GETCHARFORMAT, 0, reinterpret_cast<LPARAM>(&before));
    edit.ColorRanges(
        {{text.find("< \xE4"), 5, RGB(255, 0, 0)}, {text.find("> n"), 5, RGB(0, 0, 255)}});
    EXPECT_EQ(edit.Text(), text);
    std::string colours;
    for (LONG i = 0; i < 19; ++i) {
        const COLORREF color = ColorAt(edit, i);
        colours += color == RGB(255, 0, 0) ? 'r' : color == RGB(0, 0, 255) ? 'b' : '.';
    }
    EXPECT_EQ(colours, "....rrrrr.....bbbbb") << "line ends count one in the control";
    ::SendMessageW(edit.Handle(), EM_GETCHARFORMAT, SCF_SELECTION,
                   reinterpret_cast<LPARAM>(&after));
    EXPECT_STREQ(after.szFaceName, before.szFaceName);
    EXPECT_EQ(after.yHeight, before.yHeight);
    // Whatever the ranges are, the text shows once; where they overlap the last one counts.
    edit.View().SetText("one\r\ntwo");
    edit.ColorRanges({{4, 100, RGB(255, 0, 0)},
                      {1, 3, RGB(0, 0, 255)},
                      {6, 1, RGB(0, 0, 255)},
                      {2, 0, RGB(255, 0, 0)},
                      {9, 5, RGB(255, 0, 0)}});
    EXPECT_EQ(edit.Text(), "one\r\ntwo");
    const LONG red[] = {4, 6}, blue[] = {1, 2, 5};
    for (const LONG i : red)
        EXPECT_EQ(ColorAt(edit, i), RGB(255, 0, 0)) << i;
    for (const LONG i : blue)
        EXPECT_EQ(ColorAt(edit, i), RGB(0, 0, 255)) << i;
    EXPECT_EQ(ColorAt(edit, 0), 0u);
    for (const char* end : {"", "\r\n", "\r\n\r\n"}) {
        edit.View().SetText(end);
        edit.ColorRanges({});
        EXPECT_EQ(edit.Text(), end);
    }
    edit.View().SetText("fresh");
    EXPECT_EQ(ColorAt(edit, 0), 0u) << "a new text has no colours";
    edit.Clear();
    EXPECT_EQ(edit.Text(), "");
}

}  // namespace
