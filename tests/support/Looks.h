#pragma once

#include <string>

#include "framework/ui/form.h"

namespace tests {

/// Looks at a form that is open: all on it can be read, and has a name for those who have it read
/// aloud. With TANDREL_OUT set, a picture of it is left in that folder.
void Look(const framework::TForm& form, const std::string& name);

/// Runs tests of this program (a filter of GoogleTest's) as programs find the screen that start
/// with a resolution of 144 dots to the inch; fails the test when one of them fails.
void RunAtHighResolution(const std::string& filter);

}  // namespace tests
