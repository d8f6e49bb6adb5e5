#include "host/Recovery.h"

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"

namespace host {

using namespace framework;
using tandrel::SlashSep;

void TRecovery::Write(const std::vector<TDocumentForm*>& documents) {
    int number = 0;
    for (const TDocumentForm* document : documents) {
        if (!document->Modified())
            continue;
        const std::string name =
            document->Path().empty() ? "new document" : ExtractFileName(document->Path());
        try {
            ForceDirectories(Folder_);
            // One that is there is of an earlier process, or of a file of the same name.
            std::string path;
            do
                path = SlashSep(Folder_, std::to_string(++number) + " " + name);
            while (FileExists(path));
            document->SaveCopy(path);
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

}  // namespace host
