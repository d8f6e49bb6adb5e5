#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace hosting {

/// The processes of one command: the client, and what it has started, such as a remote shell.
/// Ending the client alone leaves that behind, with the pipe in its hands.
class TClientTree {
public:
    /// Another command begins.
    void Forget() { Known_.clear(); }
    /// Looks which processes there are. One whose parent ends before anybody has looked is not
    /// found any more.
    /// @param command a command line that begins with the client, in quotes or not.
    void Look(const std::string& command);
    /// Ends all of them. To be called again as long as the command is not over: one that was just
    /// starting another may have been too quick. @return whether there was one.
    bool End(const std::string& command);

private:
    struct TProcess {
        DWORD Id;
        std::uint64_t Created;  ///< Numbers of processes are used again; times are not.
    };
    bool IsChildOfKnown(DWORD parent, std::uint64_t created) const;

    std::vector<TProcess> Known_;
};

}  // namespace hosting
