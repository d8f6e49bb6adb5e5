#include "tools/tools_frm.h"

#include <vector>

#include "framework/base/files.h"
#include "framework/ui/dialogs.h"
#include "tools/Dialogs.h"
#include "tools/Tools_obj.h"

namespace tandrel {

using namespace framework;

namespace {

/// The flags in the order of the check boxes.
constexpr bool TCommand::*Flags[] = {&TCommand::FCaptureToolView, &TCommand::FPreviewExternal,
                                     &TCommand::FCaptureNewDoc, &TCommand::FPromptArgs,
                                     &TCommand::FCloseOnExit};
constexpr std::size_t Captures = 3;  // so many of them, the first ones, capture output
constexpr std::size_t NewDoc = 2, CloseOnExit = 4;

constexpr char CommandFilter[] =
    "Executable files (*.exe)|*.EXE|command files (*.cmd)|*.CMD|bat files (*.bat)|*.BAT";

POINT MousePlace() {
    POINT place{};
    ::GetCursorPos(&place);
    return place;
}

}  // namespace

TUserToolsForm::TUserToolsForm(TToolsClass& tools) : TForm("User Tools"), Tools_(tools) {
    BuildControls();
    Tools_.Form = this;
}

TUserToolsForm::~TUserToolsForm() {
    Tools_.Form = nullptr;
    // They use the pictures.
    FreeComponents();
}

void TUserToolsForm::Init() {
    Load_List();
    ListView1_->Select(0);
    Load_ComboBox();
    Load_Arguments();
    ShowCommand(CommandOf(ListView1_->Selected()));
}

void TUserToolsForm::Shown() {
    // Without a tool the next thing to do is to add one, and that is the first control.
    if (ListView1_->Count() > 0)
        ListView1_->SetFocus();
}

TCommand* TUserToolsForm::CommandOf(const TListRow* row) const {
    return row ? dynamic_cast<TCommand*>(row->Data) : nullptr;
}

void TUserToolsForm::Load_List() {
    Current_ = nullptr;
    const TListUpdate update(ListView1_->Rows());
    ListView1_->Rows().Clear();
    for (TCommand& command : Tools_.Commands)
        if (!command.FDeleted)
            ListView1_->Rows().Add({.Caption = command.FName, .SubItems = {}, .Data = &command});
}

void TUserToolsForm::Load_ComboBox() {
    ComboBox1_->SetItems(
        std::vector<std::string>(Tools_.FDocTypes.begin(), Tools_.FDocTypes.end()));
}

void TUserToolsForm::Load_Arguments() {
    PopupMenu2_->Clear();
    for (const TArgument& argument : Tools_.Arguments)
        PopupMenu2_->Add(argument.FCaption).OnClick = [this, name = argument.FName](TObject*) {
            const std::string before = Edit2_->Text();
            Edit2_->SetText(before + (before.empty() ? "" : " ") + AddParam(name));
        };
}

std::string TUserToolsForm::AddParam(const std::string& name) {
    return "$(" + name + ")";
}

void TUserToolsForm::ShowCommand(TCommand* command) {
    Current_ = command;
    if (command)
        LoadCommand();
    else
        ClearFormData();
}

void TUserToolsForm::LoadCommand() {
    Edit1_->SetText(Current_->FCommand);
    Edit2_->SetText(Current_->FArguments);
    Edit3_->SetText(Current_->FInitDir);
    for (std::size_t i = 0; i < Boxes_.size(); ++i)
        Boxes_[i]->SetChecked(Current_->*Flags[i]);
    const bool enabled = Boxes_[NewDoc]->Checked();
    ComboBox1_->SetItemIndex(enabled ? ShownDocType(Current_->FDocType) : -1);
    ComboBox1_->SetEnabled(enabled);
    ComboBox1_->SetColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE);
}

int TUserToolsForm::ShownDocType(const std::string& type) const {
    for (int i = 0; i < ComboBox1_->ItemCount(); ++i)
        if (ComboBox1_->Item(i) == type)
            return i;
    return -1;
}

void TUserToolsForm::SaveCommand() {
    // The user may have been faster than the timer.
    if (Timer2_->Enabled())
        OptionTimer();
    if (!Current_)
        return;
    Current_->FCommand = Edit1_->Text();
    Current_->FArguments = Edit2_->Text();
    Current_->FInitDir = Edit3_->Text();
    for (std::size_t i = 0; i < Boxes_.size(); ++i)
        Current_->*Flags[i] = Boxes_[i]->Checked();
    const int type = Current_->FCaptureNewDoc ? ComboBox1_->ItemIndex() : -1;
    Current_->FDocType = type >= 0 ? ComboBox1_->Item(type) : std::string();
}

void TUserToolsForm::ClearFormData() {
    for (TEdit* edit : {Edit1_, Edit2_, Edit3_})
        edit->SetText("");
    for (TCheckBox* box : Boxes_)
        box->SetChecked(false);
    EnableDocType();
}

void TUserToolsForm::EnableDocType() {
    const bool enabled = Boxes_[NewDoc]->Checked();
    ComboBox1_->SetEnabled(enabled);
    ComboBox1_->SetColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE);
    if (!enabled)
        ComboBox1_->SetItemIndex(-1);
    else if (ComboBox1_->ItemIndex() < 0)
        ComboBox1_->SetItemIndex(0);
}

void TUserToolsForm::SelectionTimer() {
    Timer1_->SetEnabled(false);
    SaveCommand();
    ShowCommand(CommandOf(ListView1_->Selected()));
}

void TUserToolsForm::OptionTimer() {
    Timer2_->SetEnabled(false);
    if (!Boxes_[CloseOnExit]->Checked())
        for (std::size_t i = 0; i < Captures; ++i)
            Boxes_[i]->SetChecked(false);
    EnableDocType();
}

void TUserToolsForm::CaptureClick(TCheckBox& box) {
    // What is to be captured must not go to a console.
    if (box.Checked())
        Boxes_[CloseOnExit]->SetChecked(true);
    if (&box == Boxes_[NewDoc])
        EnableDocType();
}

void TUserToolsForm::EndCaption() {
    // A tool bar does not take the focus from the caption that is being edited, and the edited row
    // is a mere number to the system: it must be done with before rows come, go or move.
    if (::GetParent(::GetFocus()) == ListView1_->Handle())
        ListView1_->SetFocus();
}

void TUserToolsForm::AddClick() {
    EndCaption();
    SaveCommand();
    TCommand& command = Tools_.Commands.AddCommand("User Tool");
    ListView1_->Rows().Add({.Caption = command.FName, .SubItems = {}, .Data = &command});
    const int last = ListView1_->Count() - 1;
    ListView1_->Select(last);
    ShowCommand(&command);
    ListView1_->EditCaption(last);
}

void TUserToolsForm::CaptionEdited(int index, const std::string& caption) {
    if (TCommand* const command = CommandOf(&ListView1_->Row(index)))
        command->FName = caption;
}

void TUserToolsForm::DeleteClick() {
    EndCaption();
    TCommand* const command = CommandOf(ListView1_->Selected());
    if (!command)
        return;
    // The fields may still be those of the tool that was selected before.
    SaveCommand();
    command->FDeleted = true;
    ListView1_->DeleteRow(ListView1_->SelectedIndex());
    Current_ = nullptr;
    ListView1_->Select(ListView1_->Count() - 1);
    Timer1_->Restart();
}

void TUserToolsForm::MoveClick(int by) {
    EndCaption();
    // The one that was just selected is meant.
    if (Timer1_->Enabled())
        SelectionTimer();
    if (!Current_)
        return;
    const int index = Tools_.Commands.IndexOf(Current_);
    const int target = index + by;
    if (target < 0 || target >= Tools_.Commands.Count())
        return;
    SaveCommand();
    Tools_.Commands.Move(index, target);
    TCommand* const moved = Current_;
    Load_List();
    // Deleted tools still count here: the list's row of that number may be another tool.
    ListView1_->Select(target);
    if (CommandOf(ListView1_->Selected()) == moved)
        Current_ = moved;
    Timer1_->Restart();
}

bool TUserToolsForm::ListKey(WPARAM key) {
    // Not while a caption is being edited: the edit has the focus then.
    if (!ListView1_->Focused() || (key != VK_INSERT && key != VK_DELETE))
        return false;
    if (key == VK_INSERT)
        AddClick();
    else
        DeleteClick();
    return true;
}

void TUserToolsForm::CommandClick() {
    // The chooser does not open with a proposal that is no file name.
    std::string file = FileExists(Edit1_->Text()) ? Edit1_->Text() : std::string();
    if (DialogFunctions().OpenFile(CommandFilter, file))
        Edit1_->SetText(file);
}

void TUserToolsForm::ArgumentsClick() {
    PopupMenu2_->Popup(*this, MousePlace());
}

void TUserToolsForm::InitialClick() {
    PopupMenu1_->Popup(*this, MousePlace());
}

void TUserToolsForm::BrowseClick() {
    std::string directory = Edit3_->Text();
    if (DialogFunctions().SelectDirectory("Get directory", directory))
        Edit3_->SetText(directory);
}

void TUserToolsForm::OkClick() {
    SaveCommand();
    std::string complaints;
    if (Tools_.Commands.CheckedCommand(complaints))
        return;
    if (DialogFunctions().AskYesNo(Text(), complaints + "Correct?"))
        ModalResult = mrNone;
}

bool Sh_UserToolsForm(TToolsClass& tools) {
    TUserToolsForm form(tools);
    form.Init();
    return form.ShowModal() == mrOk;
}

}  // namespace tandrel
