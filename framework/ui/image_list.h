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

    /// Appends pictures. @param draw is called once for each, counted from zero, and draws it; what
    /// it leaves is transparent.
    void Add(int count, const std::function<void(int index, HDC dc, const RECT& area)>& draw);
    /// Draws a check box as the system does.
    static void DrawCheckBox(HDC dc, const RECT& area, bool checked);

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
