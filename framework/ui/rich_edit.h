#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/base/lead_bytes.h"
#include "framework/ui/control.h"
#include "framework/ui/views.h"

namespace framework {

/// A text with lines of any length and number. Lines end in CR LF in Text, whatever they ended in
/// before; all other characters come back as they were set.
class FRAMEWORK_API TTextControl : public TControl {
public:
    std::string Text() const override;
    void SetText(const std::string& text) override;
    void Clear() { SetText({}); }
    /// Adds text at the end and brings that into view, unless the user looks at something before
    /// it or has selected something. A CR LF may come in two pieces, and so may a letter of two
    /// bytes: its first one is in Text, but shows only with what is added next.
    void Append(const std::string& text);
    /// Shows all text, also what comes later, in letters of one width.
    void SetFixedPitch();
    void Copy() { ::SendMessageW(Handle(), WM_COPY, 0, 0); }
    void SelectAll();
    /// Selects the next place of a text (any case) behind the selection, from the beginning again
    /// where there is none; false when there is none at all.
    bool FindNext(const std::string& text);
    /// Selects a part of the text and brings it into view. @param start, length in bytes of the
    /// text, a line's end counting two.
    void Select(std::size_t start, std::size_t length);
    /// Where the selection begins, likewise.
    std::size_t SelectionStart() const;
    /// Puts a text in the place of what is selected. The user can take it back.
    void ReplaceSelection(const std::string& text);
    /// The line with the caret, without its end.
    std::string CaretLine() const;

    /// The control asks nobody for its colours: it is told.
    void SetColor(std::optional<int> systemColor) override;
    bool ReadOnly() const;
    void SetReadOnly(bool readOnly);

    /// The text has changed, by the user or by SetText.
    TNotifyEvent OnChange;
    /// The user has clicked into the text, and selected nothing.
    TNotifyEvent OnClick;
    /// A key was let go in the control.
    std::function<void(WPARAM key)> OnKeyUp;

protected:
    enum class TKind { Plain, Coloured };
    TTextControl(TControl& parent, TKind kind);
    void Notification(WORD code) override;
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    /// What Append does. @param color none for the usual one.
    void Insert(const std::string& text, std::optional<COLORREF> color);
    /// Reads a new text, in one of the control's own formats (SF_TEXT, SF_RTF...).
    void Read(WPARAM format, const void* text, std::size_t bytes);

private:
    void CreateControl();
    void RenewControl();
    void TellColor();
    void TellFont();
    bool EndIsInView() const;

    bool FixedPitch_ = false;
    bool AfterReturn_ = false;  // what was appended last ended so
    TLetterPieces Pieces_;
    TKind Kind_;
};

/// Text to be typed, several lines of it. Enter begins a new line, Tab goes on to the next control,
/// Ctrl+A selects all.
class FRAMEWORK_API TMemo : public TTextControl {
public:
    explicit TMemo(TControl& parent) : TTextControl(parent, TKind::Plain) {}
};

/// A part of a text that has a colour of its own.
struct TColoredRange {
    std::size_t Start;   ///< In bytes of the text, a line's end counting two.
    std::size_t Length;  ///< In bytes.
    COLORREF Color;
};

/// Text whose parts can have colours.
class FRAMEWORK_API TRichEdit : public TTextControl {
public:
    explicit TRichEdit(TControl& parent);

    /// The control as what a model writes its text to.
    TTextView& View() { return View_; }

    /// As Append, in a colour.
    void AppendColored(const std::string& text, COLORREF color) { Insert(text, color); }
    /// Colours parts of the text, and gives the rest its usual colour. Afterwards the text is seen
    /// from its beginning. @param ranges in any order; where they overlap the last one counts, and
    /// what of them lies beyond the end is left out.
    void ColorRanges(const std::vector<TColoredRange>& ranges);

private:
    class FRAMEWORK_API TView final : public TTextView {
    public:
        explicit TView(TRichEdit& edit) : Edit_(edit) {}
        void Clear() override { Edit_.Clear(); }
        void SetText(const std::string& text) override { Edit_.SetText(text); }

    private:
        TRichEdit& Edit_;
    };

    TView View_;
};

}  // namespace framework
