#pragma once

#include "forms/FolderStep.h"

namespace tandrel {

/// Which folder is to be placed into the repository.
class TPlace_Frm1 : public TFolderStep {
public:
    TPlace_Frm1();
    void LoadFormData() override;
    void SaveFormData() override;

protected:
    std::string LoadedFolder() const override;
    void CheckFolder() override;

private:
    framework::TCheckBox* CheckBox2_;
    framework::TLabel* CheckEmptyLabel_;
};

}  // namespace tandrel
