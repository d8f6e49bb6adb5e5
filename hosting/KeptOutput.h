#pragma once

#include <string>

#include "framework/base/handle.h"

namespace hosting {

/// What commands said, whole, in files of the user's own data: a window can show only so much. The
/// newest twenty are kept.
class TKeptOutput {
public:
    static constexpr std::size_t MostKept = 20;

    /// @param folder where the files are; made when it is needed.
    explicit TKeptOutput(std::string folder) : Folder_(std::move(folder)) {}

    /// What comes next belongs to another command. Its file is made with its first text.
    void Begin();
    /// The command is over: its file can be read by everybody, and gets nothing more.
    void End();
    /// Appends to the file. When that is not possible, the rest of this command's output is not
    /// kept.
    void Add(const std::string& text);
    /// The file with the output of the latest command; empty when there is none.
    const std::string& Path() const { return Path_; }

private:
    void Open();
    void DeleteOldest() const;

    std::string Folder_;
    std::string Path_;
    framework::FileHandle File_;
    bool IsBegun_ = false;
};

}  // namespace hosting
