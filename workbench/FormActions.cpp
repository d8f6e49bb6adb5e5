#include "workbench/FormActions.h"

namespace workbench {

using namespace framework;

void TFormActions::AddTo(TMenuItem& menu, bool withKeys) {
    for (TControls& controls : Actions_) {
        const TFormAction& action = controls.Action;
        TMenuItem& item = menu.Add(action.Item, withKeys ? action.Keys : TShortcut());
        item.OnClick = [&action](TObject*) { action.Run(); };
        controls.Items.push_back(&item);
    }
}

int TFormActions::AddButtons(TForm& form, TPanel& panel, int left, int top) {
    for (TControls& controls : Actions_) {
        const TFormAction& action = controls.Action;
        if (action.Caption.empty())
            continue;
        auto& button = form.Make<TButton>(action.Name, panel, action.Caption);
        const int width = button.TextSize(action.Caption).cx + form.Scale(20);
        button.SetBounds(left, top, width, form.Scale(ButtonHeight));
        button.OnClick = [&action](TObject*) { action.Run(); };
        controls.Button = &button;
        left += width + form.Scale(Gap);
    }
    return left;
}

void TFormActions::Enable() {
    for (const TControls& controls : Actions_) {
        const bool can = controls.Action.CanRun();
        if (controls.Button)
            controls.Button->SetEnabled(can);
        for (TMenuItem* item : controls.Items)
            item->SetEnabled(can);
    }
}

}  // namespace workbench
