#pragma once

#include "forms/FrameDetForm.h"

namespace tandrel {

/// A step that asks for a folder: "Edit3" with a button behind it. Typing is looked at when it has
/// rested for half a second.
class TFolderStep : public TValidatedForm {
public:
    void LoadFormData() override;

protected:
    /// The object's folder that the step edits.
    virtual std::string LoadedFolder() const = 0;
    /// The folder has changed: sets the validity.
    virtual void CheckFolder() = 0;
    void AddFolder(TFormRows& rows, const std::string& label);

    using TValidatedForm::TValidatedForm;

    TField<framework::TEdit> Edit3_;
};

}  // namespace tandrel
