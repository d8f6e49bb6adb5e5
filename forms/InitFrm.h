#pragma once

#include "forms/FrameDetForm.h"
#include "framework/ui/combo_box.h"

namespace tandrel {

/// Where a new repository is to be made.
class TCrRepos_Frm : public TValidatedForm {
public:
    TCrRepos_Frm();
    void LoadFormData() override;
    void SaveFormData() override;

    /// Looks whether there can be a new repository at the path.
    void CheckIsEmptyDir();
    /// Shows the root, and tells the object the connection type.
    void SetCVSRoot();

private:
    void ConnectTypeChange();
    std::string ComposedRoot() const;

    TField<framework::TComboBox> ComboBox1_;
    TField<framework::TEdit> Edit3_;
    TField<framework::TEdit> Edit1_;
    TField<framework::TEdit> Edit2_;
    framework::TButton* Dots_;
    framework::TLabel* CheckEmptyLabel_;
    framework::TLabel* Label1_;
    framework::TTimer* Timer1_;
    framework::TTimer* Timer2_;
};

}  // namespace tandrel
