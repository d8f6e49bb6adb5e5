#pragma once

#include "forms/FrameDetForm.h"
#include "forms/RevisionFields.h"
#include "framework/ui/combo_box.h"

namespace tandrel {

/// What is to be compared with what.
class TDiff_Form : public TValidatedForm {
public:
    TDiff_Form();
    void LoadFormData() override;
    void SaveFormData() override;

private:
    void UpdateState();

    TField<framework::TComboBox> ComboBox1_;
    TRevisionFields First_;
    TRevisionFields Second_;
    framework::TTimer* Timer1_;
};

}  // namespace tandrel
