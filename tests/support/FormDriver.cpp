#include "tests/support/FormDriver.h"

#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "support/ExpectedForms.h"

namespace tests {
namespace {

support::TExpectedForms& Forms() {
    static support::TExpectedForms forms;
    return forms;
}

BOOL CALLBACK FailVisible(HWND window, LPARAM) {
    wchar_t name[64];
    ::GetClassNameW(window, name, 64);
    if (::IsWindowVisible(window) && std::wstring(name) == L"FrameworkForm")
        ADD_FAILURE() << "A form was left open";
    return TRUE;
}

BOOL CALLBACK AddIfMarked(HWND window, LPARAM captions) {
    const auto* const button =
        dynamic_cast<framework::TButton*>(framework::TControl::FromHandle(window));
    if (button && (::GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
        *reinterpret_cast<std::string*>(captions) += button->Text();
    return TRUE;
}

}  // namespace

void ExpectForm(const std::string& caption, std::function<void(framework::TForm&)> drive) {
    Forms().Expect(caption, std::move(drive));
}

void Click(framework::TForm& form, const std::string& button) {
    auto* found = form.Find<framework::TButton>(button);
    if (!found) {
        ADD_FAILURE() << "The form has no button " << button;
        form.ModalResult = framework::mrCancel;
        return;
    }
    found->Click();
}

std::string TextOf(const framework::TForm& form, const std::string& component) {
    const auto* found = form.Find<framework::TControl>(component);
    if (!found) {
        ADD_FAILURE() << "The form has no component " << component;
        return {};
    }
    return found->Text();
}

void PressKey(framework::TForm& form, WPARAM key) {
    const HWND focus = ::GetFocus();
    const HWND target = ::IsChild(form.Handle(), focus) ? focus : form.Handle();
    ::PostMessageW(target, WM_KEYDOWN, key, 1);
    ::PostMessageW(target, WM_KEYUP, key, 1);
}

std::string MarkedButtons(const framework::TForm& form) {
    std::string captions;
    ::EnumChildWindows(form.Handle(), AddIfMarked, reinterpret_cast<LPARAM>(&captions));
    return captions;
}

TFormGuard::TFormGuard() {
    Forms().OnUnexpected = [](const std::string& caption) {
        ADD_FAILURE() << "Nobody expected the form \"" << caption << "\"";
    };
    Forms().Install();
}

void TFormGuard::OnTestEnd(const testing::TestInfo&) {
    for (const std::string& missing : Forms().TakeMissing())
        ADD_FAILURE() << "The form \"" << missing << "\" never came";
    ::EnumThreadWindows(::GetCurrentThreadId(), FailVisible, 0);
}

}  // namespace tests
