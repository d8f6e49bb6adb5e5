#pragma once

#include <windows.h>

#include "framework/api.h"
#include "framework/ui/control.h"

namespace framework {

/// A bar behind a control that is aligned to the left or top of its parent, with which the user
/// shares the room out between it and what follows. Make it right after aligning that control, and
/// align nothing to the far side.
class FRAMEWORK_API TSplitter : public TControl {
public:
    /// @param align the control's: Left or Top. @param minimum design units that either side keeps,
    /// also when the parent becomes small; then the room is given back when the parent grows.
    TSplitter(TControl& parent, TControl& control, TAlign align, int minimum = 30);

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Aligned() override;

private:
    bool Vertical() const { return Align_ == TAlign::Left; }
    int Extent() const { return Vertical() ? Control_.Width() : Control_.Height(); }
    int MousePosition(LPARAM mouse) const;
    void Apply(int wanted);

    TControl& Control_;
    TAlign Align_;
    int Minimum_;   // pixels
    int Wanted_;    // the control's extent if there were no minimum
    int Applied_;   // the extent that the splitter gave it last
    int Grip_ = 0;  // the mouse's distance from the control's end
};

}  // namespace framework
