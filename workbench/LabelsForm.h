#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "framework/ui/form.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/status_bar.h"
#include "workbench/Commits.h"
#include "workbench/Viewers.h"

namespace workbench {

/// Shows the labels and branches of a project, and what is done with them. Its components:
/// "Labels", "Compare", "Update", "Trunk", "Create", "Move", "Delete", "Status", "Menu1".
class TLabelsForm : public framework::TForm {
public:
    /// @param host must outlive the form.
    explicit TLabelsForm(TViewHost& host);
    ~TLabelsForm() override;

    /// Asks the repository, and shows what it has. False when it could not say.
    bool Load();

private:
    void Shown() override { List_->SetFocus(); }
    void AddMenu();
    void AddBar();
    void ShowRows(const std::vector<std::string>& selected);
    void ShowStatus(const std::string& text) { Status_->SetPartText(0, text); }
    void SortBy(int column);
    std::vector<TProjectLabel> Selected() const;
    /// The one that is selected; none, and the user is told, when it is not one.
    std::optional<TProjectLabel> TheSelected(const char* toDoWhat);
    void Operate(const std::function<bool(tandrel::TCvsObject&)>& operation,
                 const std::string& what);
    void Compare();
    void UpdateTo();
    void ReturnToTrunk();
    void Create();
    void Move();
    void Delete();

    TViewHost& Host_;
    std::vector<TProjectLabel> Labels_;  // in the order of the list
    std::string Remark_;                 // where they come from
    int SortColumn_ = 0;
    bool Descending_ = false;

    framework::TMainMenu* Menu_;
    framework::TListView* List_;
    framework::TStatusBar* Status_;
};

}  // namespace workbench
