#include "framework/ui/buttons.h"

namespace framework {
namespace {

// No identifier of its own: the form knows which button the keyboard means.
constexpr WORD ButtonId = 0xFFFF;

bool IsDefault(TButtonRole role) {
    return role == TButtonRole::Default || role == TButtonRole::DefaultAndCancel;
}

}  // namespace

TButton::TButton(TControl& parent, const std::string& caption, TButtonRole role)
    : TControl(&parent), Form_(parent.Form()) {
    const DWORD look = IsDefault(role) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    CreateHandle(L"BUTTON", WS_CHILD | WS_VISIBLE | WS_TABSTOP | look, 0, parent.Handle(), caption,
                 ButtonId);
    if (IsDefault(role)) Form_.DefaultButton_ = this;
    if (role == TButtonRole::Cancel || role == TButtonRole::DefaultAndCancel)
        Form_.CancelButton_ = this;
}

TButton::~TButton() {
    if (Form_.DefaultButton_ == this) Form_.DefaultButton_ = nullptr;
    if (Form_.CancelButton_ == this) Form_.CancelButton_ = nullptr;
}

void TButton::Click() {
    if (!Enabled()) return;
    if (ModalResult != mrNone) Form_.ModalResult = ModalResult;
    if (OnClick) OnClick(this);
}

void TButton::Notification(WORD code) {
    if (code == BN_CLICKED) Click();
}

}  // namespace framework
