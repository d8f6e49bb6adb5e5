#pragma once

#include "framework/api.h"
#include "framework/ui/buttons.h"
#include "framework/ui/form.h"

namespace framework {

/// The buttons at the end of a dialog.
struct TOkCancel {
    TButton& Ok;
    TButton& Cancel;
};

/// Ends a form with the buttons "BitBtn1", its default one, and "BitBtn2", for the Esc key, and
/// gives it its size. @param width of its inner area. @param top of the buttons; both in pixels.
FRAMEWORK_API TOkCancel AddOkCancel(TForm& form, int width, int top);

}  // namespace framework
