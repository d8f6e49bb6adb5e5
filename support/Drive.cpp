#include "support/Drive.h"

#include "support/WaitUntil.h"

namespace support {
namespace {

using namespace framework;

void MustBe(bool usable, const TForm& form, const std::string& name) {
    if (!usable)
        throw std::runtime_error("In the form \"" + form.Text() + "\" " + name + " cannot be used");
}

BOOL CALLBACK FindHosted(HWND window, LPARAM data) {
    auto* const form = dynamic_cast<TForm*>(TControl::FromHandle(window));
    if (!form || !::IsWindowVisible(window))
        return TRUE;
    *reinterpret_cast<TForm**>(data) = form;
    return FALSE;
}

}  // namespace

TForm& StepOf(TForm& form) {
    TForm* found = &form;
    ::EnumChildWindows(form.Handle(), FindHosted, reinterpret_cast<LPARAM>(&found));
    return *found;
}

void Type(TForm& form, const std::string& edit, const std::string& text) {
    auto& part = Part<TControl>(form, edit);
    MustBe(part.Enabled() && !(::GetWindowLongW(part.Handle(), GWL_STYLE) & ES_READONLY), form,
           edit);
    part.SetText(text);
}

void Choose(TForm& form, const std::string& list, int index) {
    auto& part = Part<TComboBox>(form, list);
    MustBe(part.Enabled() && index < part.ItemCount(), form, list);
    part.Select(index);
}

void Check(TForm& form, const std::string& box, bool checked) {
    auto& part = Part<TCheckBox>(form, box);
    MustBe(part.Enabled(), form, box);
    if (part.Checked() != checked)
        part.Click();
}

void Press(TForm& form, const std::string& button) {
    auto& part = Part<TButton>(form, button);
    MustBe(WaitUntil([&] { return part.Enabled() && part.Visible(); }), form, button);
    part.Click();
}

}  // namespace support
