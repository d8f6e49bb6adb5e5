#pragma once

#include <optional>
#include <string>
#include <vector>

namespace hosting {

/// An addition or removal that was given while the server was off-line.
struct TKeptCommand {
    bool Removes = false;
    std::string Message;             ///< Of an addition; empty for none.
    std::vector<std::string> Names;  ///< Files and folders, relative to the project's folder.
    bool IsBinary = false;           ///< Its files are kept byte for byte.

    /// What the user reads.
    std::string Description() const;
};

/// A line of the log of kept commands: the client's arguments, ";", and the folder. Nothing for a
/// line that is anything else than an addition or removal of names inside this folder: logs lie in
/// working copies, and those come from anywhere.
std::optional<TKeptCommand> ParseKeptCommand(const std::string& line, const std::string& folder);

/// The line that such a command is read back from.
std::string KeptLine(const TKeptCommand& kept, const std::string& folder);

/// The commands without what takes itself back: a file that was added and later removed (or moved)
/// while the server was off-line was never there for it.
std::vector<TKeptCommand> WithoutTakenBack(std::vector<TKeptCommand> commands);

/// A line of arguments, parted as the client's run-time library does.
std::vector<std::string> SplitArguments(const std::string& line);

/// Whether the name stands for something below the folder it is in: no drive, no way up, no root.
bool IsNameBelow(const std::string& name);

}  // namespace hosting
