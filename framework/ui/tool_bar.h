#pragma once

#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/control.h"
#include "framework/ui/image_list.h"

namespace framework {

class TToolBar;

/// A button with a picture on a tool bar.
class FRAMEWORK_API TToolButton : public TComponent {
public:
    /// Appends a button. @param image position in the tool bar's list. @param hint shown while the
    /// mouse rests on the button.
    TToolButton(TToolBar& bar, int image, std::wstring hint);
    ~TToolButton() override;

    bool Enabled() const { return Enabled_; }
    void SetEnabled(bool enabled);
    const std::wstring& Hint() const { return Hint_; }
    /// Does what pressing the button does. A disabled button does nothing.
    void Click();
    TNotifyEvent OnClick;

private:
    friend class TToolBar;
    TToolBar* Bar_;  // none when the bar went first
    std::wstring Hint_;
    bool Enabled_ = true;
};

/// A row of small buttons with pictures, as high as these need. The Tab key reaches it; then the
/// arrows choose a button and Enter or the space bar presses it.
class FRAMEWORK_API TToolBar : public TControl {
public:
    /// @param images must live as long as the tool bar.
    TToolBar(TControl& parent, const TImageList& images);
    ~TToolBar() override;
    /// Pictures for buttons that cannot be pressed, in place of what the system makes of the
    /// others. They must live as long as the tool bar.
    void SetDisabledImages(const TImageList& images) {
        ::SendMessageW(Handle(), TB_SETDISABLEDIMAGELIST, 0,
                       reinterpret_cast<LPARAM>(images.Get()));
    }

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Notify(NMHDR& header) override;

private:
    friend class TToolButton;
    void Press(int command);
    // Makes the next button that can be pressed the chosen one.
    void MoveHot(int from, int step);
    bool KeyDown(WPARAM key);

    std::vector<TToolButton*> Buttons_;  // by command; none in the place of one that went
};

}  // namespace framework
