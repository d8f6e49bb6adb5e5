#pragma once

#include <string>
#include <string_view>

#include "framework/base/collection.h"
#include "framework/base/object.h"

namespace tandrel {

class TCommands;
class TToolsClass;

/// One named value that arguments may refer to.
class TArgument : public framework::TObject {
public:
    std::string FCaption;  ///< What the user chooses it by.
    std::string FName;     ///< As it stands in $(Name); the case counts.
    std::string FValue;
};

class TArguments : public framework::TCollection<TArgument> {
public:
    TArgument& AddArg(const std::string& caption, const std::string& name,
                      const std::string& value);
    /// The first argument of that name, or none.
    TArgument* Find(std::string_view name) const;
    /// Its value; empty when there is none.
    std::string GetValue(std::string_view name) const;
};

/// One tool: a command, what it is called with and what becomes of its output.
class TCommand : public framework::TObject {
public:
    explicit TCommand(TCommands& commands) : Commands_(commands) {}
    ~TCommand() override;

    /// Whether the command is there: itself, or when it is a mere file name in a folder of the
    /// path. Otherwise false, and `msg` tells what is wrong.
    bool CheckedCommand(std::string& msg) const;
    /// The arguments with their macros replaced.
    std::string ReplaseArgument() const;
    /// The arguments for a run; asks the user first when FPromptArgs is set. Empty, and FCancelled
    /// set, when the user does not want to run the tool.
    std::string GetArg();
    /// The folder for a run, with a trailing backslash.
    std::string GetInitDir() const;

    std::string FName;       ///< Its caption in the menu.
    std::string FCommand;    ///< A path, or a file name to be looked for.
    std::string FArguments;  ///< May hold macros.
    std::string FInitDir;    ///< May hold one of the macros FileDir, CurDir, ProjectDir.

    bool FCaptureToolView = false;  ///< Output goes to the host's events.
    bool FPreviewExternal = false;  ///< All output is shown by the viewer.
    bool FCaptureNewDoc = false;    ///< All output goes to the host when the run has ended.
    bool FPromptArgs = false;       ///< The user edits the arguments before each run.
    bool FCloseOnExit = false;      ///< Run threaded, not in a console that waits.

    std::string FDocType;     ///< For FCaptureNewDoc; else empty.
    std::string FProjectDir;  ///< The value of ProjectDir; set by the host, not stored.

    bool FDeleted = false;    ///< Removed by the user, but not yet for good.
    bool FCancelled = false;  ///< The user did not want to run it; the host may clear it.

private:
    TCommands& Commands_;
};

/// The tools in the order of the menu.
class TCommands : public framework::TCollection<TCommand> {
public:
    /// @param tools the owner, which must outlive the list.
    explicit TCommands(TToolsClass& tools) : Tools(tools) {}

    /// Appends a tool that is run threaded; all else is empty.
    TCommand& AddCommand(const std::string& name);
    /// Removes all tools that are marked as deleted.
    void Delete();
    using TCollection::Delete;
    /// Checks all tools, deleted ones too; `msg` takes what is wrong with them.
    bool CheckedCommand(std::string& msg) const;

    TToolsClass& Tools;
};

}  // namespace tandrel
