#pragma once

#include <string>
#include <vector>

#include "framework/ui/buttons.h"
#include "framework/ui/combo_box.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/status_bar.h"
#include "framework/ui/timer.h"
#include "workbench/Viewers.h"

namespace workbench {

/// Commits the files of a project that the user ticks, with the message that he types. The message
/// is kept until it is committed. Its components: "FileList", "Earlier" with the last messages,
/// "Message", "Commit", "Compare", "TickAll", "TickNone", "Close", "Status", "Menu1".
class TCommitForm : public framework::TForm {
public:
    /// @param host must outlive the form. @param paths files and folders, none for all.
    TCommitForm(TViewHost& host, std::vector<std::string> paths);
    ~TCommitForm() override;

    /// Reads what there is to commit, and shows it. False when there is nothing.
    bool Load();
    /// The same of other files and folders. Those that stay keep their ticks.
    bool ShowFiles(std::vector<std::string> paths);

protected:
    void CloseQuery() override;
    void EndSession() override { StoreDraft(); }

private:
    void Shown() override { Message_->SetFocus(); }
    void AddMenu();
    void AddFiles();
    void AddMessage();
    void AddButtons();
    void ReadTemplate();
    void ShowEarlier();
    void TakeEarlier();
    void ShowTicks();
    void ShowPlace();
    void ShowResult(const std::string& text) { Status_->SetPartText(2, text); }
    std::vector<hosting::TFileRow> Ticked() const;
    const hosting::TFileRow& RowAt(int index) const {
        return Rows_[static_cast<std::size_t>(index)];
    }
    bool IsUnfilled() const;
    /// Keeps the message for the next time; false when that is not possible.
    bool StoreDraft();
    bool AskAboutMessage();
    bool AskAboutConflicts(const std::vector<hosting::TFileRow>& files);
    void Commit();
    void Committed();
    void Compare();
    void OpenFiles();
    void TickAll(bool ticked);
    void TurnToFile(int step);
    std::vector<std::string> SelectedPaths() const;
    std::string DraftKey() const { return Host_.Settings().ProjectKey(Host_.Folder()); }

    TViewHost& Host_;
    std::vector<std::string> Paths_;
    std::vector<hosting::TFileRow> Rows_;  // in the order of the list
    std::string Template_;
    std::vector<std::string> Messages_;  // the last ones
    std::string Typed_;                  // before an earlier one was chosen
    std::string Chosen_;                 // the whole text after that

    framework::TMainMenu* Menu_;
    framework::TControl* Work_;
    framework::TPanel* Top_;
    framework::TListView* Files_;
    framework::TComboBox* Earlier_;
    framework::TMemo* Message_;
    framework::TStatusBar* Status_;
    framework::TFormTimer DraftTimer_{*this, 1000};
};

}  // namespace workbench
