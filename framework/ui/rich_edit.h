#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "framework/api.h"
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
    /// Adds text at the end and brings that into view. A CR LF may come in two pieces.
    void Append(const std::string& text);

    bool ReadOnly() const;
    void SetReadOnly(bool readOnly);

    /// The text has changed, by the user or by SetText.
    TNotifyEvent OnChange;
    /// A key was let go in the control.
    std::function<void(WPARAM key)> OnKeyUp;

protected:
    enum class TKind { Plain, Coloured };
    TTextControl(TControl& parent, TKind kind);
    void Notification(WORD code) override;
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void CreateControl();
    void RenewControl();

    bool AfterReturn_ = false;  // what was appended last ended so
    TKind Kind_;
};

/// Text to be typed, several lines of it. Enter begins a new line, Tab goes on to the next control,
/// Ctrl+A selects all.
class FRAMEWORK_API TMemo : public TTextControl {
public:
    explicit TMemo(TControl& parent) : TTextControl(parent, TKind::Plain) {}
};

/// Text whose parts can have colours.
///
/// Positions count the bytes of Text from zero: a line's end counts two.
class FRAMEWORK_API TRichEdit : public TTextControl {
public:
    explicit TRichEdit(TControl& parent);

    /// The control as what a model writes its text to.
    TTextView& View() { return View_; }
    void SetText(const std::string& text) override;

    /// Nothing is drawn between the two. Brackets may stand in brackets.
    void BeginUpdate();
    void EndUpdate();

    /// Selects from this position on; the selection is empty then.
    void SetSelStart(std::size_t position);
    void SetSelLength(std::size_t length);
    /// Colours the selected text.
    void SetSelColor(COLORREF color);

protected:
    void Notification(WORD code) override;

private:
    class FRAMEWORK_API TView final : public TTextView {
    public:
        explicit TView(TRichEdit& edit) : Edit_(edit) {}
        void Clear() override { Edit_.Clear(); }
        void SetText(const std::string& text) override { Edit_.SetText(text); }

    private:
        TRichEdit& Edit_;
    };

    LONG ControlPosition(std::size_t position);
    void Select();
    void ApplySelection();

    TView View_;
    int Updating_ = 0;
    // What was selected in a bracket and not used yet. The control takes its time for each.
    bool Unapplied_ = false;
    std::size_t SelStart_ = 0, SelLength_ = 0;
    // What positions are looked up in; made when it is needed, gone when the text changes.
    struct TLine {
        std::size_t Start;  // in Known_
        LONG ControlStart;  // in the control
    };
    std::string Known_;
    std::vector<TLine> Lines_;
};

}  // namespace framework
