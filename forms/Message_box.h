#pragma once

#include <string>

#include "framework/ui/dialog_sizes.h"
#include "framework/ui/form.h"

namespace tandrel {

/// The sizes that the boxes with a picture and a text share, in design units at 96 dpi.
struct TMessageBoxLayout : framework::TDialogSizes {
    static constexpr int Width = 280;
    static constexpr int Picture = 32;
    static constexpr int TextLeft = 58;
    /// A box is at least this much wider than its text.
    static constexpr int RoomBesideText = 74;
};

/// Puts a picture ("Image1") and a text ("Label1") on top of the box, which becomes wide enough for
/// the text. @return the box's inner width in pixels, and where the text ends.
SIZE AddPictureAndText(framework::TForm& box, const std::wstring& bitmap, const std::string& text);

}  // namespace tandrel
