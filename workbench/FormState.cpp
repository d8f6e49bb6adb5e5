#include "workbench/FormState.h"

#include <algorithm>
#include <cstdlib>

#include "framework/base/exceptions.h"

namespace workbench {

using namespace framework;
using namespace hosting;

void SetFittingSize(TForm& form, int width, int height) {
    const RECT room = TForm::WorkArea();
    const SIZE client = form.ClientSize();
    // With the menu, which comes later.
    const int frameWidth = form.Width() - static_cast<int>(client.cx);
    const int frameHeight =
        form.Height() - static_cast<int>(client.cy) + ::GetSystemMetrics(SM_CYMENU);
    form.SetClientSize(std::min<int>(form.Scale(width), room.right - room.left - frameWidth),
                       std::min<int>(form.Scale(height), room.bottom - room.top - frameHeight));
}

void RestoreSize(TForm& form, const TSettings& settings, const std::string& kind, SIZE usual) {
    const auto size = [&](const char* name, LONG otherwise) {
        const int stored = std::atoi(settings.Read(settings.WindowKey(), kind + name, "").c_str());
        return stored > 0 && stored <= 10000 ? stored : static_cast<int>(otherwise);
    };
    SetFittingSize(form, size("Width", usual.cx), size("Height", usual.cy));
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
