#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/ui/buttons.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/menus.h"

namespace workbench {

/// Something that can be done with what is chosen in a window: by a button, in menus, by keys.
struct TFormAction {
    std::string Name;     ///< Of the button.
    std::string Caption;  ///< Of the button; empty when there is none.
    std::string Item;     ///< Of the items in menus.
    framework::TShortcut Keys;
    std::function<bool()> CanRun;
    std::function<void()> Run;
};

/// Actions of a window, and all that they can be chosen with.
class TFormActions {
public:
    TFormActions() = default;
    TFormActions(const TFormActions&) = delete;
    TFormActions& operator=(const TFormActions&) = delete;

    /// To be called before anything is made of them.
    void Add(TFormAction action) { Actions_.push_back({std::move(action), {}, {}}); }
    /// Appends their items to a menu; only in one of them have they keys.
    void AddTo(framework::TMenuItem& menu, bool withKeys);
    /// Puts their buttons side by side on a panel, as components of the form. @param left, top in
    /// pixels. @return where they end.
    int AddButtons(framework::TForm& form, framework::TPanel& panel, int left, int top);
    /// Makes those grey that cannot run now.
    void Enable();

    /// The height of a button, and the room between them, in design units.
    static constexpr int ButtonHeight = 23, Gap = 4;

private:
    struct TControls {
        TFormAction Action;
        framework::TButton* Button;
        std::vector<framework::TMenuItem*> Items;
    };
    std::vector<TControls> Actions_;
};

}  // namespace workbench
