#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/base/packages.h"
#include "framework/ui/combo_box.h"
#include "framework/ui/form.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/splitter.h"
#include "framework/ui/tree_view.h"
#include "hosting/KeptOutput.h"
#include "hosting/MissingFiles.h"
#include "hosting/Project.h"
#include "hosting/Recovery.h"
#include "hosting/Settings.h"
#include "hosting/ToolRuns.h"
#include "workbench/DocumentForm.h"
#include "workbench/OutputPane.h"

namespace workbench {

/// The host's window: the open projects, the files of the one at hand, what operations tell.
class TMainForm : public framework::TForm, public hosting::TProjectHost {
public:
    /// @param packages what the host has loaded. Both must outlive the form.
    TMainForm(hosting::TSettings& settings, const framework::TPackageRegistry& packages);
    ~TMainForm() override;

    /// Opens a folder as a project, or turns to it when it is open.
    void OpenProject(const std::string& folder);
    /// The project at hand, or none.
    hosting::TProject* Project() const { return Current_; }
    /// Runs an operation of the project at hand, and shows what has become of the files.
    void Operate(const std::function<bool(tandrel::TCvsObject&)>& operation, bool onSelection);
    /// Does something else with the project at hand, likewise.
    void Busily(const std::function<void(hosting::TProject& project)>& action);
    /// The list entry and tree node chosen, as full paths; the project itself counts as nothing.
    std::vector<std::string> Selection() const;

    // --- TProjectHost
    void Tell(const std::string& text) override;
    bool SaveDocuments() override;
    bool AskForTags(std::string& vendor, std::string& release) override;
    bool AskYesNo(const std::string& question) override;
    bool AskRisk(const std::string& question) override;
    std::string AskForClient() override;
    void ShowTold() override { Pane_->Flush(); }

private:
    // --- the window (MainForm.cpp)
    void AddControls();
    void CloseQuery() override;
    bool QueryEndSession() override;
    void EndSession() override;
    /// Closes the window when the user wanted to while something was running.
    void CloseIfPending();
    void TurnTo(std::size_t index);
    void CloseProject();
    void ShowProject();
    void ShowFiles();
    void ShowList();
    bool Expand(framework::TTreeViewNode& node);
    /// Offers to run what waits for the server, or tells that it waits.
    void TellWhatWaits(hosting::TProject& project);
    /// Empties the views: they show items of the model, which is about to be built anew.
    void ClearViews();
    void ClearList();
    void AddRows(const std::string& folder, tandrel::TWorkDirTree& items);
    /// What is chosen: a file or folder of the model, or a missing file.
    struct TSelected {
        std::string Path;
        bool IsDirectory = false;
    };
    std::optional<TSelected> Selected() const;
    void OpenDocument(const std::string& path);
    TDocumentForm* FindDocument(const std::string& path) const;
    void ForgetClosedDocuments();
    /// Shows what has become of the files that are open; one that cannot be read stays as it was.
    void ReloadDocuments();
    std::vector<hosting::TUnsavedText> UnsavedTexts() const;

    // --- the menu (Menus.cpp)
    struct TMenuCommand;
    static const std::vector<TMenuCommand>& Commands();
    void BuildMenu();
    void EnableMenu();
    void ShowRecent();
    bool CanRun(const TMenuCommand& command) const;
    void Run(const TMenuCommand& command);
    void RunWaiting();
    void Import();
    void CheckOut();
    void Export();
    void CompareModule();
    void AskForPreferences();
    void AskForFolder();
    void AskForFile();
    void Refresh();
    void NewDocument();
    void CompareSelection();
    void AskForNewName();
    void AskForOptions();
    void ToggleOnline();
    void IgnoreSelection();
    void OpenSelection();
    void ShowAbout();
    void ShowWholeOutput();
    void TakeOut();

    // --- the tools (ToolMenu.cpp)
    void BindTools();
    void ShowTools();
    void RunTool(int index);
    void ConfigureTools();

    hosting::TSettings& Settings_;
    const framework::TPackageRegistry& Packages_;
    std::vector<std::unique_ptr<hosting::TProject>> Projects_;
    hosting::TProject* Current_ = nullptr;
    std::vector<TDocumentForm*> Documents_;  // the application's
    hosting::TToolRuns Tools_;
    bool ClosePending_ = false;
    bool Busy_ = false;
    bool AskedToSave_ = false;  // for the command at hand
    bool Showing_ = true;       // the model is there for the views to show

    /// Something runs as long as it lives.
    struct TBusy {
        explicit TBusy(bool& busy) : Busy(busy) { Busy = true; }
        ~TBusy() { Busy = false; }
        TBusy(const TBusy&) = delete;
        TBusy& operator=(const TBusy&) = delete;
        bool& Busy;
    };

    framework::TMainMenu* Menu_;
    std::vector<framework::TMenuItem*> Items_;  // of Commands, in their order
    framework::TMenuItem* RecentMenu_;
    framework::TMenuItem* ToolsMenu_;
    framework::TComboBox* ProjectList_;
    framework::TTreeView* Tree_;
    framework::TListView* List_;
    hosting::TMissingFiles Missing_;  // what rows of the list show
    framework::TRichEdit* Output_;
    std::optional<TOutputPane> Pane_;  // what Output_ shows
    hosting::TKeptOutput WholeOutput_;
    hosting::TRecovery Recovery_;
};

}  // namespace workbench
