#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ui/buttons.h"
#include "framework/ui/edits.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/pickers.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/status_bar.h"
#include "framework/ui/timer.h"
#include "workbench/FormActions.h"
#include "workbench/History.h"
#include "workbench/Viewers.h"

namespace workbench {

/// Shows the past: of one file its revisions, in a tree; of anything else its commits, with their
/// files. Its components: "Search", "Since" and "From" that choose rows, "List" with them,
/// "Message" and "Details" (labels or files) of the chosen one, the buttons "Compare",
/// "CompareWorking", "Annotate", "Get", "Open", "Label", "Copy", then "Status" and "Menu1".
class THistoryForm : public framework::TForm {
public:
    /// @param host must outlive the form. @param paths files and folders, full paths; none for the
    /// whole project.
    THistoryForm(TViewHost& host, std::vector<std::string> paths);
    ~THistoryForm() override;

    /// Asks the client, and shows it. What is chosen stays so. False when it could not say.
    bool Load();

private:
    // --- the window (HistoryForm.cpp)
    void AddMenus();
    void AddBar();
    void AddLower();
    void ShowTree();
    void WidenTree();
    bool HasUsualTree() const;
    void Shown() override { List_->SetFocus(); }
    bool PreviewKey(WPARAM key);
    bool IsOneFile() const;
    std::string StateKey() const;
    std::string Subject() const;
    TCommitFilter FilterOf() const;
    TChosen Chosen() const;
    void ShowRows();
    void ShowChosen();
    void ShowStatus(const std::string& text = {});

    // --- what is done (HistoryActions.cpp)
    void AddActions();
    void Compare();
    void CompareWorking();
    void Annotate();
    void GetText();
    void OpenFile();
    void SetLabel();
    void ShowHistoryOfFile();
    void Copy();
    bool HasChanges() const { return History_->Changes(Chosen()).has_value(); }
    bool HasSinceThen() const { return History_->SinceThen(Chosen()).has_value(); }
    bool HasOneFile() const { return History_->Files(Chosen()).size() == 1; }
    bool HasFiles() const { return !History_->Files(Chosen()).empty(); }
    bool HasFileHere() const;
    bool HasRows() const { return !List_->SelectedIndices().empty(); }

    TViewHost& Host_;
    const std::vector<std::string> Paths_;
    std::unique_ptr<THistory> History_;  // never none
    std::vector<std::string> Keys_;      // of its rows
    std::string Remark_;                 // where it comes from
    int TreeWidth_ = 0;                  // that the tree's column was given here; design units

    TFormActions Actions_;
    framework::TMainMenu* Menu_;
    framework::TPopupMenu* Popup_;
    framework::TEdit* Search_;
    framework::TCheckBox* Since_;
    framework::TDateTimePicker* From_;
    framework::TListView* List_;
    framework::TMemo* Message_;
    framework::TListView* Details_;
    framework::TStatusBar* Status_;
    framework::TFormTimer Delay_{*this, 250};  // rests until the user has typed
};

}  // namespace workbench
