#include "support/ExpectedForms.h"

#include <utility>

#include "framework/ui/application.h"

namespace support {

void TExpectedForms::Install() {
    framework::Application().OnModalBegin = [this](framework::TForm& form) { ModalBegins(form); };
}

void TExpectedForms::Expect(const std::string& caption, TDrive drive) {
    Forms_.push_back({caption, std::move(drive)});
}

std::vector<std::string> TExpectedForms::TakeMissing() {
    std::vector<std::string> captions;
    for (const TForm& form : Forms_)
        captions.push_back(form.Caption);
    Forms_.clear();
    return captions;
}

void TExpectedForms::ModalBegins(framework::TForm& form) {
    if (Forms_.empty() || Forms_.front().Caption != form.Text()) {
        form.ModalResult = framework::mrCancel;
        if (OnUnexpected)
            OnUnexpected(form.Text());
        return;
    }
    const TDrive drive = std::move(Forms_.front().Drive);
    Forms_.pop_front();
    struct TNested {
        explicit TNested(std::deque<TForm>& forms) : Forms(forms) { Forms.swap(Outer); }
        ~TNested() { Forms.insert(Forms.end(), Outer.begin(), Outer.end()); }
        std::deque<TForm>& Forms;
        std::deque<TForm> Outer;
    } const nested(Forms_);
    drive(form);
}

}  // namespace support
