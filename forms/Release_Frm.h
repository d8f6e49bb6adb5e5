#pragma once

#include "forms/Layout.h"

namespace tandrel {

class TCvsObject;

/// What is to become of a working copy that is given up.
class TRelease_Form : public framework::TForm {
public:
    TRelease_Form();
    void LoadFormData(const TCvsObject& cvs);
    void SaveFormData(TCvsObject& cvs) const;

private:
    void CheckBox1Click();
    void CheckBox2Click();

    framework::TCheckBox* CheckBox1_;
    framework::TCheckBox* CheckBox2_;
    framework::TCheckBox* CheckBox3_;
};

}  // namespace tandrel
