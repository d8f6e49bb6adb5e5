#pragma once

#include <windows.h>

#include <string>

#include "framework/api.h"
#include "framework/ui/component.h"

namespace framework {

class TForm;

/// Where a control sits in its parent: at its own place, along an edge, or in what is left over.
enum class TAlign { None, Top, Bottom, Left, Right, Client };

/// A visible component with a window of the system behind it. Main thread only. Sizes and places
/// are pixels of the parent's client area; TForm::Scale turns design units into pixels.
class FRAMEWORK_API TControl : public TComponent {
public:
    ~TControl() override;

    HWND Handle() const { return Handle_; }
    TControl* Parent() const { return Parent_; }
    /// The form the control stands on; a form answers itself.
    TForm& Form();

    /// The text of an edit or the caption of anything else, in the process's code page.
    virtual std::string Text() const;
    virtual void SetText(const std::string& text);

    bool Enabled() const { return ::IsWindowEnabled(Handle_) != FALSE; }
    void SetEnabled(bool enabled) { ::EnableWindow(Handle_, enabled); }
    /// Whether the control shows when its parent does.
    bool Visible() const { return (::GetWindowLongW(Handle_, GWL_STYLE) & WS_VISIBLE) != 0; }
    virtual void SetVisible(bool visible);
    bool Focused() const { return ::GetFocus() == Handle_; }
    void SetFocus() { ::SetFocus(Handle_); }

    /// Place and size in the parent's client area; a form's on the screen.
    RECT Bounds() const;
    void SetBounds(int left, int top, int width, int height);
    int Width() const;
    int Height() const;
    /// Size of the inner area.
    SIZE ClientSize() const;
    /// A control along an edge keeps the extent it had across that edge.
    void SetAlign(TAlign align);

    /// The control behind a window, or none.
    static TControl* FromHandle(HWND window);

protected:
    /// @param parent the control to stand on; none for forms.
    explicit TControl(TControl* parent) : Parent_(parent) {}

    /// Creates the window and puts it under WndProc. Raises EOSError when it cannot be created.
    void CreateHandle(const wchar_t* windowClass, DWORD style, DWORD exStyle, HWND parent,
                      const std::string& text = {}, WORD id = 0);
    /// Every message of the window. Overrides handle theirs and pass on the others.
    virtual LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// A notification that the control's window sent to its parent.
    virtual void Notification(WORD /*code*/) {}
    /// The control is to draw itself.
    virtual void DrawItem(const DRAWITEMSTRUCT& /*item*/) {}
    /// Puts the children that are aligned to their places.
    void AlignControls();

private:
    // The only way from the system into a control. Exceptions end here.
    static LRESULT CALLBACK GuardedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND Handle_ = nullptr;
    WNDPROC SystemProc_ = nullptr;
    TControl* Parent_;
    TAlign Align_ = TAlign::None;
};

}  // namespace framework
