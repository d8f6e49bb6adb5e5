#pragma once

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <functional>

#include "framework/api.h"

namespace framework {

/// Pictures of one size for trees, lists and tool bars. It must outlive the controls that use it.
class FRAMEWORK_API TImageList {
public:
    /// @param size width and height in pixels; 0 for those of the system's small icons.
    explicit TImageList(int size = 0);
    ~TImageList();
    TImageList(const TImageList&) = delete;
    TImageList& operator=(const TImageList&) = delete;

    /// Appends a picture. @param draw is called once and draws it; what it leaves is transparent,
    /// so that none leaves it all so.
    void Add(const std::function<void(HDC dc, const RECT& area)>& draw = nullptr);
    /// Appends a check box as the system draws it.
    void AddCheckBox(bool checked);

    int Size() const { return Size_; }
    HIMAGELIST Get() const { return Images_; }

private:
    int Size_;
    HIMAGELIST Images_;
};

/// The list of the icons that the shell shows files with, in small; null when there is none. It
/// belongs to the system.
FRAMEWORK_API HIMAGELIST ShellSmallImageList();

}  // namespace framework
