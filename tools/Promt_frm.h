#pragma once

#include <string>

#include "framework/ui/edits.h"
#include "framework/ui/form.h"

namespace tandrel {

/// Asks for the arguments of a tool that is about to run.
class TPrompt_Form : public framework::TForm {
public:
    TPrompt_Form(const std::string& command, const std::string& arguments);

    std::string Arguments() const { return Edit1_->Text(); }

protected:
    void Shown() override;

private:
    framework::TEdit* Edit1_;
};

}  // namespace tandrel
