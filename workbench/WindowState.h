#pragma once

#include <string>
#include <vector>

#include "hosting/Settings.h"
#include "workbench/FileList.h"

namespace workbench {

/// How the user has arranged the window: it is so again at the next start. Sizes are design units;
/// 0 for those that were never stored.
struct TWindowState {
    int Width = 0, Height = 0;
    int FilesHeight = 0, TreeWidth = 0;
    std::vector<int> ColumnWidths;
    TFileView View;  ///< Without its filter.
    bool WithFolders = false;

    static TWindowState Load(const hosting::TSettings& settings);
    /// What cannot be stored is as it was at the next start.
    void Store(hosting::TSettings& settings) const;
};

}  // namespace workbench
