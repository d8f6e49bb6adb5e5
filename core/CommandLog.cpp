// The log of commands that were given while the server was off-line. One line for each: the
// command's arguments, a ";" and the folder it was to run in.

#include <string>
#include <vector>

#include "core/Customvcs.h"
#include "core/Cvs_utils.h"
#include "framework/base/files.h"
#include "framework/base/text_file.h"

namespace tandrel {
namespace {

constexpr const char* LogName = "vcsCommand.log";

}  // namespace

std::string TCustomCvsObj::CommandLogName() const {
    return SlashSep(WorkingDirectory_, LogName);
}

void TCustomCvsObj::SaveCommandLog() {
    if (Operation != otAdd && Operation != otRemove)
        return;
    if (!CommandLine.empty()) {
        auto log = framework::TTextFile::Append(CommandLogName());
        log.WriteLine(CommandLine + ";" + Get_CurrentProcDirectory());
        log.Close();
    }
    MessageProc("CVS command  %s saved  in vcsCommand.log ", {CommandLine});
}

void TCustomCvsObj::ReplayLine(const std::string& Line, std::string& Command) {
    if (Line.empty())
        return;
    CopyFromPosToString(Line, 1, ';', Command);
    CommandLine = Command;
    // The folder is handed on with its ";" in front.
    const std::string directory = Copy_FromPosToEnd(Line, static_cast<int>(Command.size()) + 1);
    if (!Command.empty() && !directory.empty())
        Execute(directory);
}

void TCustomCvsObj::ProcessCommandLog() {
    CommandLine.clear();
    const std::string name = CommandLogName();
    if (!framework::FileExists(name))
        return;
    MessageProc("CVS process command saved in vcsCommand.log ");
    // Commands that cannot be run yet come back to the end of the file while it is being replayed:
    // only the lines that are there now count.
    std::vector<std::string> lines;
    {
        auto log = framework::TTextFile::Reset(name);
        for (std::string line; log.ReadLine(line);)
            lines.push_back(line);
        log.Close();
    }
    std::string command;
    for (const std::string& line : lines)
        ReplayLine(line, command);
    framework::EraseFile(name);
}

}  // namespace tandrel
