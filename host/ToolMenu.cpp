// The user's tools: their menu, the values of their macros, what becomes of their output.

#include "framework/base/paths.h"
#include "framework/base/registry.h"
#include "framework/ui/application.h"
#include "host/MainForm.h"

namespace host {

using namespace framework;
using namespace tandrel;

namespace {

/// What arguments may refer to, as the tools' editor offers it.
constexpr struct {
    const char* Caption;
    const char* Name;
} Macros[] = {{"File", "FileName"},
              {"File without its folder", "File"},
              {"Folder of the file", "FileDir"},
              {"Folder of the project", "ProjectDir"},
              {"Module", "Module"}};

}  // namespace

void TMainForm::BindTools() {
    Tools_.RootKey = HostRegistryKey;
    Tools_.Keyname = Settings_.ToolsKey();
    Tools_.FDocTypes.Add("Text");
    for (const auto& macro : Macros)
        Tools_.Arguments.AddArg(macro.Caption, macro.Name, "");
    const auto tell = [this](TObject*, const std::string& text, const std::string&) { Tell(text); };
    Tools_.OnOutPutMessage = tell;
    Tools_.OnOutPutErrorMessage = tell;
    Tools_.OnFinishExecute = [this](TCommand& command, TMemoryStream* output) {
        if (!command.FCaptureNewDoc || !output)
            return;
        ForgetClosedDocuments();
        Documents_.push_back(
            &Application().CreateForm<TDocumentForm>(command.FName, std::string(output->Bytes())));
        Documents_.back()->Show();
    };
}

void TMainForm::ShowTools() {
    ToolsMenu_->Clear();
    TStringList captions;
    Tools_.GetMenuList(&captions);
    for (int i = 0; i < captions.Count(); ++i)
        ToolsMenu_->Add(captions[i]).OnClick = [this, i](TObject*) { RunTool(i); };
    if (captions.Count() > 0)
        ToolsMenu_->AddSeparator();
    ToolsMenu_->Add("&Configure...").OnClick = [this](TObject*) { ConfigureTools(); };
}

void TMainForm::ConfigureTools() {
    if (Busy_)
        return;
    try {
        Tools_.ShowDialog();
    } catch (...) {
        Application().HandleException();
    }
    // The editor works on the tools themselves: what was not kept must not be offered, and a menu
    // that is not theirs would run another tool than the one that is chosen.
    if (TRegistry(HostRegistryKey).OpenKey(Tools_.Keyname, true))
        Tools_.LoadFromRegistry();
    else
        Tell("Tools cannot be stored. They are there until the host ends.\r\n");
    ShowTools();
}

void TMainForm::PublishMacros() {
    const std::vector<std::string> selection = Selection();
    const std::string file = selection.empty() ? "" : selection.front();
    const std::string folder = Current_ ? Current_->Folder() : "";
    Tools_.SetArgValue("FileName", file);
    Tools_.SetArgValue("File", ExtractFileName(file));
    Tools_.SetArgValue("FileDir", ExtractFileDir(file));
    Tools_.SetArgValue("ProjectDir", folder);
    Tools_.SetArgValue("Module", Current_ ? Current_->Cvs().Modulename() : "");
    // A tool that the user gives up would show what the one before left.
    Tools_.FTempFile.clear();
    for (TCommand& command : Tools_.Commands) {
        command.FProjectDir = folder;
        // A run that the user gave up once is not given up for ever.
        command.FCancelled = false;
    }
}

void TMainForm::RunTool(int index) {
    if (Busy_ || !SaveDocuments())
        return;
    PublishMacros();
    try {
        const TBusy busy(Busy_);
        Tools_.ExecuteMenu(index);
    } catch (...) {
        Application().HandleException();
    }
    ReloadDocuments();
    CloseIfPending();
}

}  // namespace host
