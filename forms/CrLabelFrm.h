#pragma once

#include "forms/Layout.h"
#include "forms/Pictures.h"
#include "framework/ui/list_view.h"

namespace tandrel {

class TCvsObject;

/// Asks for the name of a label or branch that is to be made or deleted.
class TCrLabel_Form : public framework::TForm {
public:
    /// What makes the four dialogs differ.
    struct TVariant {
        const char* Caption;
        bool Labels;   ///< Version labels, not branches.
        bool Deletes;  ///< The name is chosen, not typed.
        const char* EvenIfModified;
    };
    TCrLabel_Form(TCvsObject& cvs, const TVariant& variant);

    void LoadFormData();
    void SaveFormData();

private:
    void Fill();
    /// Makes the selected row's name the one.
    void TakeSelected();

    TCvsObject& Cvs_;
    const TVariant& Variant_;
    TStateImages Images_;
    TField<framework::TEdit> Edit1_;
    framework::TListView* ListView1_;
    framework::TCheckBox* CheckBox1_;
    framework::TCheckBox* CheckBox2_;
    framework::TButton* Ok_;
    framework::TTimer* Timer1_;
    framework::TTimer* Timer2_;
};

}  // namespace tandrel
