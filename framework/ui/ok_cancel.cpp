#include "framework/ui/ok_cancel.h"

#include "framework/ui/dialog_sizes.h"

namespace framework {

TOkCancel AddOkCancel(TForm& form, int width, int top) {
    using S = TDialogSizes;
    auto& ok = form.Make<TButton>("BitBtn1", form, "Ok", TButtonRole::Default);
    ok.ModalResult = mrOk;
    auto& cancel = form.Make<TButton>("BitBtn2", form, "Cancel", TButtonRole::Cancel);
    cancel.ModalResult = mrCancel;
    form.SetClientSize(width, top + form.Scale(S::ButtonHeight + S::Margin));
    int left = width - form.Scale(S::Margin + 2 * S::ButtonWidth + S::Gap);
    for (TButton* button : {&ok, &cancel}) {
        button->SetBounds(left, top, form.Scale(S::ButtonWidth), form.Scale(S::ButtonHeight));
        button->SetAnchors(akRight | akBottom);
        left += form.Scale(S::ButtonWidth + S::Gap);
    }
    return {ok, cancel};
}

}  // namespace framework
