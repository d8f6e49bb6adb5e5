// Backup of a project's folder, taking the client's records off it, the ignore list, preferences.

#include <windows.h>

#include <algorithm>
#include <utility>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "core/IgnoreList.h"
#include "cvs/AdminFiles.h"
#include "cvs/Contained.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

/// The client's records in the order in which they are deleted. The ones behind the first six are
/// not in every working copy.
constexpr const char* AdminFiles[] = {
    "Entries",      "Entries.Extra", "Entries.Old",    "Repository", "Entries.Extra.Old",
    "Root",         "Entries.Log",   "Entries.Static", "Tag",        "Template",
    "Notify",       "Baserev",       "Entries.Backup", "Notify.tmp", "Baserev.tmp",
    "Checkin.prog", "Update.prog",
};

bool IsOwnOrParent(const framework::TSearchRec& entry) {
    return entry.Name == "." || entry.Name == "..";
}

/// The client's folder, in its records, for the texts that edited files had before.
constexpr const char* BaseDirectoryName = "Base";

void RemoveFolder(const std::string& path, framework::TPatience& patience) {
    if (!patience.RemoveFolder(path))
        throw framework::EInOutError(::GetLastError(), path);
}

/// Whether the name leads to a folder in the repository, and not to the repository itself, what
/// makes it one, or out of it.
bool IsModulePath(const std::string& name) {
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = std::min(framework::FindFirstOf(name, "/\\", start), name.size());
        // The system ignores dots and blanks behind a name; one of nothing else leads up or
        // nowhere.
        std::string part = name.substr(start, end - start);
        part.resize(part.find_last_not_of(". ") + 1);
        if (part.empty() || (start == 0 && framework::SameText(part, "CVSROOT")))
            return false;
        if (end == name.size())
            return true;
        start = end + 1;
    }
}

}  // namespace

bool TCvsObject::CreateCopyProject() {
    const std::string& folder = WorkingDirectory();
    if (!framework::DirectoryExists(folder)) {
        MessageProc("Create copy of directory(%s)  is failed,Working directory is not exists ",
                    {folder});
        return false;
    }
    const TMovedFolder moved{folder, Get_NewName()};
    MoveAside(moved);
    TellCopyMade(moved);
    return true;
}

void TCvsObject::TellCopyMade(const TMovedFolder& moved) {
    MessageProc("For directory(%s) created copy =  %s  ", {moved.Folder, moved.Backup});
}

void TCvsObject::MoveAside(const TMovedFolder& moved) {
    ModelCurrent = false;
    // A rename: all or nothing, and never on top of something.
    if (framework::TPatience().Move(moved.Folder, moved.Backup, 0))
        return;
    const DWORD error = ::GetLastError();
    MessageProc("Copy directory(%s) to  %s is failed ", {moved.Folder, moved.Backup});
    throw framework::EOSError(error);
}

void TCvsObject::CreateCopyList(const std::string& Dir, framework::TStringList& List) {
    framework::TFileSearch search(SlashSep(Dir, "*.*"), framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (IsOwnOrParent(entry))
            continue;
        const std::string path = SlashSep(Dir, entry.Name);
        if (!entry.IsDirectory())
            List.Add(path);
        else if (!entry.IsLink())
            CreateCopyList(path, List);
    }
}

void TCvsObject::TryDeleteFile(const std::string& Dir, const std::string& Name) {
    const std::string path = SlashSep(Dir, Name);
    if (!framework::FileExists(path))
        return;
    framework::EraseFile(path);
    MessageProc("File %s deleted ", {path});
}

template <class Action>
bool TCvsObject::Contained(Action action) {
    const auto error = ErrorOf(action);
    if (error)
        MessageProc("I/O Error = %s ", {*error});
    return !error;
}

bool TCvsObject::DeleteRecord(const std::string& Dir, const char* Name,
                              framework::TPatience& patience) {
    const std::string path = SlashSep(Dir, Name);
    if (!framework::FileExists(path))
        return true;
    if (!Contained([&] { framework::EraseFile(path, patience); }))
        return false;
    MessageProc("File %s deleted ", {path});
    return true;
}

bool TCvsObject::DeleteAdminDirectory(const std::string& Dir, framework::TPatience& patience) {
    for (const char* name : AdminFiles)
        if (!DeleteRecord(Dir, name, patience))
            return false;
    const std::string base = SlashSep(Dir, BaseDirectoryName);
    if (framework::DirectoryExists(base) && !framework::IsLink(base)) {
        framework::TStringList texts;
        if (!Contained([&] { CreateCopyList(base, texts); }))
            return false;
        for (const std::string& path : texts)
            if (!DeleteRecord(base, framework::ExtractFileName(path).c_str(), patience))
                return false;
        if (!Contained([&] { RemoveFolder(base, patience); }))
            return false;
    }
    return Contained([&] { RemoveFolder(Dir, patience); });
}

bool TCvsObject::DeleteCVSDirs(const std::string& Dir) {
    ModelCurrent = false;
    framework::TPatience patience;
    return DeleteRecordsBelow(Dir, patience);
}

bool TCvsObject::DeleteRecordsBelow(const std::string& Dir, framework::TPatience& patience) {
    std::vector<std::string> folders;
    bool done = Contained([&] {
        framework::TFileSearch search(SlashSep(Dir, "*.*"), framework::faAnyFile);
        for (framework::TSearchRec entry; search.Next(entry);)
            if (entry.IsDirectory() && !entry.IsLink() && !IsOwnOrParent(entry))
                folders.push_back(entry.Name);
    });
    for (const std::string& name : folders) {
        const std::string path = SlashSep(Dir, name);
        done = (CVS_SystemDirectory(name) ? DeleteAdminDirectory(path, patience)
                                          : DeleteRecordsBelow(path, patience)) &&
               done;
    }
    if (!KeepCvsIgnore)
        done = DeleteRecord(Dir, IgnoreFileName, patience) && done;
    return done;
}

bool TCvsObject::RemoveProjectFrom() {
    if (Refused("clear project data"))
        return false;
    TCustomCvsObj::RemoveProjectFrom();
    const bool done = DeleteCVSDirs(WorkingDirectory());
    if (RemoveFromRepository && ConnectionType == cnLocal) {
        std::string folder = SlashSep(CVSROOT(), Modulename());
        std::ranges::replace(folder, '/', '\\');
        if (IsModulePath(Modulename()) && RevoveDirExt(folder))
            MessageProc("Directory  %s deleted ", {folder});
        else
            MessageProc("directory(%s) is not exist   ", {folder});
    }
    if (done)
        Show_OkForm("CVS ClearProjectData", "CVS folders deleted from project", 0);
    return done;
}

void TCvsObject::ExploreIgnore() {
    const std::string path = SlashSep(WorkingDirectory(), IgnoreFileName);
    std::vector<std::string> names;
    for (const TFileItem& item : FileItems)
        if (item.Ignore && !CVS_SystemFile(item.Name))
            names.push_back(item.Name);
    std::vector<std::string> kept;
    if (KeepIgnorePatterns)
        kept = OtherIgnoreLines(path, [&](const std::string& line) {
            const std::string entry = SlashSep(WorkingDirectory(), line);
            return std::ranges::find(names, line) != names.end() || framework::FileExists(entry) ||
                   framework::DirectoryExists(entry);
        });
    ModelCurrent = false;
    WriteIgnoreList(path, std::move(kept), names);
    ::WinExec(("notepad.exe " + path).c_str(), SW_SHOWNORMAL);
}

void TCvsObject::LoadPreferences(HKEY RootKey, const std::string& Key) {
    TCustomCvsObj::LoadPreferences(RootKey, Key);
    framework::TRegistry registry(RootKey);
    if (!registry.OpenKeyReadOnly(Key))
        return;
    if (registry.ValueExists("PRUNE"))
        PruneEmptyDirs = registry.ReadString("PRUNE") == "1";
    if (registry.ValueExists("CVS_RSH"))
        CVS_RSH_ = registry.ReadString("CVS_RSH");
}

void TCvsObject::SavePreferences(HKEY RootKey, const std::string& Key) {
    TCustomCvsObj::SavePreferences(RootKey, Key);
    framework::TRegistry registry(RootKey);
    if (!registry.OpenKey(Key, true))
        throw framework::ERegistryError("The registry key " + Key +
                                        " cannot be opened for writing");
    registry.WriteString("PRUNE", PruneEmptyDirs ? "1" : "0");
    if (!CVS_RSH_.empty())
        registry.WriteString("CVS_RSH", CVS_RSH_);
}

}  // namespace tandrel
