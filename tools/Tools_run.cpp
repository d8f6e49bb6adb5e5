// What happens when a tool is run.

#include <functional>
#include <iterator>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/temp_file.h"
#include "framework/base/text.h"
#include "tools/Dialogs.h"
#include "tools/Exec_obj.h"
#include "tools/Tools_obj.h"

namespace tandrel {
namespace {

constexpr char TempFilePrefix[] = "TXT";

std::string CurrentDirectory() {
    wchar_t folder[1024];
    const DWORD length = ::GetCurrentDirectoryW(std::size(folder), folder);
    // Without look-alikes: the tool is to run in this folder, or not at all.
    return length < std::size(folder) ? framework::Trim(framework::FromWide({folder, length}))
                                      : std::string();
}

}  // namespace

std::string TCommand::GetArg() {
    std::string arguments = ReplaseArgument();
    if (!FPromptArgs || Sh_Prompt_Form(FCommand, arguments))
        return arguments;
    FCancelled = true;
    return {};
}

std::string TCommand::GetInitDir() const {
    const auto holds = [this](const char* text) {
        return FInitDir.find(text) != std::string::npos;
    };
    std::string folder;
    if (!holds("$"))
        folder = FInitDir;
    // The last one named wins.
    else if (holds("ProjectDir"))
        folder = FProjectDir;
    else if (holds("CurDir"))
        folder = CurrentDirectory();
    else if (holds("FileDir"))
        folder = framework::ExtractFilePath(FCommand);
    if (folder.empty())
        folder = CurrentDirectory();
    return framework::EndsWith(folder, '\\') ? folder : folder + '\\';
}

void TToolsClass::ExecuteMenu(int index) {
    if (Commands.Empty())
        LoadFromRegistry();
    if (Commands.Empty())
        throw framework::Exception(" no data  loaded");
    if (index < 0 || index >= Commands.Count())
        return;
    FCurrent = &Commands.GetItem(index);
    {
        TExecuteClass runner;
        runner.FRedirect =
            FCurrent->FCaptureToolView || FCurrent->FPreviewExternal || FCurrent->FCaptureNewDoc;
        const std::string commandLine = FCurrent->FCommand + " " + FCurrent->GetArg();
        if (!FCurrent->FCancelled)
            Run(runner, commandLine);
    }
    StartViewer();
}

void TToolsClass::Run(TExecuteClass& runner, const std::string& commandLine) {
    runner.OnOutPutMessage = std::bind_front(&TToolsClass::OutPutMessage, this);
    runner.OnOutPutErrorMessage = std::bind_front(&TToolsClass::OutPutErrorMessage, this);
    runner.OnFinish = std::bind_front(&TToolsClass::FinishExecute, this);
    runner.OnStart = std::bind_front(&TToolsClass::StartExecute, this);
    if (FCurrent->FCaptureNewDoc || FCurrent->FPreviewExternal)
        runner.FStream = new framework::TMemoryStream;
    // FinishExecute frees it, unless an error comes before that.
    struct TFreed {
        TExecuteClass& Runner;
        ~TFreed() { delete Runner.FStream; }
    } const freed{runner};
    runner.FOemConvert = true;
    runner.FData = FCurrent;
    runner.FThreaded = FCurrent->FCloseOnExit;
    runner.Execute(FCurrent->GetInitDir(), commandLine);
}

void TToolsClass::StartViewer() {
    if (!FCurrent || !FCurrent->FPreviewExternal || FTempFile.empty())
        return;
    FTempFile = FViewer + FTempFile;
    ::WinExec(FTempFile.c_str(), SW_SHOWNORMAL);
}

void TToolsClass::StartExecute(TObject*) {
    if (OnStartExecute)
        OnStartExecute(FCurrent);
}

void TToolsClass::OutPutMessage(TObject*, const std::string& Text) {
    Relay(OnOutPutMessage, Text);
}

void TToolsClass::OutPutErrorMessage(TObject*, const std::string& Text) {
    Relay(OnOutPutErrorMessage, Text);
}

void TToolsClass::Relay(const TOnExecuteMenuEvent& event, const std::string& text) {
    if (FCurrent && FCurrent->FCaptureToolView && event)
        event(FCurrent, text, FCurrent->FName);
}

void TToolsClass::FinishExecute(TObject* Sender) {
    auto& runner = dynamic_cast<TExecuteClass&>(*Sender);
    const std::unique_ptr<framework::TMemoryStream> stream(std::exchange(runner.FStream, nullptr));
    const int index = Commands.IndexOf(runner.FData);
    if (index < 0)
        return;
    TCommand& tool = Commands.GetItem(index);
    if (OnFinishExecute)
        OnFinishExecute(tool, stream.get());
    if (!tool.FPreviewExternal)
        return;
    FTempFile.clear();
    FTempFile = framework::NewTempFile(TempFilePrefix);
    if (stream)
        framework::SaveToFile(FTempFile, stream->Bytes());
}

}  // namespace tandrel
