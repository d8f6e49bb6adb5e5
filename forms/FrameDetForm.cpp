#include "forms/FrameDetForm.h"

namespace tandrel {

using namespace framework;

void TFrameDetForm::SetDesignSize(int width, int height) {
    SetClientSize(Scale(width), Scale(height));
    KeepDesignSize();
}

void TFrameDetForm::SetFormHeight(int height) {
    SetSize(Width(), Scale(height));
    KeepDesignSize();
}

void TFrameDetForm::GetSize(int& height, int& width) {
    height = static_cast<int>(DesignSize_.cy);
    width = static_cast<int>(DesignSize_.cx);
}

bool TValidatedForm::StatusOk() {
    return Ok_->Enabled();
}

void TValidatedForm::AddButtons(TFormRows& rows) {
    const TOkCancel buttons = AddOkCancel(rows);
    Ok_ = &buttons.Ok;
    Cancel_ = &buttons.Cancel;
    KeepDesignSize();
    ShowButtons(false);
}

void TValidatedForm::ShowButtons(bool visible) {
    Ok_->SetVisible(visible);
    Cancel_->SetVisible(visible);
}

void TValidatedForm::SetValid(bool valid) {
    Ok_->SetEnabled(valid);
    ReportStatus();
}

void TValidatedForm::ReportStatus() {
    if (OnStatusChange)
        OnStatusChange(*this, Ok_->Enabled());
}

}  // namespace tandrel
