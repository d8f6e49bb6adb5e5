#pragma once

#include <memory>
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
#include "host/DocumentForm.h"
#include "host/Project.h"
#include "host/Settings.h"
#include "tools/Tools_obj.h"

namespace host {

/// The host's window: the open projects, the files of the one at hand, what operations tell.
class TMainForm : public framework::TForm, public TProjectHost {
public:
    /// @param packages what the host has loaded. Both must outlive the form.
    TMainForm(TSettings& settings, const framework::TPackageRegistry& packages);
    ~TMainForm() override;

    /// Opens a folder as a project, or turns to it when it is open.
    void OpenProject(const std::string& folder);
    /// The project at hand, or none.
    TProject* Project() const { return Current_; }
    /// Runs an operation of the project at hand, and shows what has become of the files.
    void Operate(const std::function<bool(tandrel::TCvsObject&)>& operation, bool onSelection);
    /// The list entry and tree node chosen, as full paths; the project itself counts as nothing.
    std::vector<std::string> Selection() const;

    // --- TProjectHost
    void Tell(const std::string& text) override;
    bool SaveDocuments() override;
    bool AskForTags(std::string& vendor, std::string& release) override;
    bool AskYesNo(const std::string& question) override;

private:
    // --- the window (MainForm.cpp)
    void AddControls();
    void CloseQuery() override;
    /// Closes the window when the user wanted to while something was running.
    void CloseIfPending();
    void TurnTo(std::size_t index);
    void CloseProject();
    void ShowProject();
    void ShowFiles();
    void ShowList();
    bool Expand(framework::TTreeViewNode& node);
    tandrel::TWorkDirItem* SelectedItem() const;
    void OpenDocument(const std::string& path);
    TDocumentForm* FindDocument(const std::string& path) const;
    void ForgetClosedDocuments();
    /// Shows what has become of the files that are open; one that cannot be read stays as it was.
    void ReloadDocuments();

    // --- the menu (Menus.cpp)
    struct TMenuCommand;
    static const std::vector<TMenuCommand>& Commands();
    void BuildMenu();
    void EnableMenu();
    void ShowRecent();
    bool CanRun(const TMenuCommand& command) const;
    void Run(const TMenuCommand& command);
    void Import();
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

    // --- the tools (ToolMenu.cpp)
    void BindTools();
    void ShowTools();
    void RunTool(int index);
    void ConfigureTools();
    void PublishMacros();

    TSettings& Settings_;
    const framework::TPackageRegistry& Packages_;
    std::vector<std::unique_ptr<TProject>> Projects_;
    TProject* Current_ = nullptr;
    std::vector<TDocumentForm*> Documents_;  // the application's
    tandrel::TToolsClass Tools_;
    bool ClosePending_ = false;
    bool Busy_ = false;

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
    framework::TRichEdit* Output_;
};

}  // namespace host
