#include "tests/support/Tidy.h"

#include <gtest/gtest.h>

#include <vector>

#include "framework/ui/buttons.h"
#include "framework/ui/labels.h"

namespace tests {
namespace {

using namespace framework;

std::string NameOf(const TControl& control) {
    return (control.Name().empty() ? "" : control.Name() + " ") + "\"" + control.Text() + "\"";
}

std::vector<TControl*> VisibleChildren(HWND parent) {
    std::vector<TControl*> children;
    for (HWND child = ::GetWindow(parent, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (TControl* control = TControl::FromHandle(child); control && control->Visible())
            children.push_back(control);
    return children;
}

/// Room that a control needs around its caption.
SIZE Around(const TControl& control) {
    if (dynamic_cast<const TButton*>(&control))
        return {8, 4};
    if (dynamic_cast<const TCheckBox*>(&control))
        return {16, 0};
    return {0, 0};
}

bool HasCaption(const TControl& control) {
    return dynamic_cast<const TButton*>(&control) || dynamic_cast<const TCheckBox*>(&control) ||
           dynamic_cast<const TLabel*>(&control);
}

void CheckCaption(const TControl& control) {
    const SIZE around = Around(control);
    // A button's caption is one line.
    const int room = control.Width() - static_cast<int>(around.cx);
    const bool breaks = !dynamic_cast<const TButton*>(&control);
    const SIZE text = control.TextSize(control.Text(), breaks ? room : 0);
    EXPECT_LE(text.cx, room) << NameOf(control) << " is cut off";
    EXPECT_LE(text.cy, control.Height() - around.cy) << NameOf(control) << " is cut off";
}

void CheckInside(const TControl& control, const SIZE& area) {
    const RECT bounds = control.Bounds();
    EXPECT_GE(bounds.left, 0) << NameOf(control);
    EXPECT_GE(bounds.top, 0) << NameOf(control);
    EXPECT_LE(bounds.right, area.cx) << NameOf(control) << " is beyond the edge";
    EXPECT_LE(bounds.bottom, area.cy) << NameOf(control) << " is beyond the edge";
}

void CheckApart(const std::vector<TControl*>& controls) {
    for (std::size_t i = 0; i < controls.size(); ++i)
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            if (dynamic_cast<TGroupBox*>(controls[i]) || dynamic_cast<TGroupBox*>(controls[j]))
                continue;
            const RECT a = controls[i]->Bounds(), b = controls[j]->Bounds();
            RECT both;
            EXPECT_FALSE(::IntersectRect(&both, &a, &b))
                << NameOf(*controls[i]) << " lies on " << NameOf(*controls[j]);
        }
}

/// @param controls in the order in which the keyboard visits them.
void CheckOrder(const std::vector<TControl*>& controls) {
    const TControl* before = nullptr;
    for (const TControl* control : controls) {
        if (!(::GetWindowLongW(control->Handle(), GWL_STYLE) & WS_TABSTOP))
            continue;
        if (before) {
            const RECT a = before->Bounds(), b = control->Bounds();
            EXPECT_TRUE(b.top >= a.bottom || b.left >= a.right)
                << NameOf(*control) << " comes behind " << NameOf(*before);
        }
        before = control;
    }
}

void CheckChildren(const TControl& parent) {
    const std::vector<TControl*> children = VisibleChildren(parent.Handle());
    for (const TControl* child : children) {
        CheckInside(*child, parent.ClientSize());
        if (HasCaption(*child))
            CheckCaption(*child);
        CheckChildren(*child);
    }
    CheckApart(children);
    CheckOrder(children);
}

}  // namespace

void ExpectTidy(const TForm& form) {
    SCOPED_TRACE("the form \"" + form.Text() + "\"");
    CheckChildren(form);
}

}  // namespace tests
