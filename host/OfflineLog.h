#pragma once

#include <functional>
#include <string>
#include <vector>

namespace host {

/// A command that was given while the server was off-line.
struct TKeptCommand {
    std::string Command;    ///< The client's arguments.
    std::string Directory;  ///< Where it is to run.
};

/// The commands of one project that wait for the server. The package keeps them in vcsCommand.log
/// in the working directory and forgets them when the server is back; for a server elsewhere they
/// have to be run then. So that none is lost or run twice, they move to a file of the host's first,
/// and each leaves it as soon as it has been run.
class TOfflineLog {
public:
    /// @param directory the working directory.
    explicit TOfflineLog(const std::string& directory);

    /// Makes the package's log, so that there is one to append to. Raises EInOutError.
    void Begin() const;
    /// Takes the package's log over and leaves it none. Raises EInOutError.
    void Take() const;
    /// Whether commands wait in the host's file.
    bool HasPending() const;
    /// Runs the waiting commands in their order. One that fails stays, and so do those behind it.
    /// @param run true when the command has succeeded. @return true when none is left. False, and
    /// nothing is run, also when another host is at it.
    bool Run(const std::function<bool(const TKeptCommand&)>& run) const;

private:
    std::string Log_;
    std::string Pending_;
};

}  // namespace host
