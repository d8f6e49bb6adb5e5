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

/// Appends the pictures in their order.
void AddPictures(framework::TImageList& list);

}  // namespace workbench
