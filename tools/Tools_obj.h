#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "framework/base/memory_stream.h"
#include "framework/base/object.h"
#include "framework/base/registry.h"
#include "framework/base/string_list.h"
#include "tools/Commands.h"

namespace tandrel {

class TExecuteClass;
class TUserToolsForm;

/// A piece of a tool's output, as it comes. The sender is the TCommand, the title its name.
using TOnExecuteMenuEvent = std::function<void(framework::TObject* Sender, const std::string& Text,
                                               const std::string& Title)>;
/// A tool has ended. @param ms all its output, if it was to be kept; gone when the event returns.
using TOnFinishExecuteMenuEvent = std::function<void(TCommand& cmd, framework::TMemoryStream* ms)>;

/// The user's tools: their list, kept in the registry, the values of the macros, and their runs.
/// Main thread only. The list must not be loaded or edited while a tool runs.
class TToolsClass : public framework::TObject {
public:
    /// Publishes the value of a macro.
    void SetArgValue(const std::string& name, const std::string& value);
    /// Appends the captions of the tools, in the order of ExecuteMenu's index; loads the tools
    /// first if there are none. @param list nothing happens without one.
    void GetMenuList(framework::TStringList* list);
    /// Loads the tools and lets the user edit them; saves them when that is confirmed. Nothing
    /// happens while that goes on already. Raises framework::Exception without RootKey and Keyname.
    void ShowDialog();
    /// Runs a tool and returns when that has ended. An index outside the list does nothing. Raises
    /// framework::Exception when there is no tool at all and, of tools that run in a console, when
    /// one cannot be started.
    void ExecuteMenu(int index);

    /// Replaces the tools by the stored ones. Nothing stored is an empty list; of a damaged value
    /// the tools before the damage are taken.
    void LoadFromRegistry();
    /// Stores the tools, unless the key cannot be opened. Raises framework::ERegistryError when the
    /// value cannot be written.
    void SaveToRegistry();

    // The events of a run; the sender is the TExecuteClass.
    void StartExecute(TObject* Sender);
    void OutPutMessage(TObject* Sender, const std::string& Text);
    void OutPutErrorMessage(TObject* Sender, const std::string& Text);
    /// Hands the kept output to the host, and writes it to a file when the tool is to be previewed;
    /// then it is freed. Raises framework::EInOutError when it cannot be written.
    void FinishExecute(TObject* Sender);

    TCommand* FCurrent = nullptr;    ///< The tool being run, or the last one if it still exists.
    TUserToolsForm* Form = nullptr;  ///< The editor while it is open.
    TCommands Commands{*this};
    TArguments Arguments;
    framework::TStringList FDocTypes;  ///< What the editor offers for TCommand::FDocType.
    HKEY RootKey = nullptr;            ///< The host's.
    std::string Keyname;               ///< The key below it.

    TOnExecuteMenuEvent OnOutPutMessage;  ///< Of tools with FCaptureToolView.
    TOnExecuteMenuEvent OnOutPutErrorMessage;
    framework::TNotifyEvent OnStartExecute;  ///< The sender is the TCommand.
    TOnFinishExecuteMenuEvent OnFinishExecute;

    /// The file of the last preview; behind FViewer once that has been started.
    std::string FTempFile;
    std::string FViewer = "explorer.exe ";  ///< A file name is appended to it.

private:
    void Run(TExecuteClass& runner, const std::string& commandLine);
    void StartViewer();
    void Relay(const TOnExecuteMenuEvent& event, const std::string& text);

    std::unique_ptr<framework::TRegistry> Registry_;  // while the tools are loaded or saved
};

}  // namespace tandrel
