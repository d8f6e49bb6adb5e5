#pragma once

namespace framework {

/// The sizes that dialogs have in common, in design units.
struct TDialogSizes {
    static constexpr int Margin = 12;
    static constexpr int Gap = 8;
    static constexpr int EditHeight = 21;
    static constexpr int ButtonWidth = 75;
    static constexpr int ButtonHeight = 25;
};

}  // namespace framework
