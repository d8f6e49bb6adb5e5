#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/base/packages.h"
#include "framework/ui/buttons.h"
#include "framework/ui/combo_box.h"
#include "framework/ui/edits.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/splitter.h"
#include "framework/ui/status_bar.h"
#include "framework/ui/timer.h"
#include "framework/ui/tool_bar.h"
#include "framework/ui/tree_view.h"
#include "hosting/FolderWatch.h"
#include "hosting/KeptOutput.h"
#include "hosting/Project.h"
#include "hosting/Recovery.h"
#include "hosting/Settings.h"
#include "hosting/ToolRuns.h"
#include "workbench/Documents.h"
#include "workbench/FileList.h"
#include "workbench/FolderTree.h"
#include "workbench/OutputPane.h"
#include "workbench/ProjectViews.h"
#include "workbench/WindowState.h"

namespace workbench {

/// The program's window: the open projects, the files of the one at hand, what operations tell.
class TMainForm : public framework::TForm, public hosting::TProjectHost {
public:
    /// @param packages what the program has loaded. Both must outlive the form.
    TMainForm(hosting::TSettings& settings, const framework::TPackageRegistry& packages);
    ~TMainForm() override;

    /// Opens a folder as a project, or turns to it when it is open.
    void OpenProject(const std::string& folder);
    /// The project at hand, or none.
    hosting::TProject* Project() const { return Current_; }
    /// Runs an operation of the project at hand, and shows what has become of the files.
    void Operate(const std::function<bool(tandrel::TCvsObject&)>& operation, bool onSelection);
    /// The same on these files and folders (full paths; none for the whole project).
    void OperateOn(const std::vector<std::string>& paths,
                   const std::function<bool(tandrel::TCvsObject&)>& operation);
    /// Does something else with the project at hand, likewise.
    void Busily(const std::function<void(hosting::TProject& project)>& action);
    /// The same with an open project, which becomes the one at hand. @return what the operation
    /// says; false when there is no such project.
    bool OperateIn(const std::string& folder, const std::vector<std::string>& paths,
                   const std::function<bool(tandrel::TCvsObject&)>& operation);
    /// The files of an open project that are meant by these paths, none of them for all; read anew.
    /// None while a command runs.
    std::vector<hosting::TFileRow> FilesIn(const std::string& folder,
                                           const std::vector<std::string>& paths);
    /// Asks the repository of an open project something. False when a command runs, or when there
    /// is no such project.
    bool Query(const std::string& folder,
               const std::function<void(hosting::TQueries& queries)>& action);
    void OpenDocument(const std::string& path);
    /// Shows a text that is no file. @param folder where it would be saved.
    void OpenText(const std::string& caption, const std::string& text, const std::string& folder);
    hosting::TSettings& Settings() { return Settings_; }
    /// The chosen files and folders, as full paths: those of the list, else the folder of the tree.
    /// The project itself counts as nothing.
    std::vector<std::string> Selection() const;

    // --- TProjectHost
    void Tell(const std::string& text) override;
    bool SaveDocuments() override;
    bool AskForTags(std::string& vendor, std::string& release) override;
    bool AskYesNo(const std::string& question) override;
    framework::TAnswer AskYesNoCancel(const std::string& question) override;
    bool ChooseBinary(std::vector<hosting::TBinaryChoice>& files) override;
    bool AskRisk(const std::string& question) override;
    std::string AskForClient() override;
    void ShowTold() override;

private:
    // --- the window (MainForm.cpp)
    void AddControls();
    void AddFilePane(framework::TControl& files);
    void AddFilter(framework::TControl& parent);
    void AddOutput();
    void CloseQuery() override;
    bool QueryEndSession() override;
    void EndSession() override;
    void Shown() override;
    /// Closes the window when the user wanted to while something was running.
    void CloseIfPending();
    void TurnTo(std::size_t index);
    bool TurnTo(const std::string& folder);
    /// The windows about the project at hand.
    TProjectViews& Views();
    void CloseProject();
    void ShowProject();
    /// Shows what the model says now. What is selected, open and in view stays so.
    void ShowFiles();
    void ShowRows();
    void ShowStatus(const std::string& text);
    void ShowCounts();
    /// Lets the user reach Stop: while a command runs all windows are disabled.
    void LetStop();
    void FilterChanged();
    /// Offers to run what waits for the server, or tells that it waits.
    void TellWhatWaits(hosting::TProject& project);
    void ReloadDocuments();
    void FileSaved(const std::string& path);
    /// Shows what others have changed, when they have come to rest.
    void WatchTick();
    void Watch();
    /// Selects a file or folder of the project at hand where it is.
    void Reveal(const std::string& path);

    // --- the menu (Menus.cpp)
    struct TMenuCommand;
    static const std::vector<TMenuCommand>& Commands();
    void BuildMenu();
    void BuildToolBar();
    void BuildPopups();
    void EnableMenu();
    void ShowRecent();
    bool CanRun(const TMenuCommand& command) const;
    void Run(const TMenuCommand& command);

    // --- what it does (Actions.cpp)
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
    void OpenSelection();
    void AskForOptions();
    void ToggleOnline();
    void ShowAbout();
    void ShowWholeOutput();
    void TakeOut();
    void StopCommand();
    void CreateRepository();
    void PullProject();
    void PullModule();
    void PullAndOpen(const std::string& module);
    /// Runs an operation while no project is open.
    void WithoutProject(const std::function<bool(tandrel::TCvsObject&)>& operation);
    void AskForText();
    void FindNext();

    // --- with files (FileActions.cpp)
    void AddSelection();
    void RemoveSelection(bool deleteFiles);
    void CommitFiles(const std::vector<std::string>& paths);
    void UpdateProject();
    void UpdateSelection();
    void RevertSelection();
    void CompareSelection();
    void CompareWith();
    void CompareAsText();
    void AnnotateSelection();
    void GetRevision();
    std::vector<hosting::TFileRow> SelectedFiles(
        std::initializer_list<hosting::TFileState> states) const;
    void AskForNewName();
    void IgnoreSelection();

    // --- the tools (ToolMenu.cpp)
    void BindTools();
    void ShowTools();
    void RunTool(int index);
    void ConfigureTools();

    hosting::TSettings& Settings_;
    const framework::TPackageRegistry& Packages_;
    TWindowState State_;
    std::vector<std::unique_ptr<hosting::TProject>> Projects_;
    std::vector<std::unique_ptr<TProjectViews>> Views_;  // of some of them
    hosting::TProject* Current_ = nullptr;
    TDocuments Documents_;
    hosting::TToolRuns Tools_;
    bool ClosePending_ = false;
    bool Busy_ = false;
    bool AskedToSave_ = false;  // for the command at hand

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
    std::optional<framework::TImageList> Pictures_, DisabledPictures_;
    /// A button, and the command that it stands for.
    struct TButtonOf {
        framework::TToolButton* Button;
        const TMenuCommand* Command;
    };
    std::vector<TButtonOf> Buttons_;
    std::vector<std::pair<framework::TMenuItem*, const TMenuCommand*>> PopupItems_;
    std::string SoughtText_;
    framework::TToolBar* ToolBar_;
    framework::TComboBox* ProjectList_;
    framework::TPanel* Files_;
    framework::TTreeView* Tree_;
    framework::TListView* List_;
    std::optional<TFolderTree> Folders_;  // what Tree_ shows
    std::optional<TFileList> Rows_;       // what List_ shows
    framework::TEdit* Filter_;
    framework::TCheckBox* ChangedOnly_;
    framework::TCheckBox* HideIgnored_;
    framework::TCheckBox* WithFolders_;
    framework::TRichEdit* Output_;
    std::optional<TOutputPane> Pane_;  // what Output_ shows
    framework::TStatusBar* Status_;
    std::optional<hosting::TFolderWatch> Watch_;  // of the project at hand, while nothing runs
    framework::TFormTimer WatchTimer_{*this, 1500};
    hosting::TFolderChanges Noticed_;
    hosting::TKeptOutput WholeOutput_;
    hosting::TRecovery Recovery_;
};

}  // namespace workbench
