#pragma once

#include <string>
#include <vector>

#include "host/DocumentForm.h"

namespace host {

/// Copies of texts that are not saved, for when the process may be ended without being asked: at
/// the end of the session, and while a tool has a console whose window anybody can close.
class TRecovery {
public:
    /// @param folder for the copies; made when it is needed.
    explicit TRecovery(std::string folder) : Folder_(std::move(folder)) {}

    /// Writes a copy of each text that was changed. One that cannot be written is left out.
    void Write(const std::vector<TDocumentForm*>& documents);
    /// The danger is over: deletes what Write has written.
    void Forget();
    /// Whether an earlier process has left copies. @return what to tell the user, or an empty text.
    std::string Notice() const;

private:
    std::string Folder_;
    std::vector<std::string> Written_;
};

}  // namespace host
