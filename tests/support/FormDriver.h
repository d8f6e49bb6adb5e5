#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "framework/ui/form.h"

// Drives modal forms. A form that nobody expected fails the test and is closed, so does an expected
// one that never came; no test leaves a form behind.

namespace tests {

/// The next modal form is to have this caption; `drive` is called with it when it is open and then
/// has to end it, at once or by messages it posts. What `drive` expects comes next.
void ExpectForm(const std::string& caption, std::function<void(framework::TForm&)> drive);

/// Clicks the form's button of that name; fails the test when there is none.
void Click(framework::TForm& form, const std::string& button);
/// The text of the form's component of that name; fails the test when there is none.
std::string TextOf(const framework::TForm& form, const std::string& component);
/// Posts a key press to the form, as if it was typed there.
void PressKey(framework::TForm& form, WPARAM key);

/// The captions of the buttons that look like the default one, on the form and on those it hosts.
std::string MarkedButtons(const framework::TForm& form);

/// Watches over the forms of all tests of a program.
class TFormGuard final : public testing::EmptyTestEventListener {
public:
    TFormGuard();
    void OnTestEnd(const testing::TestInfo& test) override;
};

}  // namespace tests
