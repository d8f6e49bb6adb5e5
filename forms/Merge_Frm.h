#pragma once

#include "forms/FrameDetForm.h"
#include "forms/RevisionFields.h"
#include "framework/ui/combo_box.h"

namespace tandrel {

/// What an update is to merge into the working copy.
class TMerge_Form : public TValidatedForm {
public:
    TMerge_Form();
    void LoadFormData() override;
    void SaveFormData() override;

private:
    void Evaluate();

    TField<framework::TComboBox> ComboBox1_;
    TRevisionFields First_;
    TRevisionFields Second_;
    framework::TTimer* Timer1_;
};

}  // namespace tandrel
