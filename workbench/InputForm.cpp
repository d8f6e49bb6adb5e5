#include "workbench/InputForm.h"

#include <algorithm>

#include "forms/Layout.h"
#include "framework/ui/combo_box.h"

namespace workbench {

using namespace framework;

namespace {

/// Fields below one another: "Input1" and so on, then "Ok" and "Cancel".
class TInputForm : public TForm {
public:
    TInputForm(const std::string& caption, const std::vector<TInput>& inputs) : TForm(caption) {
        tandrel::TFormRows rows(*this, 460, 120);
        for (const TInput& input : inputs)
            Controls_.push_back(&Add(rows, input));
        AddOkCancel(rows);
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
    TControl& Add(tandrel::TFormRows& rows, const TInput& input) {
        const std::string name = "Input" + std::to_string(Controls_.size() + 1);
        if (input.Kind == TInput::Note)
            return rows.Line(name, input.Value);
        if (input.Kind == TInput::Flag) {
            TCheckBox& box = rows.Check(name, input.Label);
            box.SetChecked(input.Value == "1");
            return box;
        }
        if (input.Kind == TInput::Choice) {
            auto& list = *rows.Field<TComboBox>(name, input.Label, 0, input.Items);
            const auto at = std::find(input.Items.begin(), input.Items.end(), input.Value);
            list.SetItemIndex(static_cast<int>(at - input.Items.begin()));
            return list;
        }
        auto& edit = *rows.Field<TEdit>(name, input.Label, 0);
        edit.SetText(input.Value);
        return edit;
    }

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
