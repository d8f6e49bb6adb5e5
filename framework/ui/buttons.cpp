#include "framework/ui/buttons.h"

namespace framework {
namespace {

// The identifiers that the system's dialog keyboard asks for.
constexpr WORD PlainId = 0xFFFF;

WORD IdOf(TButtonRole role) {
    switch (role) {
        case TButtonRole::Default: return IDOK;
        case TButtonRole::Cancel:
        case TButtonRole::DefaultAndCancel: return IDCANCEL;
        case TButtonRole::Plain: break;
    }
    return PlainId;
}

bool IsDefault(TButtonRole role) {
    return role == TButtonRole::Default || role == TButtonRole::DefaultAndCancel;
}

}  // namespace

TButton::TButton(TControl& parent, const std::string& caption, TButtonRole role)
    : TControl(&parent) {
    const DWORD look = IsDefault(role) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    CreateHandle(L"BUTTON", WS_CHILD | WS_VISIBLE | WS_TABSTOP | look, 0, parent.Handle(), caption,
                 IdOf(role));
    if (IsDefault(role)) Form().DefaultId_ = IdOf(role);
}

void TButton::Click() {
    if (!Enabled()) return;
    if (ModalResult != mrNone) Form().ModalResult = ModalResult;
    if (OnClick) OnClick(this);
}

void TButton::Notification(WORD code) {
    if (code == BN_CLICKED) Click();
}

}  // namespace framework
