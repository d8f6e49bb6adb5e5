#include "forms/Msg_frm.h"

#include "cvs/Cvstempl.h"

namespace tandrel {

using namespace framework;

TMessage_Frm::TMessage_Frm() : TFrameDetForm("Log message") {
    TFormRows rows(*this, 400, 0);
    rows.Heading("Enter log  message");
    Memo1_ = &rows.Block<TMemo>("Memo1", 170);
    SetDesignSize(rows.Width(), rows.Top() + TFormRows::Margin - TFormRows::Gap);
    Memo1_->SetAnchors(akLeft | akTop | akRight | akBottom);
}

void TMessage_Frm::LoadFormData() {
    Memo1_->SetText(CvsObject->CommitMessage);
}

void TMessage_Frm::SaveFormData() {
    CvsObject->CommitMessage = Memo1_->Text();
}

void TMessage_Frm::Shown() {
    Memo1_->SetFocus();
}

}  // namespace tandrel
