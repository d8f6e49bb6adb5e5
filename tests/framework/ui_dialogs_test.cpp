// The system's own dialogs.

#include <gtest/gtest.h>

#include <functional>

#include "framework/base/text.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/form.h"
#include "framework/ui/image_list.h"
#include "framework/ui/timer.h"
#include "support/Files.h"

namespace {

using namespace framework;

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    wchar_t name[16]{};
    ::GetClassNameW(window, name, 16);
    if (std::wstring_view(name) != L"#32770" || !::IsWindowVisible(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

// Answers the dialog that opens next, as soon as it can; ticks come to a dialog's own message loop,
// too.
class TAnswer {
public:
    explicit TAnswer(std::function<bool(HWND dialog)> answer) : Timer_(20) {
        Timer_.OnTimer = [this, answer](TObject*) {
            HWND dialog = nullptr;
            ::EnumThreadWindows(::GetCurrentThreadId(), FindDialog,
                                reinterpret_cast<LPARAM>(&dialog));
            if (dialog && answer(dialog))
                Timer_.SetEnabled(false);
        };
        Timer_.SetEnabled(true);
    }

private:
    TTimer Timer_;
};

bool Press(HWND dialog, WPARAM button) {
    return ::PostMessageW(dialog, WM_COMMAND, button, 0) != FALSE;
}

BOOL CALLBACK FindTree(HWND window, LPARAM found) {
    wchar_t name[32]{};
    ::GetClassNameW(window, name, 32);
    if (std::wstring_view(name) != WC_TREEVIEWW)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

// Whether a folder of that name is selected in the dialog.
bool ShowsFolder(HWND dialog, const std::string& name) {
    HWND tree = nullptr;
    ::EnumChildWindows(dialog, FindTree, reinterpret_cast<LPARAM>(&tree));
    wchar_t text[MAX_PATH]{};
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(::SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    item.pszText = text;
    item.cchTextMax = MAX_PATH;
    ::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return FromWide(text) == name;
}

TEST(SystemDialogs, GiveWhatIsChosen) {
    TForm form("behind");
    form.Show();
    const support::TTempFolder folder("dialogs");
    support::WriteBytes(folder / "tool.exe", "");
    std::string chosen = folder.Path();
    {
        const TAnswer answer([&](HWND dialog) {
            if (!ShowsFolder(dialog, folder.Path().substr(folder.Path().rfind('\\') + 1)))
                return false;
            EXPECT_FALSE(form.Enabled());
            wchar_t title[64]{};
            ::GetWindowTextW(dialog, title, 64);
            EXPECT_STREQ(title, L"Get directory");
            return Press(dialog, IDOK);
        });
        EXPECT_TRUE(DialogFunctions().SelectDirectory("Get directory", chosen));
    }
    EXPECT_EQ(chosen, folder.Path());
    EXPECT_TRUE(form.Enabled());
    {
        const TAnswer answer([](HWND dialog) { return Press(dialog, IDCANCEL); });
        EXPECT_FALSE(DialogFunctions().SelectDirectory("Get directory", chosen));
    }
    EXPECT_EQ(chosen, folder.Path());

    const std::string filter = "Executable files (*.exe)|*.EXE|bat files (*.bat)|*.BAT";
    chosen = folder / "tool.exe";
    {
        const TAnswer answer([](HWND dialog) { return Press(dialog, IDOK); });
        EXPECT_TRUE(DialogFunctions().OpenFile(filter, chosen));
    }
    EXPECT_EQ(chosen, folder / "tool.exe");
    chosen = folder / "new.exe";
    {
        const TAnswer answer([](HWND dialog) { return Press(dialog, IDOK); });
        EXPECT_TRUE(DialogFunctions().SaveFile(filter, chosen));
    }
    EXPECT_EQ(chosen, folder / "new.exe");
    {
        const TAnswer answer([](HWND dialog) { return Press(dialog, IDCANCEL); });
        EXPECT_FALSE(DialogFunctions().OpenFile(filter, chosen));
    }
    for (const WPARAM button : {IDYES, IDNO}) {
        const TAnswer answer([&](HWND dialog) { return Press(dialog, button); });
        EXPECT_EQ(DialogFunctions().AskYesNo("User Tools", "Correct?"), button == IDYES);
    }
}

}  // namespace
