#include "workbench/InputForm.h"

#include <algorithm>

#include "framework/ui/combo_box.h"
#include "framework/ui/dialog_sizes.h"
#include "framework/ui/edits.h"
#include "framework/ui/labels.h"
#include "framework/ui/ok_cancel.h"

namespace workbench {

using namespace framework;

namespace {

/// Fields below one another: "Input1" and so on, then "Ok" and "Cancel".
class TInputForm : public TForm {
public:
    TInputForm(const std::string& caption, const std::vector<TInput>& inputs) : TForm(caption) {
        for (const TInput& input : inputs)
            AddInput(input);
        AddOkCancel(*this, Scale(Width), Scale(Top_ + TDialogSizes::Gap));
    }

    void Save(std::vector<TInput>& inputs) const {
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            if (inputs[i].Kind == TInput::Note)
                continue;
            const auto* box = dynamic_cast<TCheckBox*>(Controls_[i]);
            const auto* list = dynamic_cast<TComboBox*>(Controls_[i]);
            inputs[i].Value = box    ? (box->Checked() ? "1" : "")
                              : list ? list->Item(list->ItemIndex())
                                     : Controls_[i]->Text();
        }
    }

private:
    static constexpr int Width = 460, Margin = TDialogSizes::Margin, LabelWidth = 120;
    static constexpr int Row = TDialogSizes::EditHeight + TDialogSizes::Gap;

    void AddInput(const TInput& input) {
        const std::string name = "Input" + std::to_string(Controls_.size() + 1);
        if (input.Kind == TInput::Note)
            return AddNote(name, input.Value);
        if (input.Kind != TInput::Flag) {
            auto& label = Make<TLabel>("", *this, input.Label);
            label.SetBounds(Scale(Margin), Scale(Top_ + 3), label.Width(), label.Height());
        }
        switch (input.Kind) {
            case TInput::Flag: {
                auto& box = Make<TCheckBox>(name, *this, input.Label);
                box.SetChecked(input.Value == "1");
                return Place(box, Margin, Width - 2 * Margin);
            }
            case TInput::Choice: {
                auto& list = Make<TComboBox>(name, *this, input.Items);
                const auto at = std::find(input.Items.begin(), input.Items.end(), input.Value);
                list.SetItemIndex(static_cast<int>(at - input.Items.begin()));
                return Place(list, Margin + LabelWidth, Width - 2 * Margin - LabelWidth);
            }
            case TInput::Note:
                return;
            case TInput::Text: {
                auto& edit = Make<TEdit>(name, *this);
                edit.SetText(input.Value);
                return Place(edit, Margin + LabelWidth, Width - 2 * Margin - LabelWidth);
            }
        }
    }

    void AddNote(const std::string& name, const std::string& text) {
        auto& label = Make<TLabel>(name, *this, text, Scale(Width - 2 * Margin));
        label.SetBounds(Scale(Margin), Scale(Top_), label.Width(), label.Height());
        Controls_.push_back(&label);
        Top_ += ::MulDiv(label.Height(), 96, Scale(96)) + TDialogSizes::Gap;
    }

    void Place(TControl& control, int left, int width) {
        control.SetBounds(Scale(left), Scale(Top_), Scale(width), Scale(TDialogSizes::EditHeight));
        Controls_.push_back(&control);
        Top_ += Row;
    }

    int Top_ = Margin;
    std::vector<TControl*> Controls_;
};

}  // namespace

bool AskFor(const std::string& caption, std::vector<TInput>& inputs) {
    TInputForm form(caption, inputs);
    if (form.ShowModal() != mrOk)
        return false;
    form.Save(inputs);
    return true;
}

}  // namespace workbench
