#pragma once

#include "framework/ui/image_list.h"

namespace workbench {

/// The tool bar's pictures, as positions in its list.
enum TPicture {
    UpdatePicture,
    CommitPicture,
    AddPicture,
    RemovePicture,
    ComparePicture,
    LogPicture,
    RefreshPicture,
    StopPicture,
    PictureCount
};

/// Appends the pictures in their order. @param enabled false for those of what cannot be done now.
void AddPictures(framework::TImageList& list, bool enabled);

}  // namespace workbench
