#include "core/Progress_frm.h"

#include <memory>

#include "core/Customvcs.h"
#include "core/Resources.h"
#include "framework/ui/dialog_sizes.h"

namespace tandrel::Progress_frm {

using framework::TAlign;

TVcs_ProgressForm::TVcs_ProgressForm() : TForm("VCS progress") {
    BuildControls();
}

void TVcs_ProgressForm::BuildControls() {
    constexpr int Width = 313, Height = 110;  // design units, as all below
    constexpr int AnimationHeight = 71, SpacerWidth = 4;
    using S = framework::TDialogSizes;
    constexpr int Margin = 8;

    SetClientSize(Scale(Width), Scale(Height));
    Animate1_ = &Make<framework::TAnimate>("Animate1", *this);
    Animate1_->SetBounds(0, 0, 0, Scale(AnimationHeight));
    Animate1_->SetAlign(TAlign::Top);
    for (const auto& [name, align] :
         {std::pair{"Panel1", TAlign::Left}, {"Panel2", TAlign::Right}}) {
        auto& spacer = Make<framework::TPanel>(name, *this);
        spacer.SetBounds(0, 0, Scale(SpacerWidth), 0);
        spacer.SetAlign(align);
    }
    const int row = Scale(AnimationHeight) + (Scale(Height - AnimationHeight)) / 2;
    auto& label = Make<framework::TLabel>("Label1", *this, "Please wait");
    label.SetBounds(Scale(Margin), row - label.Height() / 2, label.Width(), label.Height());
    BitBtn2_ =
        &Make<framework::TButton>("BitBtn2", *this, "Cancel", framework::TButtonRole::Cancel);
    BitBtn2_->SetBounds(Scale(Width - Margin - S::ButtonWidth), row - Scale(S::ButtonHeight) / 2,
                        Scale(S::ButtonWidth), Scale(S::ButtonHeight));
    BitBtn2_->OnClick = [this](TObject* sender) { BitBtn2Click(sender); };
}

LRESULT TVcs_ProgressForm::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_STARTPROGRESS:
            WMStartProgress(wParam);
            return 0;
        case WM_FINISHPROGRESS:
            WMFinishProgress();
            return 0;
        case WM_USERMESSAGE:
            WMUserMessage(reinterpret_cast<const char*>(wParam));
            return 0;
        case WM_USERMESSAGE2:
            WMUserMessage2(reinterpret_cast<const char*>(wParam));
            return 0;
        default:
            return TForm::WndProc(message, wParam, lParam);
    }
}

void TVcs_ProgressForm::WMStartProgress(WPARAM thread) {
    Thread = reinterpret_cast<const std::unique_ptr<TProgressThread>*>(thread)->get();
    // The message comes again every second; the clip and the focus are not to start anew.
    if (Visible() && Enabled())
        return;
    if (Animate1_->LoadResource(ResourceModule(), ProgressClip))
        Animate1_->Play();
    DisableClose();
    // A form that was still showing when the run began was disabled with all other windows.
    SetEnabled(true);
    SetStayOnTop(true);
    Show();
}

void TVcs_ProgressForm::WMFinishProgress() {
    BitBtn2_->SetText("Ok");
}

void TVcs_ProgressForm::WMUserMessage(const char* text) {
    if (VcsObject)
        VcsObject->MessageProc(text);
}

void TVcs_ProgressForm::WMUserMessage2(const char* chunk) {
    if (VcsObject)
        VcsObject->MessageProc2(chunk);
}

void TVcs_ProgressForm::BitBtn2Click(TObject*) {
    if (Thread)
        Thread->CancelMark = true;
}

}  // namespace tandrel::Progress_frm
