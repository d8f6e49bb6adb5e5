#include "forms/Confirm_Frm.h"

#include <algorithm>

#include "cvs/Dialogs.h"
#include "forms/Message_box.h"
#include "framework/ui/buttons.h"
#include "framework/ui/labels.h"

namespace tandrel {

TConfirm_Form::TConfirm_Form(const std::string& question) : TForm("CVS confirmation") {
    using L = TMessageBoxLayout;
    SIZE used = AddPictureAndText(*this, L"ALERT", question);
    auto& hint =
        Make<framework::TLabel>("Label2", *this, "CVS is requirring you answer \"Yes\" or \"No\"");
    hint.SetBounds(Scale(L::TextLeft), used.cy + Scale(L::Margin), hint.Width(), hint.Height());
    used.cx = std::max<LONG>(used.cx, hint.Width() + Scale(L::RoomBesideText));

    const int width = Scale(L::ButtonWidth), gap = Scale(L::Margin);
    const int top = used.cy + hint.Height() + 2 * gap;
    const int left = (used.cx - 2 * width - gap) / 2;
    auto& yes = Make<framework::TButton>("BitBtn1", *this, "Yes", framework::TButtonRole::Default);
    yes.ModalResult = framework::mrOk;
    yes.SetBounds(left, top, width, Scale(L::ButtonHeight));
    auto& no = Make<framework::TButton>("BitBtn2", *this, "No", framework::TButtonRole::Cancel);
    no.ModalResult = framework::mrCancel;
    no.SetBounds(left + width + gap, top, width, Scale(L::ButtonHeight));
    SetClientSize(used.cx, top + Scale(L::ButtonHeight) + gap);
}

bool Sh_Confirm_Form(const std::string& question) {
    return TConfirm_Form(question).ShowModal() == framework::mrOk;
}

}  // namespace tandrel
