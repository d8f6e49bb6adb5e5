#pragma once

#include "framework/ui/image_list.h"

namespace tandrel {

// Positions in the images of trees and lists. Between them are empty ones.
inline constexpr int RevisionImage = 0;
inline constexpr int ExcludedImage = 4;
inline constexpr int IncludedImage = 5;
inline constexpr int BranchImage = 7;
inline constexpr int LabelImage = 8;

/// The images of trees and lists.
class TStateImages : public framework::TImageList {
public:
    TStateImages();
};

}  // namespace tandrel
