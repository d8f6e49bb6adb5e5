#pragma once

#include <string>

#include "framework/ui/form.h"

namespace tests {

/// The next form is the result of an operation, and says how it ended.
void ExpectResult(const std::string& caption, const std::string& text);

/// Selects the row of that caption in a form's list.
void SelectRow(framework::TForm& form, const std::string& caption);

/// The next form lets one choose; this row is chosen.
void ExpectChoice(const std::string& caption, const std::string& row);

}  // namespace tests
