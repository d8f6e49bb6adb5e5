// Backup of a project's folder, taking the client's records off it, the ignore list, preferences.

#include <windows.h>

#include <algorithm>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace tandrel {
namespace {

/// The client's records in the order in which they are deleted. The ones behind the first six are
/// not in every working copy.
constexpr const char* AdminFiles[] = {
    "Entries", "Entries.Extra", "Entries.Old",    "Repository", "Entries.Extra.Old",
    "Root",    "Entries.Log",   "Entries.Static", "Tag",        "Template",
    "Notify",  "Baserev",
};

bool IsLink(const std::string& path) {
    return (::GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool IsOwnOrParent(const framework::TSearchRec& entry) {
    return entry.Name == "." || entry.Name == "..";
}

/// The client's folder, in its records, for the texts that edited files had before.
constexpr const char* BaseDirectoryName = "Base";

void RemoveFolder(const std::string& path) {
    if (!::RemoveDirectoryA(path.c_str()))
        throw framework::EInOutError(::GetLastError(), path);
}

/// Whether the name leads to a folder in the repository, and not to the repository itself, what
/// makes it one, or out of it.
bool IsModulePath(const std::string& name) {
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = std::min(name.find_first_of("/\\", start), name.size());
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
    const std::string backup = Get_NewName();
    // A rename: all or nothing, and never on top of something.
    if (!framework::FileFunctions().Move(folder.c_str(), backup.c_str(), 0)) {
        const DWORD error = ::GetLastError();
        MessageProc("Copy directory(%s) to  %s is failed ", {folder, backup});
        throw framework::EOSError(error);
    }
    MessageProc("For directory(%s) created copy =  %s  ", {folder, backup});
    return true;
}

void TCvsObject::CreateCopyList(const std::string& Dir, std::vector<std::string>& List) {
    framework::TFileSearch search(SlashSep(Dir, "*.*"), framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (IsOwnOrParent(entry))
            continue;
        const std::string path = SlashSep(Dir, entry.Name);
        if (!entry.IsDirectory())
            List.push_back(path);
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

bool TCvsObject::DeleteAdminDirectory(const std::string& Dir) {
    for (const char* name : AdminFiles)
        TryDeleteFile(Dir, name);
    const std::string base = SlashSep(Dir, BaseDirectoryName);
    if (framework::DirectoryExists(base) && !IsLink(base)) {
        std::vector<std::string> texts;
        CreateCopyList(base, texts);
        for (const std::string& path : texts)
            TryDeleteFile(base, framework::ExtractFileName(path));
        RemoveFolder(base);
    }
    RemoveFolder(Dir);
    return true;
}

bool TCvsObject::DeleteCVSDirs(const std::string& Dir) {
    bool done = true;
    const auto contained = [&](auto action) {
        try {
            done = action() && done;
        } catch (const framework::Exception& error) {
            MessageProc("I/O Error = %s ", {error.what()});
            done = false;
        }
    };
    std::vector<std::string> folders;
    contained([&] {
        framework::TFileSearch search(SlashSep(Dir, "*.*"), framework::faAnyFile);
        for (framework::TSearchRec entry; search.Next(entry);)
            if (entry.IsDirectory() && !entry.IsLink() && !IsOwnOrParent(entry))
                folders.push_back(entry.Name);
        return true;
    });
    for (const std::string& name : folders) {
        const std::string path = SlashSep(Dir, name);
        contained([&] {
            return CVS_SystemDirectory(name) ? DeleteAdminDirectory(path) : DeleteCVSDirs(path);
        });
    }
    if (!KeepCvsIgnore)
        contained([&] {
            TryDeleteFile(Dir, IgnoreFileName);
            return true;
        });
    return done;
}

bool TCvsObject::RemoveProjectFrom() {
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
        if (item.Ignore)
            names.push_back(item.Name);
    // The list ignores itself.
    names.push_back(IgnoreFileName);
    framework::ReplaceTextFile(path, names);
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
