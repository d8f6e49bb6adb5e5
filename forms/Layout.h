#pragma once

#include <functional>
#include <string>
#include <utility>

#include "framework/ui/buttons.h"
#include "framework/ui/dialog_sizes.h"
#include "framework/ui/edits.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/ok_cancel.h"
#include "framework/ui/timer.h"

namespace tandrel {

/// A control with the label before it.
template <class T>
struct TField {
    framework::TLabel* Label = nullptr;
    T* Control = nullptr;

    T* operator->() const { return Control; }
    T& operator*() const { return *Control; }
    void SetEnabled(bool enabled) const {
        Label->SetEnabled(enabled);
        Control->SetEnabled(enabled);
    }
};

/// Puts the controls of a form into rows, from top to bottom, in the order in which the keyboard
/// visits them. Sizes are design units.
class TFormRows : public framework::TDialogSizes {
public:
    /// A button that stands behind an edit.
    static constexpr int ScanWidth = 50;
    static constexpr int DotsWidth = 24;

    /// @param width of the form's inner area. @param labelWidth of the labels before controls.
    TFormRows(framework::TForm& form, int width, int labelWidth)
        : Form_(form), Width_(width), LabelWidth_(labelWidth) {
        // Controls that keep their distance from the right have to know where that is.
        form.SetClientSize(form.Scale(width), form.Scale(width));
    }

    /// A line of text across the form, broken where it has to be.
    framework::TLabel& Line(const std::string& name, const std::string& text);
    /// The same in bold letters: what the form is for.
    framework::TLabel& Heading(const std::string& text);
    /// An empty line that a warning will stand in.
    framework::TLabel& Warning(const std::string& name);

    /// A control behind its label. @param beside room to leave at the row's end, for a button.
    template <class T, class... Args>
    TField<T> Field(const std::string& name, const std::string& label, int beside, Args&&... args) {
        framework::TLabel& text = AddLabel(label, Indent_ + Margin);
        T& control = Form_.Make<T>(name, Form_, std::forward<Args>(args)...);
        const int left = Margin + LabelWidth_;
        PlaceField(control, text, left, Width_ - Margin - left - beside);
        return {&text, &control};
    }
    /// A button at the end of the row last added.
    framework::TButton& Beside(const std::string& name, const std::string& caption, int width);
    /// A control of a certain width behind its label, in a row of several: EndRow ends it.
    /// @param left of the control, from where controls begin; the label stands before it.
    template <class T, class... Args>
    TField<T> ShortField(const std::string& name, const std::string& label, int left, int width,
                         Args&&... args) {
        framework::TLabel& text = AddShortLabel(label, left);
        T& control = Form_.Make<T>(name, Form_, std::forward<Args>(args)...);
        PlaceShort(control, text, left, width);
        return {&text, &control};
    }
    /// A control right behind the last one of such a row.
    template <class T, class... Args>
    T& Behind(const std::string& name, int width, Args&&... args) {
        T& control = Form_.Make<T>(name, Form_, std::forward<Args>(args)...);
        PlaceBehind(control, width);
        return control;
    }
    void EndRow() { Top_ += EditHeight + Gap; }

    /// A box across the form.
    framework::TCheckBox& Check(const std::string& name, const std::string& caption);
    /// A control across the form that takes what the form grows by.
    template <class T, class... Args>
    T& Block(const std::string& name, int height, Args&&... args) {
        T& control = Form_.Make<T>(name, Form_, std::forward<Args>(args)...);
        PlaceBlock(control, height);
        return control;
    }

    /// Rows that follow begin this much further to the right.
    void SetIndent(int indent) { Indent_ = indent; }
    void Skip(int height) { Top_ += height; }
    /// Where the next row begins, from the form's top.
    int Top() const { return Top_; }
    int Width() const { return Width_; }
    framework::TForm& Form() const { return Form_; }

    /// Puts a control to a place of its own.
    void Place(framework::TControl& control, int left, int top, int width, int height) const;

private:
    framework::TLabel& AddLabel(const std::string& text, int left);
    void PlaceField(framework::TControl& control, framework::TLabel& label, int left, int width);
    void PlaceBlock(framework::TControl& control, int height);
    framework::TLabel& AddShortLabel(const std::string& text, int left);
    void PlaceShort(framework::TControl& control, framework::TLabel& label, int left, int width);
    void PlaceBehind(framework::TControl& control, int width);
    /// Design units, rounded up.
    int Units(int pixels) const;

    framework::TForm& Form_;
    int Width_;
    int LabelWidth_;
    int Indent_ = 0;
    int Top_ = Margin;
    int RowTop_ = Margin;
    std::string RowCaption_;
    int RowRight_ = 0;
};

/// Ends the form with its buttons, below the rows.
framework::TOkCancel AddOkCancel(TFormRows& rows);

/// Makes a timer that stops itself and then acts: Restart puts the action off until the user rests.
/// While the form cannot be used it waits, without a tick, and then counts from the start.
framework::TTimer& MakeDelay(framework::TForm& form, const std::string& name, unsigned interval,
                             std::function<void()> action);

/// Lets the user choose a folder and puts it into the edit; false when none was chosen.
bool AskForDirectory(framework::TEdit& edit);

/// Makes an edit one that can be typed into, in the colour of a window, or one that shows only.
void SetEditable(framework::TEdit& edit, bool editable);

}  // namespace tandrel
