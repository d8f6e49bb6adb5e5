#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/component.h"

namespace framework {

class TControl;
class TForm;

/// Keys that choose a menu item: one of them, with Ctrl, Shift or both held down, or neither.
struct TShortcut {
    WORD Key = 0;  ///< A virtual key; 0 for none.
    bool Ctrl = false;
    bool Shift = false;

    /// As menus show it: "Ctrl+Shift+F5".
    FRAMEWORK_API std::string Text() const;
};

/// An item of a menu or of another item, which then is a submenu. The menu is drawn from its items
/// when it opens: making and changing them costs nothing, and they are plain data.
///
/// The items below have to be made after it; Clear or their owner frees them.
class FRAMEWORK_API TMenuItem : public TComponent {
public:
    /// Appends an item. @param caption an ampersand stands before the letter that chooses it; "-"
    /// for a separator.
    explicit TMenuItem(TMenuItem& parent, std::string caption, TShortcut shortcut = {});
    ~TMenuItem() override;

    /// Appends an item that belongs to this one.
    TMenuItem& Add(const std::string& caption, TShortcut shortcut = {});
    void AddSeparator() { Add("-"); }
    /// Frees all items below.
    void Clear();
    const std::vector<TMenuItem*>& Items() const { return Items_; }

    const std::string& Caption() const { return Caption_; }
    bool Enabled() const { return Enabled_; }
    void SetEnabled(bool enabled);
    bool Checked() const { return Checked_; }
    void SetChecked(bool checked) { Checked_ = checked; }
    TNotifyEvent OnClick;

    /// Does what choosing the item does. A disabled item does nothing.
    void Click();

protected:
    /// A menu itself.
    TMenuItem() = default;
    /// An item directly below was added, changed or removed.
    virtual void ItemsChanged() {}
    /// Puts all that is below into a menu of the system. Commands are numbered from FirstCommand
    /// on, in the order of `commands`.
    void Fill(HMENU menu, std::vector<TMenuItem*>& commands) const;
    /// The enabled item below with that shortcut, or none.
    TMenuItem* FindShortcut(const TShortcut& keys) const;
    static constexpr UINT FirstCommand = 1000;

private:
    friend class TMainMenu;
    TMenuItem& Root();
    virtual void Forget(TMenuItem&) {}

    TMenuItem* Parent_ = nullptr;
    std::string Caption_;
    TShortcut Shortcut_;
    bool Enabled_ = true;
    bool Checked_ = false;
    std::vector<TMenuItem*> Items_;
};

/// A menu that opens at a control by a click with the right button or by the keyboard.
class FRAMEWORK_API TPopupMenu : public TMenuItem {
public:
    /// Opens the menu and does what is chosen, before it returns. @param place on the screen.
    /// Raises EOSError when it cannot be opened.
    void Popup(TControl& control, POINT place);

private:
    void Forget(TMenuItem& item) override;
    std::vector<TMenuItem*> Commands_;  // the items of the open menu
};

/// The menu bar of a form, one for each. All its items have items below. The shortcuts work in the
/// whole form, but for keys that mean something to a text that has the focus. It must go before the
/// form; make it the form's component.
class FRAMEWORK_API TMainMenu : public TMenuItem {
public:
    explicit TMainMenu(TForm& form);
    ~TMainMenu() override;

protected:
    void ItemsChanged() override;

private:
    friend class TForm;
    void Forget(TMenuItem& item) override;
    /// A submenu of the bar is about to open.
    void Opening(HMENU menu);
    /// True when the command was one of the menu's.
    bool Choose(UINT command);
    bool Press(WPARAM key);

    TForm& Form_;
    std::vector<TMenuItem*> Commands_;  // the items of the submenu that is or was open
};

}  // namespace framework
