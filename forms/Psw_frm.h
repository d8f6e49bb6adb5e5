#pragma once

#include "forms/FrameDetForm.h"

namespace tandrel {

/// The password for a password server.
class TPassword_Form : public TValidatedForm {
public:
    TPassword_Form();
    void LoadFormData() override;
    void SaveFormData() override;
    /// Hands the password over at once: the next step shows the root that it is part of.
    void OnNextForm() override;

private:
    void Evaluate();

    TField<framework::TEdit> Edit3_;
};

}  // namespace tandrel
