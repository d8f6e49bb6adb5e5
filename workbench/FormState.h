#pragma once

#include <windows.h>

#include <string>

#include "framework/ui/form.h"
#include "hosting/Settings.h"

namespace workbench {

/// Sets the size of the inner area, in design units, or as much of it as the screen has room for.
void SetFittingSize(framework::TForm& form, int width, int height);

/// Gives a window the size that the user gave one of its kind before. @param usual design units,
/// for the first time.
void RestoreSize(framework::TForm& form, const hosting::TSettings& settings,
                 const std::string& kind, SIZE usual);
/// Remembers it. What cannot be stored is as it was at the next time.
void StoreSize(const framework::TForm& form, hosting::TSettings& settings, const std::string& kind);

}  // namespace workbench
