#include "support/Drive.h"

#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
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

BOOL CALLBACK AddForm(HWND window, LPARAM forms) {
    auto* const form = dynamic_cast<TForm*>(TControl::FromHandle(window));
    if (form && form->Visible())
        reinterpret_cast<std::vector<TForm*>*>(forms)->push_back(form);
    return TRUE;
}

}  // namespace

std::vector<TForm*> OpenForms() {
    std::vector<TForm*> forms;
    ::EnumThreadWindows(::GetCurrentThreadId(), AddForm, reinterpret_cast<LPARAM>(&forms));
    return forms;
}

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

void SelectRow(const TForm& form, const std::string& list, const std::string& caption) {
    auto& part = Part<TListView>(form, list);
    for (int i = 0; i < part.Count(); ++i)
        if (part.Row(i).Caption == caption) {
            part.Select(-1);
            return part.Select(i);
        }
    throw std::runtime_error("In " + list + " there is no row " + caption);
}

void Pick(const TForm& form, const std::string& menu, const std::string& caption) {
    for (const TMenuItem* below : Part<TMainMenu>(form, menu).Items())
        for (TMenuItem* item : below->Items())
            if (item->Caption() == caption)
                return item->Click();
    throw std::runtime_error("The menu has no " + caption);
}

void Press(TForm& form, const std::string& button) {
    auto& part = Part<TButton>(form, button);
    MustBe(WaitUntil([&] { return part.Enabled() && part.Visible(); }), form, button);
    part.Click();
}

}  // namespace support
