#include "framework/ui/ok_cancel.h"

namespace framework {

TOkCancel AddOkCancel(TForm& form, int width, int top) {
    constexpr int ButtonWidth = 75, ButtonHeight = 25, Gap = 8, Margin = 12;
    auto& ok = form.Make<TButton>("BitBtn1", form, "Ok", TButtonRole::Default);
    ok.ModalResult = mrOk;
    auto& cancel = form.Make<TButton>("BitBtn2", form, "Cancel", TButtonRole::Cancel);
    cancel.ModalResult = mrCancel;
    form.SetClientSize(width, top + form.Scale(ButtonHeight + Margin));
    int left = width - form.Scale(Margin + 2 * ButtonWidth + Gap);
    for (TButton* button : {&ok, &cancel}) {
        button->SetBounds(left, top, form.Scale(ButtonWidth), form.Scale(ButtonHeight));
        button->SetAnchors(akRight | akBottom);
        left += form.Scale(ButtonWidth + Gap);
    }
    return {ok, cancel};
}

}  // namespace framework
