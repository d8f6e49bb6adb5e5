#include "framework/ui/menus.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/text.h"
#include "framework/ui/edits.h"
#include "framework/ui/form.h"
#include "framework/ui/rich_edit.h"

namespace framework {
namespace {

std::string KeyName(WORD key) {
    if (key >= VK_F1 && key <= VK_F12)
        return "F" + std::to_string(key - VK_F1 + 1);
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z'))
        return std::string(1, static_cast<char>(key));
    constexpr std::pair<WORD, const char*> Names[] = {
        {VK_INSERT, "Ins"}, {VK_DELETE, "Del"}, {VK_RETURN, "Enter"}, {VK_SPACE, "Space"}};
    for (const auto& [which, name] : Names)
        if (which == key)
            return name;
    return {};
}

struct TMenuPolicy {
    using Type = HMENU;
    static Type None() noexcept { return nullptr; }
    static void Close(Type menu) noexcept { ::DestroyMenu(menu); }
};
using MenuHandle = UniqueHandle<TMenuPolicy>;

UINT Grey(bool enabled) {
    return enabled ? MF_ENABLED : MF_GRAYED;
}

}  // namespace

std::string TShortcut::Text() const {
    if (Key == 0)
        return {};
    return std::string(Ctrl ? "Ctrl+" : "") + (Shift ? "Shift+" : "") + KeyName(Key);
}

TMenuItem::TMenuItem(TMenuItem& parent, std::string caption, TShortcut shortcut)
    : Parent_(&parent), Caption_(std::move(caption)), Shortcut_(shortcut) {
    Parent_->Items_.push_back(this);
    Parent_->ItemsChanged();
}

TMenuItem::~TMenuItem() {
    FreeComponents();
    for (TMenuItem* item : Items_)
        item->Parent_ = nullptr;
    if (!Parent_)
        return;
    Root().Forget(*this);
    std::erase(Parent_->Items_, this);
    Parent_->ItemsChanged();
}

TMenuItem& TMenuItem::Add(const std::string& caption, TShortcut shortcut) {
    return Make<TMenuItem>({}, *this, caption, shortcut);
}

void TMenuItem::Clear() {
    while (!Items_.empty())
        Items_.back()->Free();
}

TMenuItem& TMenuItem::Root() {
    TMenuItem* root = this;
    while (root->Parent_)
        root = root->Parent_;
    return *root;
}

void TMenuItem::SetEnabled(bool enabled) {
    if (enabled == Enabled_)
        return;
    Enabled_ = enabled;
    if (Parent_)
        Parent_->ItemsChanged();
}

void TMenuItem::Click() {
    if (Enabled_ && OnClick)
        OnClick(this);
}

void TMenuItem::Fill(HMENU menu, std::vector<TMenuItem*>& commands) const {
    for (TMenuItem* item : Items_) {
        if (item->Caption_ == "-") {
            ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const std::string keys = item->Shortcut_.Text();
        const std::wstring text = ToWide(item->Caption_ + (keys.empty() ? "" : "\t" + keys));
        UINT_PTR what = FirstCommand + commands.size();
        UINT flags = MF_STRING | Grey(item->Enabled_);
        if (item->Items_.empty()) {
            commands.push_back(item);
            flags |= static_cast<UINT>(item->Checked_ ? MF_CHECKED : MF_UNCHECKED);
        } else {
            const HMENU below = ::CreatePopupMenu();
            item->Fill(below, commands);
            what = reinterpret_cast<UINT_PTR>(below);
            flags |= MF_POPUP;
        }
        ::AppendMenuW(menu, flags, what, text.c_str());
    }
}

TMenuItem* TMenuItem::FindShortcut(const TShortcut& keys) const {
    for (TMenuItem* item : Items_) {
        if (!item->Enabled_)
            continue;
        const TShortcut& own = item->Shortcut_;
        if (own.Key == keys.Key && own.Ctrl == keys.Ctrl && own.Shift == keys.Shift)
            return item;
        if (TMenuItem* below = item->FindShortcut(keys))
            return below;
    }
    return nullptr;
}

void TPopupMenu::Popup(TControl& control, POINT place) {
    const MenuHandle menu(::CreatePopupMenu());
    if (!menu)
        RaiseLastOSError();
    Commands_.clear();
    Fill(menu.Get(), Commands_);
    const UINT command = static_cast<UINT>(::TrackPopupMenuEx(
        menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, control.Handle(), nullptr));
    const std::vector<TMenuItem*> commands = std::exchange(Commands_, {});
    if (command >= FirstCommand && command - FirstCommand < commands.size())
        if (TMenuItem* const item = commands[command - FirstCommand])
            item->Click();
}

void TPopupMenu::Forget(TMenuItem& item) {
    // An item can go while the menu that shows it is open.
    std::ranges::replace(Commands_, &item, static_cast<TMenuItem*>(nullptr));
}

TMainMenu::TMainMenu(TForm& form) : Form_(form) {
    Form_.Menu_ = this;
    ::SetMenu(Form_.Handle(), ::CreateMenu());
}

TMainMenu::~TMainMenu() {
    Form_.Menu_ = nullptr;
    if (!Form_.Handle())
        return;
    const MenuHandle bar(::GetMenu(Form_.Handle()));
    ::SetMenu(Form_.Handle(), nullptr);
}

void TMainMenu::ItemsChanged() {
    const HMENU bar = ::GetMenu(Form_.Handle());
    while (::GetMenuItemCount(bar) > 0)
        ::DeleteMenu(bar, 0, MF_BYPOSITION);
    for (const TMenuItem* item : Items())
        ::AppendMenuW(bar, MF_POPUP | Grey(item->Enabled()),
                      reinterpret_cast<UINT_PTR>(::CreatePopupMenu()),
                      ToWide(item->Caption()).c_str());
    ::DrawMenuBar(Form_.Handle());
}

void TMainMenu::Opening(HMENU menu) {
    const HMENU bar = ::GetMenu(Form_.Handle());
    for (int i = 0; i < static_cast<int>(Items().size()); ++i) {
        if (::GetSubMenu(bar, i) != menu)
            continue;
        while (::GetMenuItemCount(menu) > 0)
            ::DeleteMenu(menu, 0, MF_BYPOSITION);
        Commands_.clear();
        Items()[static_cast<std::size_t>(i)]->Fill(menu, Commands_);
    }
}

void TMainMenu::Forget(TMenuItem& item) {
    std::ranges::replace(Commands_, &item, static_cast<TMenuItem*>(nullptr));
}

bool TMainMenu::Choose(UINT command) {
    if (command < FirstCommand || command - FirstCommand >= Commands_.size())
        return false;
    if (TMenuItem* const item = Commands_[command - FirstCommand])
        item->Click();
    return true;
}

namespace {

/// Whether the key means something to the text that has the focus.
bool IsKeyOfText(WPARAM key, bool ctrl) {
    const TControl* const focused = TControl::FromHandle(::GetFocus());
    if (!dynamic_cast<const TEdit*>(focused) && !dynamic_cast<const TTextControl*>(focused))
        return false;
    constexpr std::string_view WithCtrl = "ACVXYZ";
    if (ctrl && key < 0x80 && WithCtrl.find(static_cast<char>(key)) != std::string_view::npos)
        return true;
    return key == VK_DELETE || key == VK_INSERT || key == VK_BACK || (key == VK_RETURN && !ctrl);
}

}  // namespace

bool TMainMenu::Press(WPARAM key) {
    const bool ctrl = ::GetKeyState(VK_CONTROL) < 0;
    if (::GetKeyState(VK_MENU) < 0 || IsKeyOfText(key, ctrl))
        return false;
    TMenuItem* const item =
        FindShortcut({static_cast<WORD>(key), ctrl, ::GetKeyState(VK_SHIFT) < 0});
    if (item)
        item->Click();
    return item != nullptr;
}

}  // namespace framework
