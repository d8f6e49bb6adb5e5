#pragma once

#include <vector>

#include "core/Customvcs_types.h"
#include "forms/FrameDetForm.h"
#include "framework/ui/combo_box.h"

namespace tandrel {

/// The connection and the other settings of a project: a step of wizards, or a dialog of its own.
class TPreferences_Form : public TValidatedForm {
public:
    TPreferences_Form();
    void LoadFormData() override;
    /// The same for a dialog of its own, which keeps its buttons.
    void LoadFormData2();
    /// The form edits a project's properties: the repository need not be there yet.
    void SetPropertyMode() { PropertyMode_ = true; }
    /// The project does not exist yet: its name is the one shown, whether the user changes it or
    /// not. Otherwise only a name that the user has changed is taken.
    void SetSavesShownName() { SavesShownName_ = true; }
    void SaveFormData() override;
    /// The settings reach the object as soon as the user goes on.
    void OnNextForm() override;
    /// Looks whether the input can do: in a wizard, whether a local repository is there.
    void CheckCVSDir(const std::string& path);

protected:
    /// Leaves only what makes the connection.
    void HideProjectFields();

private:
    void AddConnectionFields(TFormRows& rows);
    void AddProjectFields(TFormRows& rows);
    void Load();
    void BindEvents();
    void Timer1Timer();
    void Timer2Timer();
    void ShowRoot();
    void SaveModulename();
    TConnectionType ConnectionType() const;

    bool PropertyMode_ = false;
    bool AsksForProject_ = true;
    bool SavesShownName_ = false;
    std::string LoadedName_;
    bool NameChanged_ = false;
    TField<framework::TComboBox> ComboBox1_;
    TField<framework::TEdit> Edit1_;
    TField<framework::TEdit> Edit2_;
    TField<framework::TEdit> Edit3_;
    TField<framework::TEdit> Edit4_;
    TField<framework::TEdit> Edit5_;
    TField<framework::TEdit> Edit6_;
    TField<framework::TEdit> Edit7_;
    TField<framework::TEdit> Edit8_;
    framework::TButton* PathDots_;
    framework::TButton* RshDots_;
    framework::TCheckBox* CheckBox1_;
    framework::TLabel* CheckEmptyLabel_;
    framework::TTimer* Timer1_;
    framework::TTimer* Timer2_;
};

/// The connection alone: a step of logging in and out.
class TConnectForm : public TPreferences_Form {
public:
    TConnectForm();
};

}  // namespace tandrel
