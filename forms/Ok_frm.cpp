#include "forms/Ok_frm.h"

#include "cvs/Dialogs.h"
#include "forms/Message_box.h"
#include "framework/ui/buttons.h"

namespace tandrel {

TCucces_Form::TCucces_Form(const std::string& caption, const std::string& text, int code)
    : TForm(caption) {
    using L = TMessageBoxLayout;
    const bool failed = code != 0;
    const SIZE used =
        AddPictureAndText(*this, failed ? L"ERR" : L"SUCCES",
                          // The figure is part of the text, whatever the code is.
                          text + (failed ? " execute with Exitcode 1" : " successfuly completed"));
    auto& ok =
        Make<framework::TButton>("BitBtn1", *this, "Ok", framework::TButtonRole::DefaultAndCancel);
    ok.ModalResult = framework::mrOk;
    const int top = used.cy + Scale(L::Margin);
    ok.SetBounds((used.cx - Scale(L::ButtonWidth)) / 2, top, Scale(L::ButtonWidth),
                 Scale(L::ButtonHeight));
    SetClientSize(used.cx, top + Scale(L::ButtonHeight + L::Margin));
}

void Show_OkForm(const std::string& caption, const std::string& text, int code) {
    TCucces_Form(caption, text, code).ShowModal();
}

}  // namespace tandrel
