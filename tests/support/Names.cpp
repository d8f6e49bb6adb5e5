#include "tests/support/Names.h"

#include <gtest/gtest.h>
#include <oleacc.h>

#include <algorithm>
#include <cctype>
#include <optional>

#include "framework/base/text.h"
#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/labels.h"
#include "framework/ui/page_control.h"
#include "framework/ui/pickers.h"

namespace tests {
namespace {

using namespace framework;

std::string LabelBefore(HWND window) {
    do
        window = ::GetWindow(window, GW_HWNDPREV);
    while (window && !::IsWindowVisible(window));
    const auto* const label = dynamic_cast<TLabel*>(TControl::FromHandle(window));
    return label ? label->Text() : std::string();
}

/// The system's own answer; none where it has none, as in a 64-bit Wine.
std::optional<std::string> SystemName(HWND window) {
    IAccessible* object = nullptr;
    if (FAILED(::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                            IID_IAccessible, reinterpret_cast<void**>(&object))))
        return std::nullopt;
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR text = nullptr;
    const HRESULT result = object->get_accName(self, &text);
    object->Release();
    std::string name = result == S_OK && text ? FromWide(text) : "no name";
    ::SysFreeString(text);
    return name;
}

bool IsOperated(const TControl& control) {
    // Each tab of a page control has a caption of its own.
    if (dynamic_cast<const TPageControl*>(&control))
        return false;
    return (::GetWindowLongW(control.Handle(), GWL_STYLE) & WS_TABSTOP) ||
           dynamic_cast<const TUpDown*>(&control);
}

BOOL CALLBACK CheckName(HWND window, LPARAM) {
    const TControl* const control = TControl::FromHandle(window);
    if (!control || !::IsWindowVisible(window) || !IsOperated(*control))
        return TRUE;
    const std::string name = SpokenName(*control);
    EXPECT_TRUE(std::ranges::any_of(name, [](unsigned char c) { return std::isalpha(c); }))
        << control->Name() << " is called \"" << name << "\"";
    const bool isPlain = dynamic_cast<const TEdit*>(control) && control->AccessibleName().empty();
    if (const auto answer = isPlain ? SystemName(window) : std::nullopt) {
        EXPECT_EQ(*answer, name) << control->Name();
    }
    return TRUE;
}

}  // namespace

std::string SpokenName(const TControl& control) {
    if (!control.AccessibleName().empty())
        return control.AccessibleName();
    const bool captioned =
        dynamic_cast<const TButton*>(&control) || dynamic_cast<const TCheckBox*>(&control);
    return captioned ? control.Text() : LabelBefore(control.Handle());
}

void ExpectNamed(const TForm& form) {
    SCOPED_TRACE("the form \"" + form.Text() + "\"");
    ::EnumChildWindows(form.Handle(), CheckName, 0);
}

}  // namespace tests
