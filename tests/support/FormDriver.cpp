#include "tests/support/FormDriver.h"

#include <deque>

#include "framework/ui/application.h"
#include "framework/ui/buttons.h"

namespace tests {
namespace {

struct TExpectation {
    std::string Caption;
    std::function<void(framework::TForm&)> Drive;
};

std::deque<TExpectation>& Expectations() {
    static std::deque<TExpectation> expectations;
    return expectations;
}

void OnModalBegin(framework::TForm& form) {
    if (Expectations().empty() || Expectations().front().Caption != form.Text()) {
        ADD_FAILURE() << "Nobody expected the form \"" << form.Text() << "\"";
        form.ModalResult = framework::mrCancel;
        return;
    }
    const TExpectation expectation = Expectations().front();
    Expectations().pop_front();
    expectation.Drive(form);
}

BOOL CALLBACK FailVisible(HWND window, LPARAM) {
    wchar_t name[64];
    ::GetClassNameW(window, name, 64);
    if (::IsWindowVisible(window) && std::wstring(name) == L"FrameworkForm")
        ADD_FAILURE() << "A form was left open";
    return TRUE;
}

}  // namespace

void ExpectForm(const std::string& caption, std::function<void(framework::TForm&)> drive) {
    Expectations().push_back({caption, std::move(drive)});
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

TFormGuard::TFormGuard() { framework::Application().OnModalBegin = OnModalBegin; }

void TFormGuard::OnTestEnd(const testing::TestInfo&) {
    for (const TExpectation& missing : Expectations())
        ADD_FAILURE() << "The form \"" << missing.Caption << "\" never came";
    Expectations().clear();
    ::EnumThreadWindows(::GetCurrentThreadId(), FailVisible, 0);
}

}  // namespace tests
