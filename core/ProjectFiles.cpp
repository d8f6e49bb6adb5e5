#include "core/ProjectFiles.h"

#include <windows.h>

#include <unordered_set>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

void Unprotect(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
        ::SetFileAttributesA(path.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

void Check(bool done, const std::string& path) {
    if (!done)
        throw framework::EInOutError(::GetLastError(), path);
}

/// A move within the disk changes a name and touches no byte; between disks it is a copy that is
/// deleted at its source when it is complete.
void Bring(const std::string& source, const std::string& target, bool deleteSource,
           framework::TPatience& patience) {
    framework::ForceDirectories(framework::ExtractFileDir(target));
    // The client may have made what is there read-only.
    Unprotect(target);
    if (deleteSource)
        Check(patience.Move(source, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED),
              source);
    else
        Check(patience.Copy(source, target), source);
}

void Drop(const std::string& source, framework::TPatience& patience) {
    Unprotect(source);
    framework::EraseFile(source, patience);
}

bool RemoveEmpty(const std::string& folder, framework::TPatience& patience) {
    bool empty = true;
    {
        framework::TFileSearch search(SlashSep(folder, "*.*"), framework::faAnyFile);
        for (framework::TSearchRec entry; search.Next(entry);) {
            const std::string path = SlashSep(folder, entry.Name);
            if (entry.Name == "." || entry.Name == "..")
                continue;
            if (entry.IsLink() ||
                !(framework::IsGoing(path) || (entry.IsDirectory() && RemoveEmpty(path, patience))))
                empty = false;
        }
    }
    // The shell protects folders that look otherwise than others.
    if (empty)
        Unprotect(folder);
    return empty && patience.RemoveFolder(folder);
}

}  // namespace

bool MoveFileExt2(const std::string& SrcDir, const std::string& DstDir,
                  const framework::TStringList& SrcList, const framework::TStringList& DstList,
                  bool DeleteSource, const TFileFailure& Failed) {
    std::unordered_set<std::string> present;
    for (const std::string& path : DstList)
        present.insert(framework::UpperCase(path));
    bool complete = true;
    framework::TPatience patience;
    for (const std::string& source : SrcList) {
        const std::string target =
            SlashSep(DstDir, source.substr(RemoveSlashSep(SrcDir).size() + 1));
        try {
            if (present.contains(framework::UpperCase(target)) && HasSameContents(source, target)) {
                if (DeleteSource)
                    Drop(source, patience);
            } else {
                Bring(source, target, DeleteSource, patience);
            }
        } catch (const framework::Exception& error) {
            complete = false;
            Failed(source, error.what());
        }
    }
    return complete;
}

bool RemoveEmptyDirs(const std::string& Dir) {
    framework::TPatience patience;
    return RemoveEmpty(Dir, patience);
}

}  // namespace tandrel
