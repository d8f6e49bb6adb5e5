#include "tools/Promt_frm.h"

#include <algorithm>

#include "framework/base/lead_bytes.h"
#include "framework/ui/dialog_sizes.h"
#include "framework/ui/labels.h"
#include "framework/ui/ok_cancel.h"
#include "tools/Dialogs.h"

namespace tandrel {

using namespace framework;

namespace {

// Design units.
constexpr int FormWidth = 420, Margin = TDialogSizes::Margin, Gap = TDialogSizes::Gap;
constexpr int FieldLeft = 110, FieldWidth = FormWidth - FieldLeft - Margin,
              EditHeight = TDialogSizes::EditHeight;
/// Longer commands are shown in part: the form has to stay on the screen.
constexpr std::size_t LongestCommand = 1000;

std::string Shortened(const std::string& command) {
    return command.size() > LongestCommand
               ? std::string(WholeLetters(command, LongestCommand)) + "..."
               : command;
}

}  // namespace

TPrompt_Form::TPrompt_Form(const std::string& command, const std::string& arguments)
    : TForm("Enter Arguments") {
    const auto label = [this](const char* name, const std::string& text, int left, int top,
                              int maxWidth) {
        auto& made = Make<TLabel>(name, *this, text, maxWidth);
        made.SetBounds(left, top, made.Width(), made.Height());
        return made.Height();
    };
    int top = Scale(Margin);
    label("Label1", "Tools command", Scale(Margin), top, 0);
    const int height =
        label("Label2", Shortened(command), Scale(FieldLeft), top, Scale(FieldWidth));
    top += std::max(height, Scale(EditHeight - Gap)) + Scale(Gap);
    // Made just before the edit, the label is taken for its name.
    const int lower = (Scale(EditHeight) - TextSize("T").cy) / 2;
    label("Label3", "Tolls arguments", Scale(Margin), top + lower, 0);
    Edit1_ = &Make<TEdit>("Edit1", *this);
    Edit1_->SetText(arguments);
    Edit1_->SetBounds(Scale(FieldLeft), top, Scale(FieldWidth), Scale(EditHeight));

    top += Scale(EditHeight + Margin + Gap);
    AddOkCancel(*this, Scale(FormWidth), top);
}

void TPrompt_Form::Shown() {
    Edit1_->SetFocus();
    Edit1_->SelectAll();
}

bool Sh_Prompt_Form(const std::string& command, std::string& arguments) {
    TPrompt_Form form(command, arguments);
    if (form.ShowModal() != mrOk)
        return false;
    arguments = form.Arguments();
    return true;
}

}  // namespace tandrel
