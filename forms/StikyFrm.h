#pragma once

#include "forms/DateTimeFields.h"
#include "forms/FrameDetForm.h"
#include "framework/ui/combo_box.h"

namespace tandrel {

/// Which revision the working copy is to stick to.
class TStiky_Frm : public TValidatedForm {
public:
    TStiky_Frm();
    void LoadFormData() override;
    void SaveFormData() override;

private:
    void Evaluate();

    TField<framework::TComboBox> ComboBox1_;
    TField<framework::TEdit> Edit3_;
    TField<framework::TEdit> Edit6_;
    framework::TButton* ScanBranch_;
    framework::TButton* ScanLabel_;
    TDateTimeFields Date_;
    framework::TTimer* Timer1_;
};

}  // namespace tandrel
