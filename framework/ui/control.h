#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/base/handle.h"
#include "framework/ui/component.h"

namespace framework {

class TForm;
class TPopupMenu;

/// Where a control sits in its parent: at its own place, along an edge, or in what is left over.
enum class TAlign { None, Top, Bottom, Left, Right, Client };

/// The sides of its parent that a control keeps its distance from; the others are given way to.
enum TAnchors : unsigned { akLeft = 1, akTop = 2, akRight = 4, akBottom = 8 };
constexpr TAnchors operator|(TAnchors a, TAnchors b) {
    return static_cast<TAnchors>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

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

    /// What programs that read screens aloud call the control. Needed where they would find
    /// nothing: they take a button's caption, and for anything to be filled in or chosen from the
    /// label made just before it.
    void SetAccessibleName(const std::string& name);
    const std::string& AccessibleName() const { return AccessibleName_; }

    bool Enabled() const { return ::IsWindowEnabled(Handle_) != FALSE; }
    /// A control that is disabled gives the focus to the one before it.
    void SetEnabled(bool enabled);
    /// Whether the control shows when its parent does.
    bool Visible() const { return (::GetWindowLongW(Handle_, GWL_STYLE) & WS_VISIBLE) != 0; }
    virtual void SetVisible(bool visible);
    bool Focused() const { return ::GetFocus() == Handle_; }
    void SetFocus() { ::SetFocus(Handle_); }

    /// Place and size in the parent's client area; a form's on the screen.
    RECT Bounds() const;
    virtual void SetBounds(int left, int top, int width, int height);
    int Width() const;
    int Height() const;
    /// Size of the inner area.
    SIZE ClientSize() const;
    /// A control along an edge keeps the extent it had across that edge.
    void SetAlign(TAlign align);
    /// Between the two, what stands on the control keeps its places, however sizes change; then all
    /// of it is put in order at once. Brackets may stand in brackets. TLayoutUpdate is the bracket.
    void BeginLayout() { ++HeldLayouts_; }
    void EndLayout();
    /// From now on the control keeps the distances it has from these sides when the parent's size
    /// changes. To the left and top only, it stays where it is, as controls do of themselves.
    void SetAnchors(TAnchors anchors);

    /// The colour behind the text as an index of the system's colours (COLOR_WINDOW,
    /// COLOR_BTNFACE...), or none for the control's usual one. Edits and labels follow it.
    std::optional<int> Color() const { return Color_; }
    virtual void SetColor(std::optional<int> systemColor);
    /// The colour of the text, or none for the usual one. Edits and labels follow it.
    void SetFontColor(std::optional<COLORREF> color);
    /// Writes the control's text in bold letters of the form's font.
    void SetBold();

    /// The menu that opens at the control, and at those on it that have none; null for none. It
    /// must live as long as the control.
    void SetPopupMenu(TPopupMenu* menu) { PopupMenu_ = menu; }

    /// The size of a text in the control's font, in pixels, each line end beginning a new line.
    /// @param maxWidth pixels beyond which a line is broken; 0 for never.
    SIZE TextSize(const std::string& text, int maxWidth = 0) const;

    /// The control behind a window, or none.
    static TControl* FromHandle(HWND window);

protected:
    /// @param parent the control to stand on; none for forms.
    explicit TControl(TControl* parent);

    /// Creates the window and puts it under WndProc. Raises EOSError when it cannot be created.
    void CreateHandle(const wchar_t* windowClass, DWORD style, DWORD exStyle, HWND parent,
                      const std::string& text = {}, WORD id = 0);
    /// Takes the window away, so that another one can be created. The children's windows go, too.
    void DestroyHandle();
    /// Every message of the window. Overrides handle theirs and pass on the others.
    virtual LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// A notification that the control's window sent to its parent.
    virtual void Notification(WORD /*code*/) {}
    /// The same of a common control. @return what the control is told.
    virtual LRESULT Notify(NMHDR& /*header*/) { return 0; }
    /// The control's bar was moved.
    virtual void Scrolled(WPARAM /*what*/) {}
    /// Makes the control stand on another one. Does not move its window.
    void SetParent(TControl* parent);
    /// The control has got another size; its aligned children have followed.
    virtual void Resized() {}
    /// The parent has put its children to their places.
    virtual void Aligned() {}
    /// A key was pressed in the control or in one that stands on it. True when it is used up.
    virtual bool HandleKey(WPARAM /*key*/) { return false; }
    /// Where a menu opens that the keyboard asks for, in the client area.
    virtual POINT MenuPlace() const { return {0, 0}; }
    /// The control is to draw itself.
    virtual void DrawItem(const DRAWITEMSTRUCT& /*item*/) {}
    /// Puts the children that are aligned to their places.
    void AlignControls();
    /// Offers a key to the control of a window, or the one around it, and to all it stands on,
    /// until one has used it up.
    static bool OfferKey(HWND window, WPARAM key);
    /// Offers a key to all that stands on the control and can be seen.
    bool OfferKeyInside(WPARAM key);

private:
    // The only way from the system into a control. Exceptions end here.
    static LRESULT CALLBACK GuardedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // What the parent is asked about a child before the child draws its text.
    LRESULT Colour(TControl& child, UINT message, WPARAM wParam, LPARAM lParam);
    // A copy, for walks on which controls may be made or freed.
    std::vector<TControl*> ChildrenWithWindows() const;
    bool LayoutHeld() const;
    void AlignAll();
    void FollowAnchors();
    void OpenPopupMenu(LPARAM mouse);
    /// The keyboard must not stay where no key is heard.
    void GiveFocusAway();
    void ForgetAccessibleName();

    HWND Handle_ = nullptr;
    WNDPROC SystemProc_ = nullptr;
    TControl* Parent_ = nullptr;
    std::vector<TControl*> Children_;  // in the order they were made
    std::string AccessibleName_;
    int HeldLayouts_ = 0;
    TAlign Align_ = TAlign::None;
    TAnchors Anchors_ = akLeft | akTop;
    RECT AnchorMargins_{};  // distances from the parent's four sides
    SIZE AnchorSize_{};     // the control's own size
    std::optional<int> Color_;
    std::optional<COLORREF> FontColor_;
    GdiObject BoldFont_;
    TPopupMenu* PopupMenu_ = nullptr;
};

/// The bracket of BeginLayout and EndLayout.
class TLayoutUpdate {
public:
    explicit TLayoutUpdate(TControl& control) : Control_(control) { Control_.BeginLayout(); }
    ~TLayoutUpdate() { Control_.EndLayout(); }
    TLayoutUpdate(const TLayoutUpdate&) = delete;
    TLayoutUpdate& operator=(const TLayoutUpdate&) = delete;

private:
    TControl& Control_;
};

}  // namespace framework
