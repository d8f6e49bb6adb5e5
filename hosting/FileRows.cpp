#include "hosting/FileRows.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "cvs/Cvstempl.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"
#include "hosting/ClientIgnores.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

namespace {

/// What the records say of a file, beyond what the model keeps.
struct TRecord {
    std::string Name, Revision, TimeStamp, Sticky;
    bool IsBinary = false;
    bool IsTaken = false;  // by a file on disk
};
using TRecords = std::unordered_map<std::string, TRecord>;

/// As users write it: "T" and "N" stand before a label or branch, "D" before a date.
std::string StickyText(std::string_view tag) {
    return tag.size() > 1 ? std::string(tag.substr(1)) : std::string();
}

TRecords ReadRecords(const std::string& folder, std::vector<std::string>& order) {
    TRecords records;
    try {
        ForEachEntry(folder, true, [&](const TEntryLine& entry) {
            if (entry.IsDirectory)
                return;
            const std::string key = UpperCase(entry.Name);
            records[key] = {.Name = std::string(entry.Name),
                            .Revision = std::string(entry.Revision),
                            .TimeStamp = std::string(entry.TimeStamp),
                            .Sticky = StickyText(entry.Tag),
                            .IsBinary = entry.Options.find("-kb") != std::string_view::npos};
            order.push_back(key);
        });
    } catch (const EInOutError&) {
        // An ordinary folder, or one whose records the load of the model has told about.
    }
    return records;
}

/// What the records of a folder say that it stays on.
std::string StickyOfFolder(const std::string& folder) {
    const std::string path = SlashSep(SlashSep(folder, AdminDirectoryName), "Tag");
    std::string line;
    try {
        if (FileExists(path))
            TTextFile::Reset(path).ReadLine(line);
    } catch (const EInOutError&) {
        // Unknown is none.
    }
    return StickyText(Trim(line));
}

/// Whether a line of the file begins as the client marks two texts. Of a file that nobody could
/// read, nothing is known to be settled.
bool HasMarks(const std::string& path) {
    try {
        auto file = TTextFile::Reset(path);
        for (std::string line; file.ReadLine(line);)
            if (line.starts_with("<<<<<<< ") || line.starts_with(">>>>>>> "))
                return true;
        return false;
    } catch (const EInOutError&) {
        return true;
    }
}

/// Whether a file's time is another one than the client recorded. The model takes some seconds for
/// none; the client, whose records know whole ones, does not.
bool IsTouched(const TWorkDirItem& item, const TIME_ZONE_INFORMATION& zone) {
    if (item.Changed || item.RepositoryDate == 0)
        return item.Changed;
    constexpr double SecondsPerDay = 86400, Rounding = 0.00001;
    const double later =
        (item.FileDate - UTCToLocalTime(item.RepositoryDate, zone)) * SecondsPerDay;
    return later < -Rounding || later > 1 - Rounding;
}

TFileState StateOf(const TWorkDirItem& item, const TRecord* record,
                   const TIME_ZONE_INFORMATION& zone) {
    if (!item.Included)
        return TFileState::Ignored;
    if (item.IsDirectory)
        return item.InRepository ? TFileState::Folder : TFileState::Unknown;
    if (!record)
        return TFileState::Unknown;
    if (record->Revision.starts_with('-'))
        return TFileState::Removed;
    if (record->Revision == "0")
        return TFileState::Added;
    // Behind a "+" the client has noted when it left its marks in the file.
    if (record->TimeStamp.find('+') != std::string::npos &&
        HasMarks(SlashSep(item.Directory, item.Name)))
        return TFileState::Conflict;
    return IsTouched(item, zone) || !item.InRepository ? TFileState::Changed
                                                       : TFileState::Unchanged;
}

TFileRow RowOf(const TWorkDirItem& item, const TRecord* record, const TIME_ZONE_INFORMATION& zone) {
    return {.Directory = item.Directory,
            .Name = item.Name,
            .IsDirectory = item.IsDirectory,
            .State = StateOf(item, record, zone),
            .Revision = record ? record->Revision : item.Revision,
            .TimeStamp = record ? record->TimeStamp : item.TimeStamp,
            .Sticky = record             ? record->Sticky
                      : item.IsDirectory ? StickyOfFolder(SlashSep(item.Directory, item.Name))
                                         : std::string(),
            .IsBinary = record && record->IsBinary,
            .ImageIndex = item.ImageIndex};
}

bool IsChange(const TWorkDirItem& item, const TIME_ZONE_INFORMATION& zone) {
    return item.Included && item.InRepository && !item.IsDirectory && IsTouched(item, zone);
}

TFolderRow FoldersOf(const std::string& folder, const TWorkDirTree& items,
                     const TIME_ZONE_INFORMATION& zone) {
    TFolderRow row;
    row.Path = folder;
    row.Name = ExtractFileName(folder);
    for (const TWorkDirItem& item : items) {
        row.HasChanges |= IsChange(item, zone);
        if (!item.IsDirectory)
            continue;
        TFolderRow below = FoldersOf(SlashSep(item.Directory, item.Name), *item.Children, zone);
        below.ImageIndex = item.ImageIndex;
        below.State = StateOf(item, nullptr, zone);
        // Where nothing is under version control that says nothing.
        if (below.State == TFileState::Unknown && !items.CvsObj()->IsVCSStoredFlag)
            below.State = TFileState::Folder;
        row.HasChanges |= below.HasChanges;
        row.Folders.push_back(std::move(below));
    }
    return row;
}

}  // namespace

const char* StateName(TFileState state) {
    switch (state) {
        case TFileState::Folder:
            return "Folder";
        case TFileState::Unchanged:
            return "Not changed";
        case TFileState::Changed:
            return "Changed";
        case TFileState::Added:
            return "Added";
        case TFileState::Removed:
            return "Removed";
        case TFileState::Missing:
            return "Missing";
        case TFileState::Conflict:
            return "Conflict";
        case TFileState::Unknown:
            return "Not in repository";
        case TFileState::Ignored:
            break;
    }
    return "Ignored";
}

std::string TFileRow::Path() const {
    return SlashSep(Directory, Name);
}

namespace {

/// Whether the client's own list of what it passes over holds in a folder.
bool HasClientIgnores(const std::string& folder, const TWorkDirTree& items) {
    const auto* const cvs = dynamic_cast<const TCvsObject*>(items.CvsObj());
    const std::string list = SlashSep(folder, IgnoreFileName);
    try {
        return !(cvs && EndClientIgnores(cvs->CVSIGNORE())) &&
               !(FileExists(list) && EndClientIgnores(ReadFileBytes(list)));
    } catch (const EInOutError&) {
        return true;
    }
}

}  // namespace

std::vector<TFileRow> RowsOf(const std::string& folder, const TWorkDirTree& items) {
    const bool hasClientIgnores = HasClientIgnores(folder, items);
    std::vector<std::string> order;
    // What lies behind a link is not part of this working copy, and its files are there.
    TRecords records = IsLink(folder) ? TRecords{} : ReadRecords(folder, order);
    const TIME_ZONE_INFORMATION zone = PresentTimeZone();
    std::vector<TFileRow> rows;
    for (const TWorkDirItem& item : items) {
        const auto at = item.IsDirectory ? records.end() : records.find(UpperCase(item.Name));
        if (at != records.end())
            at->second.IsTaken = true;
        rows.push_back(RowOf(item, at == records.end() ? nullptr : &at->second, zone));
        TFileRow& row = rows.back();
        if (row.State == TFileState::Unknown && hasClientIgnores && IsIgnoredByClient(row.Name))
            row.State = TFileState::Ignored;
    }
    for (const std::string& key : order) {
        TRecord& record = records[key];
        if (std::exchange(record.IsTaken, true) || FileExists(SlashSep(folder, record.Name)))
            continue;
        const bool removed = record.Revision.starts_with('-');
        rows.push_back({.Directory = folder,
                        .Name = record.Name,
                        .State = removed ? TFileState::Removed : TFileState::Missing,
                        .Revision = record.Revision,
                        .TimeStamp = record.TimeStamp,
                        .Sticky = record.Sticky,
                        .IsBinary = record.IsBinary});
    }
    return rows;
}

std::vector<TFileRow> RowsBelow(const std::string& folder, const TWorkDirTree& items) {
    std::vector<TFileRow> rows = RowsOf(folder, items);
    std::erase_if(rows, [](const TFileRow& row) {
        return row.IsDirectory || row.State == TFileState::Ignored;
    });
    for (const TWorkDirItem& item : items) {
        if (!item.IsDirectory || !item.Included)
            continue;
        std::vector<TFileRow> below =
            RowsBelow(SlashSep(item.Directory, item.Name), *item.Children);
        std::ranges::move(below, std::back_inserter(rows));
    }
    return rows;
}

std::vector<TFileRow> RowsIn(const std::vector<std::string>& paths, const std::string& top,
                             const TWorkDirTree& items) {
    std::vector<TFileRow> rows;
    std::unordered_set<std::string> taken;
    const auto take = [&](TFileRow row) {
        if (taken.insert(UpperCase(row.Path())).second)
            rows.push_back(std::move(row));
    };
    std::unordered_map<std::string, std::vector<TFileRow>> read;  // by folder
    for (const std::string& path : paths) {
        if (const TWorkDirTree* const below = ItemsOf(top, items, path)) {
            for (TFileRow& row : RowsBelow(path, *below))
                take(std::move(row));
            continue;
        }
        const std::string folder = ExtractFileDir(path);
        const auto [at, isNew] = read.try_emplace(UpperCase(folder));
        const TWorkDirTree* const around = isNew ? ItemsOf(top, items, folder) : nullptr;
        if (around)
            at->second = RowsOf(folder, *around);
        for (const TFileRow& row : at->second)
            if (!row.IsDirectory && SameText(row.Path(), path))
                take(row);
    }
    return rows;
}

TFolderRow FoldersOf(const std::string& folder, const TWorkDirTree& items) {
    return FoldersOf(folder, items, PresentTimeZone());
}

const TWorkDirTree* ItemsOf(const std::string& top, const TWorkDirTree& items,
                            const std::string& folder) {
    if (SameText(top, folder))
        return &items;
    for (const TWorkDirItem& item : items) {
        if (!item.IsDirectory)
            continue;
        const std::string path = SlashSep(item.Directory, item.Name);
        // Only what is above the folder, or the folder itself.
        if (!SameText(folder.substr(0, path.size()), path) ||
            (folder.size() > path.size() && folder[path.size()] != '\\'))
            continue;
        return ItemsOf(path, *item.Children, folder);
    }
    return nullptr;
}

}  // namespace hosting
