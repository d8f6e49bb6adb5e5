#pragma once

#include <windows.h>

#include <string>

#include "framework/api.h"
#include "framework/base/handle.h"
#include "framework/ui/control.h"
#include "framework/ui/form_watcher.h"

namespace framework {

/// A picture, stretched to the control's size.
class FRAMEWORK_API TImage : public TControl {
public:
    explicit TImage(TControl& parent);
    /// Shows a bitmap resource; 32-bit bitmaps with premultiplied alpha are blended with the
    /// background. Raises EOSError when the module has no such bitmap.
    void LoadResource(HINSTANCE module, const std::wstring& name);

protected:
    void DrawItem(const DRAWITEMSTRUCT& item) override;

private:
    GdiObject Bitmap_;
};

/// A silent clip, centred in the control. It rests while its form cannot be used.
class FRAMEWORK_API TAnimate : public TControl, private TFormWatcher {
public:
    explicit TAnimate(TControl& parent);
    /// Opens a clip from the module's AVI resources; the clip rests on its first frame. False, and
    /// an empty control, when the module has no clip that can be played.
    bool LoadResource(HINSTANCE module, int id);
    /// Plays all frames again and again.
    void Play();

private:
    void FormEnabledChanged() override;

    bool Playing_ = false;
};

}  // namespace framework
