#include "forms/Frames.h"

#include <algorithm>
#include <memory>

#include "core/Resources.h"
#include "cvs/Cvstempl.h"
#include "framework/base/format.h"
#include "framework/ui/images.h"

namespace tandrel {

using namespace framework;

namespace {

// Room that the wizard takes beside and below its steps, in design units.
constexpr int PictureRoom = 150;
constexpr int ButtonRoom = 37;
constexpr int Gap = 6;

// The one wizard that is open, or none.
std::unique_ptr<TFrame_Frm> Frame_Frm;

}  // namespace

TFrame_Frm::TFrame_Frm(const std::string& title) : TForm(title), Title_(title) {
    using R = TFormRows;
    auto& picture = Make<TPanel>("Panel1", *this);
    auto& buttons = Make<TPanel>("Panel2", *this);
    Panel3_ = &Make<TPanel>("Panel3", *this);
    // Below the steps in the order of the keyboard, too.
    ::SetWindowPos(buttons.Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);

    auto& image = Make<TImage>("Image1", picture);
    image.LoadResource(ResourceModule(), L"TITLE2");
    image.SetAlign(TAlign::Client);

    BitBtn3_ = &Make<TButton>("BitBtn3", buttons, "< Back");
    BitBtn3_->OnClick = [this](TObject* sender) { BitBtn3Click(sender); };
    BitBtn3_->SetEnabled(false);
    BitBtn4_ = &Make<TButton>("BitBtn4", buttons, "Next >");
    BitBtn4_->OnClick = [this](TObject* sender) { BitBtn4Click(sender); };
    BitBtn1_ = &Make<TButton>("BitBtn1", buttons, "Finish", TButtonRole::Default);
    BitBtn1_->ModalResult = mrOk;
    auto& cancel = Make<TButton>("BitBtn2", buttons, "Cancel", TButtonRole::Cancel);
    cancel.ModalResult = mrCancel;

    const int step = R::ButtonWidth + Gap;
    const int least = 4 * step + Gap;
    buttons.SetBounds(0, 0, Scale(least), Scale(ButtonRoom));
    int left = Gap;
    for (TButton* button : {BitBtn3_, BitBtn4_, BitBtn1_, &cancel}) {
        button->SetBounds(Scale(left), Scale((ButtonRoom - R::ButtonHeight) / 2),
                          Scale(R::ButtonWidth), Scale(R::ButtonHeight));
        button->SetAnchors(akTop | akRight);
        left += step;
    }
    SetClientSize(Scale(least), Scale(ButtonRoom));
    picture.SetBounds(0, 0, Scale(PictureRoom), 0);
    buttons.SetAlign(TAlign::Bottom);
    picture.SetAlign(TAlign::Left);
    Panel3_->SetAlign(TAlign::Client);
}

TFrame_Frm::~TFrame_Frm() {
    for (TFrameDetForm* frame : Frames_)
        frame->Free();
}

void TFrame_Frm::AddFrame(const TFrameDetFormClass& formClass, TCvsObject& cvs) {
    TFrameDetForm& frame = formClass();
    Frames_.push_back(&frame);
    int height = 0, width = 0;
    frame.GetSize(height, width);
    frame.HostIn(*Panel3_);
    frame.OwnerFrame = this;
    frame.OnStatusChange = [this](TFrameDetForm& sender, bool ok) {
        FrameStatusChange(sender, ok);
    };
    frame.CvsObject = &cvs;
    frame.LoadFormData();
    frame.SetAlign(TAlign::Client);
    // Of whole windows: the step was designed with the same frame as this dialog has.
    SetSize(std::max(Width(), width + Scale(PictureRoom)),
            std::max(Height(), height + Scale(ButtonRoom)));
}

void TFrame_Frm::ShowFirst() {
    if (!Frames_.empty())
        GoTo(0);
    SetBtnEnablen();
}

void TFrame_Frm::GoTo(std::size_t index) {
    TFrameDetForm* const before = Frames_[Index_];
    Index_ = index;
    TFrameDetForm& frame = *Frames_[Index_];
    // The new one first: the keyboard must have somewhere to go.
    const SIZE area = Panel3_->ClientSize();
    frame.SetBounds(0, 0, area.cx, area.cy);
    frame.SetVisible(true);
    if (before != &frame)
        before->SetVisible(false);
    if (Visible())
        frame.SetFocus();
}

void TFrame_Frm::BitBtn4Click(TObject*) {
    if (!IsLast()) {
        Frames_[Index_]->OnNextForm();
        GoTo(Index_ + 1);
    }
    SetBtnEnablen();
}

void TFrame_Frm::BitBtn3Click(TObject*) {
    if (Index_ >= 1)
        GoTo(Index_ - 1);
    SetBtnEnablen();
}

void TFrame_Frm::FrameStatusChange(TFrameDetForm&, bool) {
    SetBtnEnablen();
}

bool TFrame_Frm::CheckValidate() {
    return Index_ < Frames_.size() && Frames_[Index_]->StatusOk();
}

void TFrame_Frm::SetBtnEnablen() {
    const bool several = Frames_.size() >= 2;
    const bool valid = CheckValidate();
    BitBtn3_->SetVisible(several);
    BitBtn4_->SetVisible(several);
    if (several)
        SetText(Format("%s-step %d", {Title_, static_cast<int>(Index_) + 1}));
    BitBtn3_->SetEnabled(Index_ >= 1);
    BitBtn4_->SetEnabled(!IsLast() && valid);
    BitBtn1_->SetEnabled(IsLast() && valid);
    SetDefaultButton(IsLast() ? BitBtn1_ : BitBtn4_);
}

void TFrame_Frm::SaveFrameFalues() {
    for (TFrameDetForm* frame : Frames_)
        frame->SaveFormData();
}

bool Show_Frames(const std::string& title, const std::vector<TFrameDetFormClass>& formClasses,
                 TCvsObject& cvs) {
    // The one that is open must not be freed while somebody is in it.
    if (Frame_Frm) {
        cvs.MessageProc("%s failed,reason another wizard is already open ", {title});
        return false;
    }
    // Whatever happens: a wizard that is left by an exception is gone, too.
    struct TFreed {
        ~TFreed() { Frame_Frm.reset(); }
    } const freed;
    Frame_Frm = std::make_unique<TFrame_Frm>(title);
    for (const TFrameDetFormClass& formClass : formClasses)
        Frame_Frm->AddFrame(formClass, cvs);
    Frame_Frm->ShowFirst();
    if (Frame_Frm->ShowModal() != mrOk)
        return false;
    Frame_Frm->SaveFrameFalues();
    return true;
}

}  // namespace tandrel
