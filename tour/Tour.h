#pragma once

#include <string>
#include <vector>

#include "framework/base/packages.h"
#include "hosting/Settings.h"
#include "support/Files.h"
#include "support/Play.h"
#include "workbench/MainForm.h"

namespace tour {

/// A working day in the host, played through its menus and dialogs and checked by a bare client.
class TTour {
public:
    /// @param out folder for pictures and the transcript; empty for none.
    explicit TTour(const std::string& out);
    /// Plays all steps; true when every one did what it should.
    bool Play();

private:
    // --- the steps (ProjectSteps.cpp, DailySteps.cpp, ToolSteps.cpp, ServerSteps.cpp)
    void OpenTheProject();
    void CreateARepository();
    void PlaceTheProject();
    void EditAndCommit();
    void AddAndRemoveFiles();
    void CreateALabelAndABranch();
    void UpdateToTheBranch();
    void Compare();
    void Browse();
    void Annotate();
    void PullElsewhere();
    void WorkInTwoProjects();
    void DefineTools();
    void RunTools();
    void LogIn();
    void WorkOffLine();
    void LogOut();
    void ReleaseTheCopy();
    void TakeOut();
    void LookAtThePast();
    void WorkAMorning();

    /// Makes a repository with a history, and a working copy with a change. (PastSteps.cpp)
    void PrepareThePast(const std::string& repository, const std::string& project);

    // --- what a morning takes (MorningSteps.cpp)
    /// Makes a repository, a working copy with forty changed files, and what a colleague has done.
    void PrepareTheMorning(const std::string& repository, const std::string& project);
    /// Chooses what has a key of its own.
    void Key(const std::string& path);
    /// Clicks these rows, the first alone, the others as well.
    void SelectRows(const std::vector<std::string>& names);
    void ShowOnly(const std::string& filter);
    /// Commits what is chosen, or all, with this message.
    /// @param picture of the window; none when empty.
    void CommitAs(const std::string& message, const std::string& item,
                  const std::string& picture = {});
    /// Opens the file that is selected, and takes both texts of its conflict.
    void ResolveInTheEditor(const std::string& path);

    // --- what they share (Tour.cpp)
    /// Chooses from the menu, for example "Repository/Create...". Raises when there is no such
    /// item, or it cannot be chosen.
    void Choose(const std::string& path);
    framework::TMenuItem& MenuItem(const std::string& path);
    /// Commits what has changed in the project at hand, or what is chosen.
    /// @param picture of the window; none when empty.
    void Commit(const std::string& message = "Work",
                const std::string& item = "Working copy/Commit...",
                const std::string& picture = {});
    /// The same with the package's own dialogs, which are chosen and given back.
    void CommitByWizard(const std::string& message);
    void CreateRepository(const std::string& folder);
    /// Places the project at hand with what the dialogs say by themselves.
    void Place();
    /// Pulls a module into a folder. @param exported the label to export; empty for a working copy.
    void Pull(const std::string& folder, const std::string& module,
              const std::string& exported = {},
              const std::string& item = "Repository/Pull project...");
    /// Takes a picture of a dialog of the host's, and cancels it.
    void Show(const std::string& item, const std::string& caption, const std::string& picture);
    /// The last step of an update: merges a revision, and ends the wizard.
    void MergeAndFinish(framework::TForm& form, const std::string& revision);
    void WaitFor(framework::TForm& form, const std::string& button);
    /// Goes on to a wizard's next step.
    void Next(framework::TForm& form);
    /// Tells the model of the working copy as a tree, each entry with its status.
    void TellModel(const tandrel::TWorkDirTree& tree, const std::string& indent = "  ");
    /// Selects a row of the list; raises when there is none.
    void Select(const std::string& name);
    /// The next form is an operation's result, and a success.
    void ExpectSuccess(const std::string& caption);
    /// What has been told since the step began.
    std::string Told();
    /// What a bare client says about a repository; it has to succeed.
    std::string Ask(const std::string& root, const std::string& arguments);
    void Expect(bool condition, const std::string& what) { Play_.Expect(condition, what); }
    void ExpectTold(const std::string& text);
    void Picture(const std::string& name) {
        ::SetForegroundWindow(Form_->Handle());
        Play_.Picture(Form_->Handle(), name);
    }

    const support::TTempFolder Folder_{"tour", "C:"};
    const std::string Project_ = Folder_ / "my project";
    const std::string Repository_ = Folder_ / "repository";
    support::TPlay Play_;
    framework::TPackageRegistry Packages_;
    hosting::TSettings Settings_{"Software\\Tandrel Tour"};
    std::unique_ptr<workbench::TMainForm> Form_;
    std::size_t ToldBefore_ = 0;
    int Keys_ = 0, Clicks_ = 0;
};

}  // namespace tour
