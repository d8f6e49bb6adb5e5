#include "workbench/FormState.h"

#include <algorithm>
#include <cstdlib>

#include "framework/base/exceptions.h"

namespace workbench {

using namespace framework;
using namespace hosting;

void RestoreSize(TForm& form, const TSettings& settings, const std::string& kind, SIZE usual) {
    const RECT room = TForm::WorkArea();
    const auto size = [&](const char* name, LONG otherwise, LONG most) {
        const int stored = std::atoi(settings.Read(settings.WindowKey(), kind + name, "").c_str());
        return std::min<int>(
            form.Scale(stored > 0 && stored <= 10000 ? stored : static_cast<int>(otherwise)),
            static_cast<int>(most));
    };
    form.SetClientSize(size("Width", usual.cx, room.right - room.left),
                       size("Height", usual.cy, room.bottom - room.top));
}

void StoreSize(const TForm& form, TSettings& settings, const std::string& kind) {
    const int dpi = form.Scale(96);
    // A window that is down on the task bar or fills the screen has no size of its own.
    if (!form.Handle() || ::IsIconic(form.Handle()) || ::IsZoomed(form.Handle()))
        return;
    const SIZE size = form.ClientSize();
    try {
        settings.Write(settings.WindowKey(), kind + "Width",
                       std::to_string(::MulDiv(size.cx, 96, dpi)));
        settings.Write(settings.WindowKey(), kind + "Height",
                       std::to_string(::MulDiv(size.cy, 96, dpi)));
    } catch (const ERegistryError&) {
        // The window closes all the same.
    }
}

}  // namespace workbench
