#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosting/Project.h"
#include "hosting/Settings.h"
#include "tools/Tools_obj.h"

namespace hosting {

/// The user's tools, with the values of their macros, run so that no other program answers to a
/// tool's name and nobody's file name becomes a command. Main thread only.
class TToolRuns {
public:
    /// Both must outlive it.
    TToolRuns(TProjectHost& window, TSettings& settings);
    /// Deletes the previews that no program holds.
    ~TToolRuns();
    TToolRuns(const TToolRuns&) = delete;
    TToolRuns& operator=(const TToolRuns&) = delete;

    /// The tools. What they say comes from its events, which are the program's; captured output
    /// goes to OnFinishExecute.
    tandrel::TToolsClass Tools;

    /// The user edits the tools. @return false when they cannot be stored, and are there only until
    /// the process ends.
    bool Edit();
    /// Runs a tool by its place in the menu list. @param project may be none. @param file the one
    /// at hand, with its folder; may be empty. @param beforeConsole called before a console comes
    /// whose window ends this process when somebody closes it: what is not saved is to be kept.
    void Run(int index, TProject* project, const std::string& file,
             const std::function<void()>& beforeConsole);

private:
    void Publish(TProject* project, const std::string& file);
    bool MayRun(const tandrel::TCommand& tool);

    TProjectHost& Window_;
    std::vector<std::string> Previews_;
};

}  // namespace hosting
