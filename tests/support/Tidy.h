#pragma once

#include "framework/ui/form.h"

namespace tests {

/// Fails the test when something on the form cannot be read: a caption that is cut off, controls on
/// top of each other or beyond the edge of what they stand on. Or when the keyboard goes up or
/// back.
void ExpectTidy(const framework::TForm& form);

}  // namespace tests
