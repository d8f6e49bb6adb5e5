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

/// The command with a blank for each line break: a message may hold some, and the log has a line
/// for each command.
std::string OneLine(const std::string& command) {
    std::string line;
    for (std::size_t at = 0; at < command.size(); ++at) {
        if (command.compare(at, 2, "\r\n") == 0)
            continue;
        line += command[at] == '\r' || command[at] == '\n' ? ' ' : command[at];
    }
    return line;
}

}  // namespace

std::string TCustomCvsObj::CommandLogName() const {
    return SlashSep(WorkingDirectory_, LogName);
}

void TCustomCvsObj::SaveCommandLog() {
    if (Operation != otAdd && Operation != otRemove)
        return;
    if (!CommandLine.empty()) {
        auto log = framework::TTextFile::Append(CommandLogName());
        log.WriteLine(OneLine(CommandLine) + ";" + Get_CurrentProcDirectory());
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

bool TCustomCvsObj::ProcessCommandLog() {
    const std::string name = CommandLogName();
    if (IsRunning()) {
        // The kept commands would be refused one by one, and then be lost with the log.
        return !framework::FileExists(name) || !Refused(LogName);
    }
    CommandLine.clear();
    if (!framework::FileExists(name))
        return true;
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
    return true;
}

}  // namespace tandrel
