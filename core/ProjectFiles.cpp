#include "core/ProjectFiles.h"

#include <windows.h>

#include <unordered_set>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

void Unprotect(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
        ::SetFileAttributesA(path.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

void Check(BOOL done, const std::string& path) {
    if (!done)
        throw framework::EInOutError(::GetLastError(), path);
}

/// A move within the disk changes a name and touches no byte; between disks it is a copy that is
/// deleted at its source when it is complete.
void Bring(const std::string& source, const std::string& target, bool deleteSource) {
    framework::ForceDirectories(framework::ExtractFileDir(target));
    // The client may have made what is there read-only.
    Unprotect(target);
    if (deleteSource)
        Check(framework::FileFunctions().Move(source.c_str(), target.c_str(),
                                              MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED),
              source);
    else
        Check(framework::FileFunctions().Copy(source.c_str(), target.c_str(), FALSE), source);
}

void Drop(const std::string& source) {
    Unprotect(source);
    framework::EraseFile(source);
}

}  // namespace

bool MoveFileExt2(const std::string& SrcDir, const std::string& DstDir,
                  const framework::TStringList& SrcList, const framework::TStringList& DstList,
                  bool DeleteSource, const TFileFailure& Failed) {
    std::unordered_set<std::string> present;
    for (const std::string& path : DstList)
        present.insert(framework::UpperCase(path));
    bool complete = true;
    for (const std::string& source : SrcList) {
        const std::string target =
            SlashSep(DstDir, source.substr(RemoveSlashSep(SrcDir).size() + 1));
        try {
            if (present.contains(framework::UpperCase(target)) && HasSameContents(source, target)) {
                if (DeleteSource)
                    Drop(source);
            } else {
                Bring(source, target, DeleteSource);
            }
        } catch (const framework::Exception& error) {
            complete = false;
            Failed(source, error.what());
        }
    }
    return complete;
}

bool RemoveEmptyDirs(const std::string& Dir) {
    bool empty = true;
    {
        framework::TFileSearch search(SlashSep(Dir, "*.*"), framework::faAnyFile);
        for (framework::TSearchRec entry; search.Next(entry);) {
            if (entry.Name == "." || entry.Name == "..")
                continue;
            if (!entry.IsDirectory() || entry.IsLink() ||
                !RemoveEmptyDirs(SlashSep(Dir, entry.Name)))
                empty = false;
        }
    }
    // The shell protects folders that look otherwise than others.
    if (empty)
        Unprotect(Dir);
    return empty && ::RemoveDirectoryA(Dir.c_str());
}

}  // namespace tandrel
