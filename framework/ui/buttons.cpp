#include "framework/ui/buttons.h"

namespace framework {
namespace {

// No identifier of its own: the form knows which button the keyboard means.
constexpr WORD ButtonId = 0xFFFF;

// A single ampersand would underline the letter behind it.
std::string Doubled(const std::string& caption) {
    std::string text;
    for (const char character : caption) {
        text += character;
        if (character == '&')
            text += '&';
    }
    return text;
}

std::string Halved(const std::string& caption) {
    std::string text;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        text += caption[i];
        if (caption[i] == '&' && i + 1 < caption.size() && caption[i + 1] == '&')
            ++i;
    }
    return text;
}

bool IsDefault(TButtonRole role) {
    return role == TButtonRole::Default || role == TButtonRole::DefaultAndCancel;
}

}  // namespace

TButton::TButton(TControl& parent, const std::string& caption, TButtonRole role)
    : TControl(&parent), Form_(parent.Form()) {
    CreateHandle(L"BUTTON", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 0, parent.Handle(),
                 caption, ButtonId);
    if (IsDefault(role))
        Form_.SetDefaultButton(this);
    if (role == TButtonRole::Cancel || role == TButtonRole::DefaultAndCancel)
        Form_.CancelButton_ = this;
}

TButton::~TButton() {
    if (Form_.DefaultButton_ == this)
        Form_.DefaultButton_ = nullptr;
    if (Form_.CancelButton_ == this)
        Form_.CancelButton_ = nullptr;
}

void TButton::Click() {
    if (!Enabled())
        return;
    if (ModalResult != mrNone)
        Form_.ModalResult = ModalResult;
    if (OnClick)
        OnClick(this);
}

void TButton::Notification(WORD code) {
    if (code == BN_CLICKED)
        Click();
}

LRESULT TButton::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETFOCUS)
        FocusMoves(Handle());
    else if (message == WM_KILLFOCUS)
        FocusMoves(reinterpret_cast<HWND>(wParam));
    return TControl::WndProc(message, wParam, lParam);
}

void TButton::FocusMoves(HWND focus) {
    const HWND top = ::GetAncestor(Handle(), GA_ROOT);
    // A form that is left for another one keeps its looks: the focus comes back to where it was.
    if (focus != top && !::IsChild(top, focus))
        return;
    if (auto* const form = dynamic_cast<TForm*>(FromHandle(top)))
        form->MarkDefaultButton(focus);
}

TCheckBox::TCheckBox(TControl& parent, const std::string& caption) : TControl(&parent) {
    CreateHandle(L"BUTTON", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX | BS_MULTILINE, 0,
                 parent.Handle(), Doubled(caption));
}

bool TCheckBox::Checked() const {
    return ::SendMessageW(Handle(), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void TCheckBox::SetChecked(bool checked) {
    ::SendMessageW(Handle(), BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void TCheckBox::Click() {
    if (!Enabled())
        return;
    SetChecked(!Checked());
    if (OnClick)
        OnClick(this);
}

std::string TCheckBox::Text() const {
    return Halved(TControl::Text());
}

void TCheckBox::SetText(const std::string& text) {
    TControl::SetText(Doubled(text));
}

void TCheckBox::Notification(WORD code) {
    if (code == BN_CLICKED && OnClick)
        OnClick(this);
}

TGroupBox::TGroupBox(TControl& parent, const std::string& caption) : TControl(&parent) {
    // Transparent: what lies under it, the form's background, is painted by the form.
    CreateHandle(L"BUTTON", WS_CHILD | WS_VISIBLE | BS_GROUPBOX, WS_EX_TRANSPARENT, parent.Handle(),
                 caption);
}

}  // namespace framework
