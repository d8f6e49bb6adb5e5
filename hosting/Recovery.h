#pragma once

#include <string>
#include <vector>

namespace hosting {

/// A text of an editor that is not saved.
struct TUnsavedText {
    std::string Name;   ///< Of its file, without a folder.
    std::string Bytes;  ///< As the file would be.
};

/// Copies of texts that are not saved, for when the process may be ended without being asked: at
/// the end of the session, and while a tool has a console whose window anybody can close.
class TRecovery {
public:
    /// @param folder for the copies; made when it is needed.
    explicit TRecovery(std::string folder) : Folder_(std::move(folder)) {}

    /// Writes a copy of each text. One that cannot be written is left out.
    void Write(const std::vector<TUnsavedText>& texts);
    /// The danger is over: deletes what Write has written.
    void Forget();
    /// Whether an earlier process has left copies. @return what to tell the user, or an empty text.
    std::string Notice() const;

private:
    std::string Folder_;
    std::vector<std::string> Written_;
};

}  // namespace hosting
