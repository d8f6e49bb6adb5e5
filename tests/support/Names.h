#pragma once

#include <string>

#include "framework/ui/form.h"

namespace tests {

/// What programs that read screens aloud call a control: the name it was given, its caption, or the
/// text of the label before it. Empty when it has none.
std::string SpokenName(const framework::TControl& control);

/// Fails the test when something on the form that a user can operate has no name.
void ExpectNamed(const framework::TForm& form);

}  // namespace tests
