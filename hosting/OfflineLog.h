#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosting/KeptCommand.h"

namespace hosting {

/// The commands of one project that wait for the server. The package keeps them in vcsCommand.log
/// in the working directory and forgets them when the server is back; for a server elsewhere they
/// have to be run then. So that none is lost or run twice, they move to a file of the host's first,
/// outside of the working copy. Each leaves it before it is run, for a file of its own: what is
/// found there later may have been run or not, and the user is asked.
class TOfflineLog {
public:
    /// @param directory the working directory. @param waiting the host's file.
    TOfflineLog(const std::string& directory, const std::string& waiting);

    /// Makes the package's log, so that there is one to append to. A log that the project brought
    /// along is put aside; @return its new name, or an empty text. Raises EInOutError.
    std::string Begin() const;
    /// Makes the package's log if it has gone since Begin. Raises EInOutError.
    void Continue() const;
    /// Takes the package's log over and leaves it none. Only for one that Begin has made.
    /// @return the lines that no command of this
    /// project can be made of, which are dropped; nothing while another host runs what waits.
    /// Raises EInOutError, and then nothing is taken.
    std::optional<std::vector<std::string>> Take() const;
    /// What waits: in the package's log, while the server is off-line, and in the host's file.
    /// @param isOffLine the package's log is one that Begin has made.
    std::vector<TKeptCommand> Waiting(bool isOffLine) const;
    /// Runs the waiting commands in their order. One that fails stays, and so do those behind it.
    /// @param run true when the command has succeeded. @return true when none is left. False, and
    /// nothing is run, also when another host is at it, or a command was interrupted. Raises
    /// EInOutError; a command that has been run then counts as interrupted.
    bool Run(const std::function<bool(const TKeptCommand&)>& run) const;
    /// The command of which nobody knows whether it has been run: the host was ended meanwhile, or
    /// could not note that it was done. Raises EInOutError.
    std::optional<TKeptCommand> Interrupted() const;
    /// Makes the interrupted command the first that waits, or forgets it. Raises EInOutError.
    void SettleInterrupted(bool again) const;

private:
    void Start(const TKeptCommand& command, const std::vector<TKeptCommand>& others) const;
    std::optional<TKeptCommand> Marked() const;
    void Write(const std::vector<TKeptCommand>& commands) const;

    std::string Folder_;
    std::string Log_;
    std::string Waiting_;
    std::string Running_;  // the command that is being run
};

}  // namespace hosting
