#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "framework/base/handle.h"

namespace hosting {

/// What has happened below a folder.
struct TFolderChanges {
    bool Any = false;
    bool Roots = false;  ///< Records may say now that other repositories are meant.
};

/// Notices what others change in a folder and all below it. Main thread only; needs no messages.
///
/// While it lives the system may refuse to rename what is above the folder: let it go before a
/// command, which may do so.
class TFolderWatch {
public:
    /// A folder that cannot be watched, such as one on some servers, never changes.
    explicit TFolderWatch(const std::string& folder);
    ~TFolderWatch();
    TFolderWatch(const TFolderWatch&) = delete;
    TFolderWatch& operator=(const TFolderWatch&) = delete;

    /// What has happened since the last call, or since it was made. Returns at once.
    TFolderChanges Look();

private:
    void Begin();
    TFolderChanges Read(DWORD bytes) const;

    framework::FileHandle Folder_;
    framework::KernelHandle Event_;
    OVERLAPPED Pending_{};
    bool IsPending_ = false;
    std::vector<DWORD> Buffer_;  // aligned as the system wants it
};

}  // namespace hosting
