#pragma once

#include "forms/FolderStep.h"

namespace tandrel {

/// Where a project is to be put, and how.
class TChechOut_Frm1 : public TFolderStep {
public:
    TChechOut_Frm1();
    void LoadFormData() override;
    void SaveFormData() override;

protected:
    std::string LoadedFolder() const override;
    void CheckFolder() override;

private:
    framework::TCheckBox* CheckBox1_;
};

}  // namespace tandrel
