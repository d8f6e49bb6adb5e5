#include "hosting/MissingFiles.h"

#include <unordered_set>

#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/text.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

TMissingFiles FindMissingFiles(const std::string& folder, const TWorkDirTree& items) {
    TMissingFiles missing;
    // What lies behind a link is not part of this working copy, and its files are there.
    if (IsLink(folder))
        return missing;
    std::unordered_set<std::string> there;
    for (const TWorkDirItem& item : items)
        there.insert(UpperCase(item.Name));
    try {
        ForEachEntry(folder, true, [&](const TEntryLine& entry) {
            const std::string name(entry.Name);
            if (entry.IsDirectory || there.contains(UpperCase(name)) ||
                FileExists(SlashSep(folder, name)))
                return;
            auto found = std::make_unique<TMissingFile>();
            found->Directory = folder;
            found->Name = name;
            found->Revision = entry.Revision;
            found->TimeStamp = entry.TimeStamp;
            found->Removed = entry.Revision.starts_with('-');
            missing.push_back(std::move(found));
        });
    } catch (const EInOutError&) {
        // An ordinary folder, or one whose records the load of the model has told about.
    }
    return missing;
}

}  // namespace hosting
