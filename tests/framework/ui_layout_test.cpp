// The controls that share a form's room out: pages, splitters, menus, tool bars.

#include <gtest/gtest.h>

#include <vector>

#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/form.h"
#include "framework/ui/image_list.h"
#include "framework/ui/labels.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/page_control.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/splitter.h"
#include "framework/ui/tool_bar.h"
#include "framework/ui/tree_view.h"

namespace {

using namespace framework;

void Type(WPARAM key, std::initializer_list<int> modifiers) {
    BYTE keys[256]{};
    for (const int modifier : modifiers)
        keys[modifier] = 0x80;
    ::SetKeyboardState(keys);
    ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1);
    Application().ProcessMessages();
    ::SetKeyboardState(std::vector<BYTE>(256).data());
}

TEST(PageControls, TurnTheirPages) {
    TForm form("pages");
    form.SetClientSize(300, 200);
    auto& pages = form.Make<TPageControl>("PageControl1", form);
    pages.SetBounds(0, 0, 300, 150);
    TTabSheet* sheets[3];
    TButton* buttons[3];
    for (int i = 0; i < 3; ++i) {
        const std::string number = std::to_string(i + 1);
        sheets[i] = &form.Make<TTabSheet>("TabSheet" + number, pages, "Page " + number);
        buttons[i] = &form.Make<TButton>("B" + number, *sheets[i], "B");
    }
    auto& close = form.Make<TButton>("Close", form, "Close");
    close.SetBounds(0, 160, 75, 25);
    form.Show();
    EXPECT_EQ(pages.ActivePageIndex(), 0);
    EXPECT_TRUE(sheets[0]->Visible());
    EXPECT_FALSE(sheets[1]->Visible());
    EXPECT_GT(sheets[1]->Width(), 250) << "hidden pages have their size, too";
    EXPECT_EQ(&buttons[0]->Form(), &form);

    int changes = 0;
    bool allowed = true;
    pages.OnChange = [&](TObject*) { ++changes; };
    pages.OnChanging = [&](bool& allow) { allow = allowed; };
    pages.SetActivePageIndex(2);
    EXPECT_EQ(changes, 0);
    sheets[2]->SetTabVisible(false);
    EXPECT_EQ(pages.ActivePageIndex(), 1);
    EXPECT_TRUE(sheets[1]->Visible());
    pages.SetActivePageIndex(2);
    EXPECT_EQ(pages.ActivePageIndex(), 1) << "there is nothing to show";
    EXPECT_EQ(::SendMessageW(pages.Handle(), TCM_GETITEMCOUNT, 0, 0), 2);

    buttons[1]->SetFocus();
    Type(VK_TAB, {VK_CONTROL});
    EXPECT_EQ(pages.ActivePageIndex(), 0);
    EXPECT_TRUE(buttons[0]->Focused()) << "the keyboard follows";
    Type(VK_PRIOR, {VK_CONTROL});
    EXPECT_EQ(pages.ActivePageIndex(), 1);
    sheets[2]->SetTabVisible(true);
    close.SetFocus();
    Type(VK_TAB, {VK_CONTROL});
    EXPECT_EQ(pages.ActivePageIndex(), 2) << "also from beside the pages";
    Type(VK_TAB, {VK_CONTROL, VK_SHIFT});
    EXPECT_EQ(pages.ActivePageIndex(), 1);
    EXPECT_TRUE(close.Focused());
    EXPECT_EQ(changes, 4);
    allowed = false;
    Type(VK_TAB, {VK_CONTROL});
    allowed = true;
    EXPECT_EQ(pages.ActivePageIndex(), 1) << "refused";
    pages.SetFocus();
    Type(VK_LEFT, {});
    EXPECT_EQ(pages.ActivePageIndex(), 0);
    for (TControl* next : {static_cast<TControl*>(buttons[0]), static_cast<TControl*>(&close),
                           static_cast<TControl*>(&pages)}) {
        Type(VK_TAB, {});
        EXPECT_TRUE(next->Focused()) << next->Name();
    }
    buttons[0]->SetFocus();
    Type(VK_TAB, {VK_SHIFT});
    EXPECT_TRUE(pages.Focused());
    Type(VK_TAB, {VK_SHIFT});
    EXPECT_TRUE(close.Focused());
    sheets[0]->SetEnabled(false);
    for (TControl* next : {static_cast<TControl*>(&pages), static_cast<TControl*>(&close)}) {
        Type(VK_TAB, {});
        EXPECT_TRUE(next->Focused()) << next->Name() << ": there are other pages to turn to";
    }
    sheets[0]->SetEnabled(true);

    sheets[0]->Free();
    EXPECT_EQ(pages.ActivePageIndex(), 0);
    EXPECT_EQ(pages.Page(0).Text(), "Page 2");
    EXPECT_TRUE(sheets[1]->Visible());
    pages.Free();
    sheets[1]->Free();
}

TEST(Splitters, KeepBothSidesUsable) {
    TForm form("split", TFormBorder::Sizeable);
    form.SetClientSize(400, 300);
    const int minimum = form.Scale(30);
    auto& left = form.Make<TPanel>("Panel1", form);
    left.SetBounds(0, 0, 177, 10);
    left.SetAlign(TAlign::Left);
    auto& splitter = form.Make<TSplitter>("Splitter1", form, left, TAlign::Left);
    TControl& right = form.Make<TPanel>("Panel2", form);
    right.SetAlign(TAlign::Client);
    auto& top = form.Make<TPanel>("Panel3", right);
    top.SetBounds(0, 0, 10, 100);
    top.SetAlign(TAlign::Top);
    auto& across = form.Make<TSplitter>("Splitter2", right, top, TAlign::Top);
    auto& rest = form.Make<TPanel>("Panel4", right);
    rest.SetAlign(TAlign::Client);
    form.Show();
    const auto drag = [](TControl& bar, int by) {
        const bool vertical = bar.Width() < bar.Height();
        ::SendMessageW(bar.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
        ::SendMessageW(bar.Handle(), WM_MOUSEMOVE, MK_LBUTTON,
                       vertical ? MAKELPARAM(by, 0) : MAKELPARAM(0, by));
        ::SendMessageW(bar.Handle(), WM_LBUTTONUP, 0, 0);
    };
    EXPECT_EQ(left.Width(), 177);
    drag(splitter, 23);
    EXPECT_EQ(left.Width(), 200);
    EXPECT_EQ(right.Width(), 200 - splitter.Width());
    drag(across, -20);
    EXPECT_EQ(top.Height(), 80);
    EXPECT_EQ(rest.Height(), 220 - across.Height());
    drag(splitter, 1000);
    EXPECT_EQ(right.Width(), minimum);
    drag(splitter, -1000);
    EXPECT_EQ(left.Width(), minimum);
    drag(splitter, 200 - minimum);
    form.SetClientSize(150, 60);
    EXPECT_EQ(right.Width(), minimum) << "the form is small";
    EXPECT_EQ(top.Height(), std::min(minimum, (60 - across.Height()) / 2));
    form.SetClientSize(400, 300);
    EXPECT_EQ(left.Width(), 200) << "and large again";
    EXPECT_EQ(top.Height(), 80);
    left.SetBounds(0, 0, 120, 300);
    form.SetClientSize(410, 310);
    EXPECT_EQ(left.Width(), 120) << "the program's word counts";
}

// Chooses from the menu that opens next: the keys wait for it.
void Choose(HWND owner, std::initializer_list<WPARAM> keys) {
    for (const WPARAM key : keys)
        ::PostMessageW(owner, WM_KEYDOWN, key, 1);
}

TEST(PopupMenus, OpenAtTheirControls) {
    TForm form("popup");
    form.SetClientSize(200, 100);
    TControl& panel = form.Make<TPanel>("Panel1", form);
    panel.SetBounds(0, 0, 200, 100);
    auto& button = form.Make<TButton>("B", panel, "B");
    button.SetBounds(0, 0, 75, 25);
    auto& menu = form.Make<TPopupMenu>("PopupMenu1");
    auto& refresh = form.Make<TMenuItem>("RefreschF51", menu, "Refresh(F5)");
    auto& options = form.Make<TMenuItem>("Proper1", menu, "Options");
    auto& status = form.Make<TMenuItem>("StatusItem", options, "Show status");
    auto& log = form.Make<TMenuItem>("LogItem", options, "Show &log", TShortcut{'L', true, true});
    EXPECT_EQ(form.Find<TMenuItem>("LogItem"), &log);
    EXPECT_EQ((TShortcut{VK_F5, false, true}.Text()), "Shift+F5");
    panel.SetPopupMenu(&menu);
    form.Show();
    button.SetFocus();
    std::string chosen;
    for (TMenuItem* item : {&refresh, &status, &log})
        item->OnClick = [&](TObject* sender) {
            chosen += static_cast<TMenuItem*>(sender)->Name() + ' ';
        };
    status.SetEnabled(false);
    const LPARAM keyboard = -1;
    const auto open = [&](std::initializer_list<WPARAM> keys) {
        Choose(panel.Handle(), keys);
        ::SendMessageW(button.Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(button.Handle()),
                       keyboard);
        Application().ProcessMessages();
    };
    open({VK_DOWN, VK_RETURN});
    open({VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN});
    open({VK_DOWN, VK_DOWN, VK_RIGHT, VK_RETURN, VK_ESCAPE, VK_ESCAPE, VK_ESCAPE});
    open({VK_ESCAPE});
    EXPECT_EQ(chosen, "RefreschF51 LogItem ") << "at the panel, for the button on it";
    refresh.Free();
    open({VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN});
    EXPECT_EQ(chosen, "RefreschF51 LogItem LogItem ");
}

TEST(PopupMenus, OpenByMouseAndKeyboard) {
    TForm form("popup");
    form.SetClientSize(600, 100);
    auto& menu = form.Make<TPopupMenu>("PopupMenu1");
    int chosen = 0;
    menu.Add("item").OnClick = [&](TObject*) { ++chosen; };
    auto& tree = form.Make<TTreeView>("TreeView1", form);
    tree.Root().AddChild("node");
    auto& list = form.Make<TListView>("ListView1", form);
    list.AddColumn("Filename", 100);
    list.Rows().Add({"row", {}, 0, nullptr});
    auto& edit = form.Make<TRichEdit>("StatusEdit", form);
    edit.SetReadOnly(true);
    form.Show();
    const LPARAM point = MAKELPARAM(20, 30);
    int left = 0;
    for (TControl* control : std::initializer_list<TControl*>{&tree, &list, &edit}) {
        control->SetPopupMenu(&menu);
        control->SetBounds(left, 0, 200, 100);
        left += 200;
        control->SetFocus();
        chosen = 0;
        ::PostMessageW(control->Handle(), WM_RBUTTONDOWN, MK_RBUTTON, point);
        ::PostMessageW(control->Handle(), WM_RBUTTONUP, 0, point);
        Choose(control->Handle(), {VK_DOWN, VK_RETURN});
        Application().ProcessMessages();
        EXPECT_EQ(chosen, 1) << control->Name();
        ::PostMessageW(control->Handle(), WM_KEYUP, VK_APPS, 1);
        Choose(control->Handle(), {VK_DOWN, VK_RETURN});
        Application().ProcessMessages();
        EXPECT_EQ(chosen, 2) << control->Name();
    }
}

TEST(MainMenus, AreRebuiltAtAnyTime) {
    TForm form("host", TFormBorder::Main);
    auto& menu = form.Make<TMainMenu>("MainMenu1", form);
    auto& file = form.Make<TMenuItem>("File1", menu, "&File");
    auto& tools = form.Make<TMenuItem>("Tools1", menu, "&Tools");
    form.SetClientSize(300, 200);
    form.Show();
    EXPECT_EQ(form.ClientSize().cy, 200) << "the bar is no part of it";
    std::string chosen;
    const auto note = [&](TObject* sender) {
        chosen += static_cast<TMenuItem*>(sender)->Caption() + ' ';
    };
    TMenuItem& exit = file.Add("E&xit", {'Q', true});
    exit.OnClick = note;
    for (int round = 0; round < 2; ++round) {
        tools.Clear();
        for (int i = 0; i < 3; ++i)
            tools.Add("tool" + std::to_string(i)).OnClick = note;
        tools.AddSeparator();
    }
    EXPECT_EQ(tools.Items().size(), 4u);
    form.Show();
    const auto open = [&](std::initializer_list<WPARAM> keys) {
        Choose(form.Handle(), keys);
        ::SendMessageW(form.Handle(), WM_SYSCOMMAND, SC_KEYMENU, 't');
        Application().ProcessMessages();
    };
    open({VK_DOWN, VK_RETURN});
    tools.Items()[1]->SetEnabled(false);
    open({VK_DOWN, VK_DOWN, VK_RETURN, VK_ESCAPE, VK_ESCAPE, VK_ESCAPE});
    EXPECT_EQ(chosen, "tool0 ");
    form.SetFocus();
    Type('Q', {VK_CONTROL});
    Type('Q', {});
    exit.SetEnabled(false);
    Type('Q', {VK_CONTROL});
    EXPECT_EQ(chosen, "tool0 E&xit ");
    tools.Free();
    EXPECT_EQ(::GetMenuItemCount(::GetMenu(form.Handle())), 1);
    menu.Free();
    EXPECT_EQ(::GetMenu(form.Handle()), nullptr);
}

TEST(ToolBars, HearMouseAndKeyboard) {
    TImageList images;
    images.Add(3, [](int, HDC dc, const RECT& area) { TImageList::DrawCheckBox(dc, area, false); });
    TForm form("bar");
    form.SetClientSize(200, 100);
    auto& bar = form.Make<TToolBar>("ToolBar1", form, images);
    bar.SetAlign(TAlign::Top);
    EXPECT_GE(bar.Height(), images.Size() + form.Scale(8));
    std::string pressed;
    TToolButton* buttons[3];
    for (int i = 0; i < 3; ++i) {
        buttons[i] = &form.Make<TToolButton>("B" + std::to_string(i), bar, i, L"\u041E\u0442 ");
        buttons[i]->OnClick = [&pressed, i](TObject*) { pressed += std::to_string(i); };
    }
    buttons[1]->SetEnabled(false);
    form.Show();
    RECT place{};
    ::SendMessageW(bar.Handle(), TB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    ::SendMessageW(bar.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, point);
    ::SendMessageW(bar.Handle(), WM_LBUTTONUP, 0, point);
    EXPECT_EQ(pressed, "2");
    buttons[1]->Click();
    form.Make<TButton>("B", form, "B").SetFocus();
    bar.SetFocus();
    Type(VK_SPACE, {});
    Type(VK_RIGHT, {});
    Type(VK_RETURN, {});
    Type(VK_LEFT, {});
    Type(VK_SPACE, {});
    EXPECT_EQ(pressed, "2020") << "over the disabled one";
    wchar_t hint[10]{};
    NMTBGETINFOTIPW ask{};
    ask.hdr = {bar.Handle(), 0, static_cast<UINT>(TBN_GETINFOTIPW)};
    ask.pszText = hint;
    ask.cchTextMax = 10;
    ::SendMessageW(bar.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&ask));
    EXPECT_STREQ(hint, L"\u041E\u0442 ");
    wchar_t name[10]{};
    ::SendMessageW(bar.Handle(), TB_GETBUTTONTEXTW, 2, reinterpret_cast<LPARAM>(name));
    EXPECT_STREQ(name, L"\u041E\u0442 ") << "what it is called by programs that read aloud";
    buttons[0]->Free();
    EXPECT_EQ(::SendMessageW(bar.Handle(), TB_BUTTONCOUNT, 0, 0), 2);
    bar.Free();
    buttons[1]->SetEnabled(true);
}

}  // namespace
