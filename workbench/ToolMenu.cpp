// The user's tools: their menu, and what becomes of their output.

#include <optional>

#include "framework/ui/application.h"
#include "workbench/MainForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using namespace tandrel;

namespace {

/// Keeps copies of what is not saved from Begin on, until it dies.
class TRecoverable {
public:
    explicit TRecoverable(TRecovery& recovery) : Recovery_(recovery) {}
    ~TRecoverable() { Recovery_.Forget(); }
    TRecoverable(const TRecoverable&) = delete;
    TRecoverable& operator=(const TRecoverable&) = delete;

    void Begin(const std::vector<TUnsavedText>& texts) { Recovery_.Write(texts); }

private:
    TRecovery& Recovery_;
};

}  // namespace

void TMainForm::BindTools() {
    Tools_.Tools.OnFinishExecute = [this](TCommand& command, TMemoryStream* output) {
        if (!command.FCaptureNewDoc || !output)
            return;
        Documents_.OpenNew(command.FName, std::string(output->Bytes()),
                           Current_ ? Current_->Folder() : "");
    };
}

void TMainForm::ShowTools() {
    ToolsMenu_->Clear();
    TStringList captions;
    Tools_.Tools.GetMenuList(&captions);
    for (int i = 0; i < captions.Count(); ++i)
        ToolsMenu_->Add(captions[i]).OnClick = [this, i](TObject*) { RunTool(i); };
    if (captions.Count() > 0)
        ToolsMenu_->AddSeparator();
    ToolsMenu_->Add("&Configure...").OnClick = [this](TObject*) { ConfigureTools(); };
}

void TMainForm::ConfigureTools() {
    if (Busy_)
        return;
    if (!Tools_.Edit())
        Tell("Tools cannot be stored. They are there until the program ends.\r\n");
    ShowTools();
}

void TMainForm::RunTool(int index) {
    if (Busy_ || !SaveDocuments())
        return;
    const std::vector<std::string> selection = Selection();
    WholeOutput_.Begin();
    try {
        const TBusy busy(Busy_);
        TRecoverable recoverable(Recovery_);
        Tools_.Run(index, Current_, selection.empty() ? "" : selection.front(), [&] {
            for (const auto& project : Projects_)
                project->Save();
            recoverable.Begin(Documents_.Unsaved());
        });
    } catch (...) {
        Application().HandleException();
    }
    Pane_->Flush();
    WholeOutput_.End();
    ReloadDocuments();
    CloseIfPending();
}

}  // namespace workbench
