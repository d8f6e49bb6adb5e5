#include "forms/FileListStep.h"

#include "cvs/Cvstempl.h"
#include "framework/ui/rich_edit.h"

namespace tandrel {

using namespace framework;

TFileListStep::TFileListStep(const std::string& caption, const std::string& heading,
                             const std::vector<TOption>& options)
    : TFrameDetForm(caption) {
    TFormRows rows(*this, 400, 0);
    rows.Heading(heading);
    auto& memo = rows.Block<TMemo>("Memo1", 90);
    memo.SetReadOnly(true);
    memo.SetColor(COLOR_BTNFACE);
    Memo1_ = &memo;
    for (const TOption& option : options) {
        const std::string name = "CheckBox" + std::to_string(Boxes_.size() + 1);
        Boxes_.push_back({&rows.Check(name, option.Caption), option.Flag});
    }
    SetDesignSize(rows.Width(), rows.Top() + TFormRows::Margin - TFormRows::Gap);
    Memo1_->SetAnchors(akLeft | akTop | akRight | akBottom);
    for (const TBox& box : Boxes_)
        box.Box->SetAnchors(akLeft | akRight | akBottom);
}

void TFileListStep::LoadFormData() {
    Memo1_->SetText(CvsObject->Get_FileListString());
    for (const TBox& box : Boxes_)
        box.Box->SetChecked(CvsObject->*box.Flag);
}

void TFileListStep::SaveFormData() {
    for (const TBox& box : Boxes_)
        CvsObject->*box.Flag = box.Box->Checked();
}

}  // namespace tandrel
