#include "forms/Layout.h"

#include <algorithm>

#include "framework/ui/dialogs.h"

namespace tandrel {

using namespace framework;

void TFormRows::Place(TControl& control, int left, int top, int width, int height) const {
    control.SetBounds(Form_.Scale(left), Form_.Scale(top), Form_.Scale(width), Form_.Scale(height));
}

int TFormRows::Units(int pixels) const {
    return ::MulDiv(pixels, 96, Form_.Scale(96)) + 1;
}

TLabel& TFormRows::Line(const std::string& name, const std::string& text) {
    auto& label = Form_.Make<TLabel>(name, Form_, text, Form_.Scale(Width_ - 2 * Margin));
    label.SetBounds(Form_.Scale(Margin), Form_.Scale(Top_), label.Width(), label.Height());
    Top_ += Units(label.Height()) + Gap;
    return label;
}

TLabel& TFormRows::Heading(const std::string& text) {
    TLabel& label = Line("", text);
    label.SetBold();
    return label;
}

TLabel& TFormRows::Warning(const std::string& name) {
    // A text, so that the line has its height.
    TLabel& label = Line(name, " ");
    label.SetText("");
    label.SetFontColor(RGB(192, 0, 0));
    return label;
}

TLabel& TFormRows::AddLabel(const std::string& text, int left) {
    auto& label = Form_.Make<TLabel>("", Form_, text);
    label.SetBounds(Form_.Scale(left),
                    Form_.Scale(Top_) + std::max(0, Form_.Scale(EditHeight) - label.Height()) / 2,
                    label.Width(), label.Height());
    return label;
}

void TFormRows::PlaceField(TControl& control, TLabel& label, int left, int width) {
    // A long caption stands above its control.
    if (Units(label.Width()) + Indent_ + Gap > LabelWidth_ + Gap) {
        label.SetBounds(Form_.Scale(Margin + Indent_), Form_.Scale(Top_), label.Width(),
                        label.Height());
        Top_ += Units(label.Height()) + 2;
        width += left - Margin - Indent_;
        left = Margin + Indent_;
    }
    Place(control, left, Top_, width, EditHeight);
    control.SetAnchors(akLeft | akTop | akRight);
    RowTop_ = Top_;
    RowCaption_ = label.Text();
    Top_ += EditHeight + Gap;
}

TLabel& TFormRows::AddShortLabel(const std::string& text, int left) {
    return AddLabel(text, left == 0 ? Margin + Indent_ : RowRight_ + Gap);
}

void TFormRows::PlaceShort(TControl& control, TLabel& label, int left, int width) {
    // Never on its label, however wide the letters are.
    const RECT before = label.Bounds();
    const int least = Units(static_cast<int>(before.right)) + 4;
    const int at = std::max(Margin + LabelWidth_ + left, least);
    Place(control, at, Top_, width, EditHeight);
    RowRight_ = at + width;
}

void TFormRows::PlaceBehind(TControl& control, int width) {
    const int gap = width < ButtonHeight ? 1 : Gap;
    Place(control, RowRight_ + gap, Top_, width, EditHeight);
    RowRight_ += gap + width;
}

TButton& TFormRows::Beside(const std::string& name, const std::string& caption, int width) {
    auto& button = Form_.Make<TButton>(name, Form_, caption);
    // Several rows have buttons alike.
    button.SetAccessibleName(RowCaption_ + ": " + (caption == "..." ? "Browse" : caption));
    Place(button, Width_ - Margin - width, RowTop_ - 1, width, EditHeight + 2);
    button.SetAnchors(akTop | akRight);
    return button;
}

TCheckBox& TFormRows::Check(const std::string& name, const std::string& caption) {
    auto& box = Form_.Make<TCheckBox>(name, Form_, caption);
    constexpr int BoxWidth = 20;
    const int width = Width_ - 2 * Margin - Indent_;
    const SIZE text = box.TextSize(caption, Form_.Scale(width - BoxWidth));
    const int height = std::max(17, Units(text.cy) + 2);
    Place(box, Margin + Indent_, Top_, width, height);
    box.SetAnchors(akLeft | akTop | akRight);
    Top_ += height + Gap;
    return box;
}

void TFormRows::PlaceBlock(TControl& control, int height) {
    Place(control, Margin, Top_, Width_ - 2 * Margin, height);
    RowTop_ = Top_;
    Top_ += height + Gap;
}

TOkCancel AddOkCancel(TFormRows& rows) {
    TForm& form = rows.Form();
    return framework::AddOkCancel(form, form.Scale(rows.Width()),
                                  form.Scale(rows.Top() + TFormRows::Gap));
}

TTimer& MakeDelay(TForm& form, const std::string& name, unsigned interval,
                  std::function<void()> action) {
    auto& timer = form.Make<TFormTimer>(name, form, interval);
    timer.OnTimer = [&timer, act = std::move(action)](TObject*) {
        timer.SetEnabled(false);
        act();
    };
    return timer;
}

bool AskForDirectory(TEdit& edit) {
    std::string directory = edit.Text();
    if (!DialogFunctions().SelectDirectory("Get directory", directory))
        return false;
    edit.SetText(directory);
    return true;
}

void SetEditable(TEdit& edit, bool editable) {
    edit.SetReadOnly(!editable);
    edit.SetColor(editable ? COLOR_WINDOW : COLOR_BTNFACE);
}

}  // namespace tandrel
