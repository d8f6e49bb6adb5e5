// What the menu does with the project as a whole.

#include <algorithm>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/ui/dialogs.h"
#include "hosting/PasswordMask.h"
#include "hosting/Programs.h"
#include "workbench/InputForm.h"
#include "workbench/MainForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using namespace tandrel;

void TMainForm::Busily(const std::function<void(TProject& project)>& action) {
    AskedToSave_ = false;
    // The client reads and writes what the editors show.
    if (Busy_ || !Current_ || !SaveDocuments())
        return;
    AskedToSave_ = true;
    TProject& project = *Current_;
    project.BeginCommand();
    WholeOutput_.Begin();
    {
        const TBusy busy(Busy_);
        Watch();
        ProjectList_->SetEnabled(false);
        EnableMenu();
        ShowStatus("Working...");
        try {
            action(project);
        } catch (const Exception& error) {
            // What the window shows has to be right whatever happens.
            Tell(MaskPasswords(error.what()) + "\r\n");
        }
    }
    AskedToSave_ = false;
    Pane_->Flush();
    WholeOutput_.End();
    project.Save();
    ReloadDocuments();
    ShowStatus(project.Outcome());
    ShowFiles();
    Watch();
    ProjectList_->SetEnabled(true);
    EnableMenu();
    CloseIfPending();
}

bool TMainForm::Query(const std::string& folder,
                      const std::function<void(TQueries& queries)>& action) {
    if (Busy_ || !TurnTo(folder))
        return false;
    TProject& project = *Current_;
    project.BeginCommand();
    {
        const TBusy busy(Busy_);
        ProjectList_->SetEnabled(false);
        EnableMenu();
        ShowStatus("Asking...");
        TQueries queries(project, Settings_);
        try {
            action(queries);
        } catch (const Exception& error) {
            Tell(MaskPasswords(error.what()) + "\r\n");
        }
    }
    Pane_->Flush();
    ShowStatus(project.Outcome());
    ProjectList_->SetEnabled(true);
    EnableMenu();
    CloseIfPending();
    return true;
}

bool TMainForm::OperateIn(const std::string& folder, const std::vector<std::string>& paths,
                          const std::function<bool(TCvsObject&)>& operation) {
    bool done = false;
    if (!Busy_ && TurnTo(folder))
        Busily([&](TProject& project) { done = project.Operate(operation, paths); });
    return done;
}

void TMainForm::OperateOn(const std::vector<std::string>& paths,
                          const std::function<bool(TCvsObject&)>& operation) {
    Busily([&](TProject& project) { project.Operate(operation, paths); });
}

void TMainForm::Operate(const std::function<bool(TCvsObject&)>& operation, bool onSelection) {
    OperateOn(onSelection ? Selection() : std::vector<std::string>{}, operation);
}

void TMainForm::StopCommand() {
    for (const auto& project : Projects_)
        project->Stop();
}

void TMainForm::RunWaiting() {
    Busily([](TProject& project) { project.RunWaiting(); });
}

void TMainForm::CreateRepository() {
    // Making a repository wants no project of its own; nor does the folder it is started from.
    if (Current_)
        return Operate(&TCvsObject::CreateLocalRepository, false);
    WithoutProject([](TCvsObject& cvs) { return cvs.CreateLocalRepository(); });
}

void TMainForm::PullProject() {
    PullAndOpen("");
}

void TMainForm::PullModule() {
    std::vector<std::string> modules;
    Busily([&](TProject& project) { modules = project.Modules(); });
    if (modules.empty())
        return Tell("The repository names no modules.\r\n");
    std::vector<TInput> inputs = {{TInput::Choice, "Module", modules.front(), modules}};
    if (AskFor("Pull a module", inputs))
        PullAndOpen(inputs[0].Value);
}

void TMainForm::PullAndOpen(const std::string& module) {
    std::string made;
    const auto pull = [&](TCvsObject& cvs) {
        if (!module.empty())
            cvs.Set_Modulename(module);
        const bool done = cvs.PullProject();
        if (done)
            made = RemoveSlashSep(cvs.WorkingDirectory());
        return done;
    };
    if (Current_)
        Operate(pull, false);
    else
        WithoutProject(pull);
    if (!made.empty() && DirectoryExists(made) &&
        (!Current_ || !SameText(made, Current_->Folder())) &&
        AskYesNo("Open\r\n" + made + "\r\nas a project?"))
        OpenProject(made);
}

void TMainForm::WithoutProject(const std::function<bool(TCvsObject&)>& operation) {
    // A project in a folder of its own, in which nothing is.
    const std::string folder = Settings_.DataFolder("Nowhere");
    ForceDirectories(folder);
    Projects_.push_back(std::make_unique<TProject>(*this, Settings_, folder));
    TProject& project = *Projects_.back();
    Current_ = &project;
    Operate(operation, false);
    std::erase_if(Projects_, [&](const auto& open) { return open.get() == &project; });
    TurnTo(0);
}

void TMainForm::AskForText() {
    std::vector<TInput> inputs = {{TInput::Text, "Find", SoughtText_, {}}};
    if (!AskFor("Find", inputs))
        return;
    SoughtText_ = inputs[0].Value;
    FindNext();
}

void TMainForm::FindNext() {
    if (SoughtText_.empty())
        return AskForText();
    if (!Output_->FindNext(SoughtText_))
        ShowStatus("There is no more \"" + SoughtText_ + "\"");
}

void TMainForm::Import() {
    std::string vendor = "VENDOR", release = "START";
    if (!AskForTags(vendor, release))
        return;
    Busily([&](TProject& project) { project.Import(vendor, release); });
}

void TMainForm::CheckOut() {
    const std::string folder = Current_->Folder();
    Operate(
        [&](TCvsObject& cvs) {
            // One that was checked out under another name stays there, and its neighbour of the
            // module's name is left alone.
            const std::string module = cvs.Modulename(), name = ExtractFileName(folder);
            if (cvs.IsVCSStoredFlag && !cvs.UseTargetDir && !SameText(module, name)) {
                cvs.UseTargetDir = true;
                cvs.TargetDir = name;
                cvs.Set_ProjectRoot(ExtractFileDir(folder));
                cvs.Set_Modulename(module);
            }
            return cvs.CheckOut(true);
        },
        false);
}

void TMainForm::Export() {
    // The client exports a revision that is named, never just what there is.
    std::vector<TInput> inputs = {{TInput::Text, "Label or branch", "HEAD", {}}};
    if (!AskFor("Export", inputs) || inputs[0].Value.empty())
        return;
    Operate(
        [&](TCvsObject& cvs) {
            cvs.StikyType = stTag;
            cvs.StikyTag = inputs[0].Value;
            return cvs.Export_cmd(true);
        },
        false);
}

void TMainForm::CompareModule() {
    std::vector<TInput> inputs = {{TInput::Text, "From label or branch", "", {}},
                                  {TInput::Text, "To label or branch", "HEAD", {}}};
    if (!AskFor("Changes of the module", inputs))
        return;
    if (inputs[0].Value.empty())
        return Tell("There is nothing to compare with: name a label or branch.\r\n");
    Operate(
        [&](TCvsObject& cvs) {
            cvs.DiffSpec.Kind = inputs[1].Value.empty() ? dctRevision : dctTwoRevision;
            cvs.DiffSpec.Rev1 = inputs[0].Value;
            cvs.DiffSpec.Rev2 = inputs[1].Value;
            return cvs.Rdiff();
        },
        false);
}

void TMainForm::AskForPreferences() {
    if (!Current_->Stored())
        return Operate(
            [this](TCvsObject& cvs) {
                const std::string name = cvs.Modulename();
                const bool done = cvs.Preferences();
                if (cvs.Modulename() != name)
                    Tell("A project is called like its folder, " + name +
                         ". To place it under another name, rename the folder.\r\n");
                return done;
            },
            false);
    // The records of a working copy say where it belongs; to offer that here would change nothing.
    TCvsObject& cvs = Current_->Cvs();
    std::vector<TInput> inputs = {
        {TInput::Note, "", "The records of this working copy say where it belongs:", {}},
        {TInput::Note, "", "    repository  " + MaskPasswords(cvs.CVSROOT()), {}},
        {TInput::Note, "", "    project  " + cvs.Modulename(), {}},
        {TInput::Text, "Patterns to ignore", cvs.CVSIGNORE(), {}},
        {TInput::Flag, "Leave out empty folders", cvs.PruneEmptyDirs ? "1" : "", {}}};
    if (!AskFor("Preferences", inputs))
        return;
    cvs.Set_CVSIGNORE(inputs[3].Value);
    cvs.PruneEmptyDirs = inputs[4].Value == "1";
    Current_->Save();
}

void TMainForm::AskForFolder() {
    std::string folder;
    if (DialogFunctions().SelectDirectory("Open a folder as a project", folder))
        OpenProject(folder);
}

void TMainForm::AskForFile() {
    std::string file;
    if (DialogFunctions().OpenFile("All files|*.*", file))
        OpenDocument(file);
}

void TMainForm::Refresh() {
    Current_->Reload();
    ShowFiles();
    Watch();
}

void TMainForm::NewDocument() {
    Documents_.OpenNew("New document", "", Current_ ? Current_->Folder() : "");
}

void TMainForm::ToggleOnline() {
    Busily([](TProject& project) { project.SetOnline(!project.Online()); });
}

void TMainForm::AskForOptions() {
    TOperationState& options = Current_->Options;
    TCvsObject& cvs = Current_->Cvs();
    std::vector<std::string> modes(TKeywModeDescr.begin(), TKeywModeDescr.end());
    std::vector<TInput> inputs = {
        {TInput::Choice, "Keywords in files", modes[options.KeywordMode], modes},
        {TInput::Flag,
         "Check out and export into a folder of another name",
         options.UseTargetDir ? "1" : "",
         {}},
        {TInput::Text, "Name of that folder", options.TargetDir, {}},
        {TInput::Flag, "Only this folder, not those below it", options.LocalOnly ? "1" : "", {}},
        {TInput::Flag,
         "Taking out deletes the module from the repository",
         options.RemoveFromRepository ? "1" : "",
         {}},
        {TInput::Flag, "Taking out keeps the ignore lists", options.KeepCvsIgnore ? "1" : "", {}},
        {TInput::Text, "Remote shell (for ssh)", cvs.CVS_RSH(), {}},
        {TInput::Text, "Endings of binary files", Settings_.BinaryEndings(), {}},
        {TInput::Flag,
         "Commit with the package's own dialogs",
         Settings_.CommitsByPackage() ? "1" : "",
         {}}};
    if (!AskFor("Options", inputs))
        return;
    const auto mode = std::find(modes.begin(), modes.end(), inputs[0].Value) - modes.begin();
    options.KeywordMode = static_cast<TKeywordMode>(mode);
    options.UseTargetDir = inputs[1].Value == "1";
    options.TargetDir = inputs[2].Value;
    options.LocalOnly = inputs[3].Value == "1";
    options.RemoveFromRepository = inputs[4].Value == "1";
    options.KeepCvsIgnore = inputs[5].Value == "1";
    cvs.Set_CVS_RSH(inputs[6].Value);
    if (inputs[7].Value != Settings_.BinaryEndings())
        Settings_.SetBinaryEndings(inputs[7].Value);
    Settings_.SetCommitsByPackage(inputs[8].Value == "1");
    Current_->Save();
}

void TMainForm::TakeOut() {
    TCvsObject& cvs = Current_->Cvs();
    bool& alsoThere = Current_->Options.RemoveFromRepository;
    if (alsoThere && cvs.ConnectionType == cnLocal) {
        // The records say which folder that is, and they may come from anybody.
        const std::string folder = ModuleFolder(cvs.CVSROOT(), cvs.Modulename());
        if (folder.empty())
            Tell("Nothing is deleted from the repository: " +
                 SlashSep(cvs.CVSROOT(), cvs.Modulename()) +
                 " is not the folder of a project with nothing else in it.\r\n");
        else if (!AskRisk("The folder\r\n" + folder +
                          "\r\nin the repository will be deleted, with the history of all its "
                          "files. Delete it?"))
            return;
        alsoThere = !folder.empty();
    }
    if (AskRisk("The client's records will be deleted from\r\n" + Current_->Folder() +
                "\r\nIt will be an ordinary folder then. Go on?"))
        Operate(&TCvsObject::RemoveProjectFrom, false);
    // For this time only.
    alsoThere = false;
}

void TMainForm::ShowWholeOutput() {
    if (FileExists(WholeOutput_.Path()))
        ::WinExec((PreviewViewer() + WholeOutput_.Path()).c_str(), SW_SHOWNORMAL);
}

void TMainForm::ShowAbout() {
    std::string text;
    for (const TPackageInfo& package : Packages_.Packages())
        text += package.Name + " " + package.Version + "\r\n";
    const std::string client = FindClient(Settings_);
    Tell(text + "CVS client " + (client.empty() ? "not found" : client) + "\r\n");
}

}  // namespace workbench
