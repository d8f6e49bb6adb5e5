#include "hosting/Recovery.h"

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"

namespace hosting {

using namespace framework;
using tandrel::SlashSep;

void TRecovery::Write(const std::vector<TUnsavedText>& texts) {
    int number = 0;
    for (const TUnsavedText& text : texts) {
        try {
            ForceDirectories(Folder_);
            // One that is there is of an earlier process, or of a file of the same name.
            std::string path;
            do
                path = SlashSep(Folder_, std::to_string(++number) + " " + text.Name);
            while (FileExists(path));
            WriteFileBytes(path, text.Bytes);
            Written_.push_back(path);
        } catch (const EInOutError&) {
            // The others can still be kept.
        }
    }
}

void TRecovery::Forget() {
    TPatience patience;
    for (const std::string& path : Written_)
        patience.Delete(path);
    Written_.clear();
}

std::string TRecovery::Notice() const {
    TFileSearch search(SlashSep(Folder_, "*.*"), faArchive);
    for (TSearchRec entry; search.Next(entry);)
        if (!entry.IsDirectory())
            return "Texts that were not saved when the host was ended are in " + Folder_ + "\r\n";
    return {};
}

}  // namespace hosting
