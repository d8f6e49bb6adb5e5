#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "framework/api.h"
#include "framework/base/handle.h"
#include "framework/ui/control.h"

namespace framework {

/// A part of a line that stands out.
struct TLineMark {
    std::size_t Start;   ///< In bytes of the line's text.
    std::size_t Length;  ///< In bytes.
};

/// What a line view draws of a line.
struct TViewLine {
    std::string Margin;            ///< In front of the text; does not scroll to the side.
    std::string Text;              ///< Without its end; in the process's code page.
    std::optional<COLORREF> Back;  ///< Behind both; the window's colour without one.
    std::vector<TLineMark> Marks;  ///< In their order; they do not overlap.
    COLORREF MarkBack = 0;         ///< Behind them.
    bool Bold = false;
};

/// The window's colour with some of another in it, so that text on it stays readable in any colours
/// the user has chosen. @param percent of the other one.
FRAMEWORK_API COLORREF Tint(COLORREF color, int percent);

/// Many lines of text in letters of one width, in one column or in several side by side that scroll
/// together. The lines are asked for when they are drawn. One line is the current one; the keyboard
/// and the mouse select lines around it. With a contrast theme no colours but the system's are
/// used, and marks are underlined: what colours say has to be said in the margin, too.
class FRAMEWORK_API TLineView : public TControl {
public:
    explicit TLineView(TControl& parent, int columns = 1);

    /// @param column from 0.
    using TLineOf = std::function<TViewLine(int line, int column)>;
    /// Shows other lines, the first one current. @param longest letters of the longest text.
    void SetLines(int count, int longest, TLineOf lineOf);
    /// The width of all margins, in letters.
    void SetMarginWidth(int letters);

    int Count() const { return Count_; }
    TViewLine Line(int line, int column) const { return LineOf_(line, column); }
    /// The current line; -1 when there is none.
    int Current() const { return Count_ == 0 ? -1 : Current_; }
    /// Makes a line the current one and brings it into view, with some lines around it.
    void SetCurrent(int line);
    /// The first line that is seen.
    int TopLine() const { return Top_; }
    /// The first selected line and the last.
    std::pair<int, int> Selection() const;
    void Select(int first, int last);
    void SelectAll() { Select(0, Count_ - 1); }
    /// The column that the user has clicked into, or turned to with Ctrl and an arrow.
    int Column() const { return Column_; }
    /// Puts the texts of the selected lines of that column on the clipboard.
    void Copy() const;

    /// Another line has become the current one.
    TNotifyEvent OnCurrent;
    /// Enter was pressed or a line was clicked twice.
    TNotifyEvent OnActivate;
    /// What shows while the mouse rests on a line; nothing for an empty text.
    std::function<std::string(int line, int column)> OnHint;

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Notify(NMHDR& header) override;
    void Resized() override;
    POINT MenuPlace() const override;

private:
    void MakeFont();
    void Paint();
    void PaintLine(HDC dc, int line, int column, const RECT& place) const;
    void PaintText(HDC dc, const TViewLine& text, const RECT& place) const;
    RECT ColumnPlace(int column) const;
    int VisibleLines() const;
    int VisibleLetters() const;
    void UpdateBars();
    void ScrollBar(int bar, WPARAM what);
    void ScrollTo(int top);
    void ScrollToSide(int letter);
    void MoveTo(int line, bool extend);
    void BringIntoView(int line, int around);
    bool HandleLineKey(WPARAM key);
    void Press(LPARAM mouse, bool extend);
    void Wheel(WPARAM wheel);
    int LineAt(int y) const;
    void TellCurrent();
    void ShowHint(LPARAM mouse);

    const int Columns_;
    int Count_ = 0;
    int Longest_ = 0;
    TLineOf LineOf_;
    int MarginLetters_ = 0;
    int Top_ = 0;
    int Side_ = 0;  // letters that are scrolled out
    int Current_ = 0;
    int Anchor_ = 0;  // the other end of the selection
    int Column_ = 0;
    int WheelRest_ = 0;
    std::string OwnName_;
    GdiObject Font_;
    GdiObject BoldFont_;
    SIZE Letter_{1, 1};
    HWND Hints_ = nullptr;  // the control's window owns it
    std::pair<int, int> Hinted_{-1, -1};
    std::wstring HintText_;
};

}  // namespace framework
