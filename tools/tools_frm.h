#pragma once

#include <array>
#include <string>

#include "framework/ui/buttons.h"
#include "framework/ui/combo_box.h"
#include "framework/ui/edits.h"
#include "framework/ui/form.h"
#include "framework/ui/image_list.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/timer.h"

namespace tandrel {

class TCommand;
class TToolsClass;

/// The editor of the tools. It works on the tools themselves; what is done to them stays, whether
/// the form is confirmed or not, and tools that the user deletes are only marked.
class TUserToolsForm : public framework::TForm {
public:
    /// @param tools is told of the form as long as that exists.
    explicit TUserToolsForm(TToolsClass& tools);
    ~TUserToolsForm() override;

    /// Shows the tools, the first one in the fields.
    void Init();
    /// Fills the list with the tools that are not deleted; none of them is in the fields then.
    void Load_List();
    /// Fills the list of document types.
    void Load_ComboBox();
    /// Makes the menu of macros.
    void Load_Arguments();

    /// Shows the current tool in the fields.
    void LoadCommand();
    /// Stores the fields into the current tool, if there is one.
    void SaveCommand();
    /// Empties the fields.
    void ClearFormData();
    /// The macro of that name.
    static std::string AddParam(const std::string& name);
    /// Lets a document type be chosen when there is a use for it.
    void EnableDocType();

protected:
    void Shown() override;

private:
    // Controls, in tools_layout.cpp.
    void BuildControls();
    void BuildToolBar();
    void BuildList();
    void BuildFields();
    void BuildOptions();
    framework::TEdit& AddField(const char* name, const char* caption, int top, const char* button,
                               const char* buttonCaption, void (TUserToolsForm::*click)());
    void BuildDirectoryMenu();

    // What the user does.
    void AddClick();
    void DeleteClick();
    void MoveClick(int by);
    void CommandClick();
    void ArgumentsClick();
    void InitialClick();
    void BrowseClick();
    void CaptureClick(framework::TCheckBox& box);
    void OkClick();
    void CaptionEdited(int index, const std::string& caption);
    bool ListKey(WPARAM key);
    void SelectionTimer();
    void OptionTimer();

    void EndCaption();
    void ShowCommand(TCommand* command);
    TCommand* CommandOf(const framework::TListRow* row) const;
    int ShownDocType(const std::string& type) const;

    TToolsClass& Tools_;
    framework::TImageList Pictures_;
    TCommand* Current_ = nullptr;  // the tool in the fields, or none

    framework::TListView* ListView1_ = nullptr;
    framework::TEdit* Edit1_ = nullptr;             // command
    framework::TEdit* Edit2_ = nullptr;             // arguments
    framework::TEdit* Edit3_ = nullptr;             // initial directory
    std::array<framework::TCheckBox*, 5> Boxes_{};  // in the order of the flags
    framework::TComboBox* ComboBox1_ = nullptr;
    framework::TPopupMenu* PopupMenu1_ = nullptr;  // directories
    framework::TPopupMenu* PopupMenu2_ = nullptr;  // macros
    framework::TTimer* Timer1_ = nullptr;          // selection
    framework::TTimer* Timer2_ = nullptr;          // options
};

}  // namespace tandrel
