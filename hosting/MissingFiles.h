#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/WorkDirTree.h"
#include "framework/base/object.h"

namespace hosting {

/// A file that is under version control but not on disk: the model of the working copy, which lists
/// what is there, has no item for it.
class TMissingFile : public framework::TObject {
public:
    std::string Directory;
    std::string Name;
    std::string Revision;
    std::string TimeStamp;  ///< As the client wrote it.
    bool Removed = false;   ///< The next commit takes it out; else it was deleted, or is to come.
};

using TMissingFiles = std::vector<std::unique_ptr<TMissingFile>>;

/// The missing files of one folder. @param items the model's items of that folder. Records that
/// cannot be read have none.
TMissingFiles FindMissingFiles(const std::string& folder, const tandrel::TWorkDirTree& items);

}  // namespace hosting
