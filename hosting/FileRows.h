#pragma once

#include <string>
#include <vector>

#include "core/WorkDirTree.h"

namespace hosting {

// What a program shows of a working copy, as values: they stay true, and can be shown, while a
// command builds the model anew. Made from the model, the records and the disk alone: nobody is
// asked, so it is the same while the server cannot be reached.

/// What has become of a file since the client wrote about it last.
enum class TFileState {
    Folder,
    Unchanged,
    Changed,
    Added,     ///< The next commit adds it.
    Removed,   ///< The next commit takes it out.
    Missing,   ///< Under version control, but not on disk.
    Conflict,  ///< The client has left two texts in it that nobody has put together yet.
    Unknown,   ///< Not under version control.
    Ignored
};

/// The word for a state.
const char* StateName(TFileState state);

/// One file or folder of a working copy. Texts are in the process's code page.
struct TFileRow {
    std::string Directory;
    std::string Name;
    bool IsDirectory = false;
    TFileState State = TFileState::Unknown;
    std::string Revision;
    std::string TimeStamp;  ///< As the client wrote it.
    std::string Sticky;     ///< The label, branch or date that it stays on; empty for none.
    bool IsBinary = false;  ///< Kept byte for byte.
    int ImageIndex = -1;    ///< In the system's small image list; -1 for none.

    std::string Path() const;
    bool operator==(const TFileRow&) const = default;
};

/// The rows of one folder: what is on disk, in the model's order, then what is missing. Records
/// that cannot be read say nothing.
/// @param items the model's items of that folder.
std::vector<TFileRow> RowsOf(const std::string& folder, const tandrel::TWorkDirTree& items);
/// The rows of files in a folder and all below it that are not ignored; links are not followed.
std::vector<TFileRow> RowsBelow(const std::string& folder, const tandrel::TWorkDirTree& items);

/// The rows of files (no folders) that are meant by these paths: of a file its own, of a folder
/// those of RowsBelow; each once. @param top the folder whose model is `items`.
std::vector<TFileRow> RowsIn(const std::vector<std::string>& paths, const std::string& top,
                             const tandrel::TWorkDirTree& items);

/// A folder of a working copy and those below it.
struct TFolderRow {
    std::string Path;
    std::string Name;
    int ImageIndex = -1;
    TFileState State = TFileState::Folder;  ///< Folder, Unknown or Ignored.
    bool HasChanges = false;                ///< In a file, of it or below.
    std::vector<TFolderRow> Folders;

    bool operator==(const TFolderRow&) const = default;
};

/// The folders of a working copy. @param items the model of `folder`.
TFolderRow FoldersOf(const std::string& folder, const tandrel::TWorkDirTree& items);

/// The model's items of a folder: of `top`, whose model is `items`, or of one below it. None when
/// it is not in the model.
const tandrel::TWorkDirTree* ItemsOf(const std::string& top, const tandrel::TWorkDirTree& items,
                                     const std::string& folder);

}  // namespace hosting
