#include "forms/Browsers.h"

#include <algorithm>

#include "cvs/Dialogs.h"
#include "forms/Filter_frm.h"
#include "forms/StatusBrowser_frm.h"

namespace tandrel {

using namespace framework;

TBrowser_Form::TBrowser_Form(const std::string& caption) : TForm(caption, TFormBorder::Sizeable) {
    const TLayoutUpdate filling(*this);
    constexpr int Border = 3, ButtonRoom = 37;
    PageControl1_ = &Make<TPageControl>("PageControl1", *this);
    TabSheet1_ = &Make<TTabSheet>("TabSheet1", *PageControl1_, "Status");
    TabSheet2_ = &Make<TTabSheet>("TabSheet2", *PageControl1_, "File include list");
    auto& bottom = Make<TPanel>("Panel4", *this);
    auto& close = Make<TButton>("BitBtn2", bottom, "Close", TButtonRole::Cancel);
    close.ModalResult = mrCancel;

    bottom.SetBounds(0, 0, Scale(200), Scale(ButtonRoom));
    close.SetBounds(Scale(200 - Border - TFormRows::ButtonWidth),
                    Scale((ButtonRoom - TFormRows::ButtonHeight) / 2),
                    Scale(TFormRows::ButtonWidth), Scale(TFormRows::ButtonHeight));
    close.SetAnchors(akTop | akRight);
    bottom.SetAlign(TAlign::Bottom);
    for (const auto& [name, align] :
         {std::pair{"Panel1", TAlign::Top}, {"Panel2", TAlign::Left}, {"Panel3", TAlign::Right}}) {
        auto& margin = Make<TPanel>(name, *this);
        margin.SetBounds(0, 0, Scale(Border), Scale(Border));
        margin.SetAlign(align);
    }
    PageControl1_->SetAlign(TAlign::Client);
    SetSize(Scale(652), Scale(535));
    SetMinClientSize(Scale(400), Scale(320));
}

TBrowser_Form::~TBrowser_Form() {
    for (TFrameDetForm* form : Forms_)
        form->Free();
}

void TBrowser_Form::AddTabs(const TFrameDetFormClass& formClass, TCvsObject& cvs) {
    constexpr int HeightAround = 36, WidthAround = 6;
    // Putting all to its place after each control would take several times as long.
    const TLayoutUpdate filling(*this);
    TFrameDetForm& form = formClass();
    TTabSheet& sheet = Forms_.empty() ? *TabSheet1_ : *TabSheet2_;
    // The first sheet keeps its own caption, whatever stands on it.
    TabSheet2_->SetText(form.Text());
    Forms_.push_back(&form);
    form.HostIn(sheet);
    form.CvsObject = &cvs;
    form.LoadFormData();
    form.SetAlign(TAlign::Client);
    form.SetVisible(true);
    int height = 0, width = 0;
    form.GetSize(height, width);
    SetSize(std::max(Width(), width + Scale(WidthAround)),
            std::max(Height(), height + Scale(HeightAround)));
}

bool Show_Browser(const std::string& caption, const std::vector<TFrameDetFormClass>& formClasses,
                  TCvsObject& cvs) {
    TBrowser_Form browser(caption);
    {
        const TLayoutUpdate filling(browser);
        for (const TFrameDetFormClass& formClass : formClasses)
            browser.AddTabs(formClass, cvs);
    }
    return browser.ShowModal() == mrOk;
}

bool Sh_StatusBrowser(TCvsObject& CvsObject) {
    return Show_Browser("StatusBrowser",
                        {NewForm<TStatusBrowser_Form>, NewForm<TFilter_FormReadOnly>}, CvsObject);
}

}  // namespace tandrel
