// Placing a project into a repository, pulling one out, releasing a working copy.

#include <exception>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "core/ProjectFiles.h"
#include "cvs/AdminFiles.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "cvs/Kept.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

/// Whether a path below the folder leads through the client's records, or through a folder that the
/// system takes for them.
bool IsAdminPath(const std::string& path, const std::string& folder) {
    return framework::UpperCase(path).find("\\CVS\\", folder.size()) != std::string::npos;
}

/// Makes the folders below one folder below another, too; folders without files are in no list.
void MakeFolders(const std::string& from, const std::string& to) {
    framework::ForceDirectories(to);
    framework::TFileSearch search(SlashSep(from, "*.*"), framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);)
        if (entry.IsDirectory() && !entry.IsLink() && entry.Name != "." && entry.Name != ".." &&
            !framework::SameText(entry.Name, AdminDirectoryName))
            MakeFolders(SlashSep(from, entry.Name), SlashSep(to, entry.Name));
}

/// The first file or folder below the folder that could not be brought back from there: its name is
/// not in the code page, or its path too long as soon as the folder's name is longer by `more`.
/// Empty when there is none.
std::string FirstUnmovable(const std::string& folder, std::size_t more) {
    framework::TFileSearch search(SlashSep(folder, "*.*"), framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        const std::string path = SlashSep(folder, entry.Name);
        // A folder is listed with a pattern behind its name.
        const std::size_t room = more + (entry.IsDirectory() ? sizeof "\\*.*" - 1 : 0);
        // What the code page does not have is listed as a question mark.
        if (entry.Name.find('?') != std::string::npos || path.size() + room >= MAX_PATH)
            return path;
        if (!entry.IsDirectory() || entry.IsLink())
            continue;
        if (std::string below = FirstUnmovable(path, more); !below.empty())
            return below;
    }
    return {};
}

}  // namespace

bool TCvsObject::WatchersBrowser() {
    return false;
}
bool TCvsObject::CommitBrowser() {
    return false;
}

bool TCvsObject::Release() {
    TCustomCvsObj::Release();
    return sh_Release_Form(*this) && ReleaseAccepted();
}

bool TCvsObject::ReleaseAccepted() {
    TCustomCvsObj::Release();
    if (OnRelease)
        OnRelease(*this);
    const TFlagForCall answers(AnswerPrompts);
    return Run([this] { MessageProc("Release directory(%s)  ", {WorkingDirectory()}); });
}

bool TCvsObject::PullProject() {
    return PullProject_Prepare(*this) && PullProjectAccepted();
}

bool TCvsObject::PullProjectAccepted() {
    if (OnPullProject)
        OnPullProject(*this);
    const bool done = ExportInsteadOfCheckout ? Export_cmd(false) : CheckOut(false);
    Show_OkForm("CVS Pull Project ",
                "project \"" + Modulename() + "\" pull into directory " + ProjectRoot(),
                done ? ExitCode.load() : 1);
    return done;
}

// --- placing ----------------------------------------------------------------------------------

void TCvsObject::ShowPlaceResult(int code) {
    Show_OkForm("CVS PlaceProject",
                "project \"" + Modulename() + "\" place into repository " + CVSROOT(), code);
}

bool TCvsObject::PlaceProject() {
    if (IsVCSStoredFlag)
        MessageProc("Project already  in CVS ");
    else if (PlaceProject_Prepare(*this))
        return PlaceProjectAccepted();
    ShowPlaceResult(1);
    return false;
}

bool TCvsObject::PlaceProjectAccepted() {
    bool placed = false;
    try {
        placed = CanBePlaced() && Place();
    } catch (const framework::EInOutError& error) {
        // The ignore lists could not be written: nothing was moved yet.
        MessageProc(error.what());
    }
    ShowPlaceResult(placed ? 0 : 1);
    return placed;
}

bool TCvsObject::CanBePlaced() {
    // The dialog may have chosen another folder than the one the flag was taken for.
    if (IsVCSStoredFlag || GetIsVCSstored()) {
        MessageProc("Project already  in CVS ");
        return false;
    }
    const std::string module = SlashSep(ProjectRoot(), Modulename());
    if (Modulename().empty() ||
        !framework::SameText(RemoveSlashSep(WorkingDirectory()), RemoveSlashSep(module))) {
        // The check-out would make another folder than the one that was moved aside.
        MessageProc("Working directory(%s) is not the folder of project %s in directory(%s)",
                    {WorkingDirectory(), Modulename(), ProjectRoot()});
        return false;
    }
    const std::string backup = Get_NewName();
    if (backup.empty()) {
        MessageProc("There is no name for a copy of directory(%s), nothing was done",
                    {WorkingDirectory()});
        return false;
    }
    if (::GetFileAttributesA(backup.c_str()) != INVALID_FILE_ATTRIBUTES) {
        MessageProc("Directory(%s) already exists, nothing was done", {backup});
        return false;
    }
    const std::string unmovable =
        FirstUnmovable(WorkingDirectory(), backup.size() - WorkingDirectory().size());
    if (!unmovable.empty()) {
        MessageProc("The name %s is too long or not in the code page, nothing was done",
                    {unmovable});
        return false;
    }
    return true;
}

bool TCvsObject::Place() {
    if (OnPlaceProject)
        OnPlaceProject(*this);
    const bool ofThisFolder =
        !WorkDirTree.Empty() &&
        framework::SameText(WorkDirTree.GetItem(0).Directory, WorkingDirectory());
    if (!ofThisFolder)
        Load_WorkDirTree();
    WorkDirTree.SaveIgnore(IgnoreFileName);
    bool checkedOut = false;
    std::exception_ptr raised;
    try {
        if (!Import(false) || !CreateCopyProject())
            return false;
        // The model's files are elsewhere for the time being.
        WorkDirTree.Clear();
        // Whatever has taken the folder's place meanwhile.
        RevoveDirExt(WorkingDirectory());
        StikyType = stNone;
        StikyBranch = VendorTag;
        checkedOut = CheckOutWorkingDirectory();
    } catch (...) {
        // There was no backup before: without one now, nothing has happened yet.
        if (!framework::DirectoryExists(Get_NewName()))
            throw;
        // A handler that raises does not mean the files to stay aside.
        raised = std::current_exception();
    }
    const bool complete = BringFilesBack();
    // The last that the user heard of them is that they were moved aside.
    if (complete && !checkedOut)
        MessageProc("Your files are in directory(%s)", {WorkingDirectory()});
    if (raised)
        std::rethrow_exception(raised);
    Load_WorkDirTree();
    return complete && checkedOut;
}

bool TCvsObject::CheckOutWorkingDirectory() {
    // Options of other check-outs, which would make another folder, a part of this one, or none.
    const TKept target(UseTargetDir), output(ToStandardOutput), local(LocalOnly);
    UseTargetDir = ToStandardOutput = LocalOnly = false;
    if (!CheckOut(false))
        return false;
    // The repository may have a folder of its own for a module of that name.
    if (GetIsVCSstored())
        return true;
    MessageProc("Directory(%s) is not made by the check-out of project %s",
                {WorkingDirectory(), Modulename()});
    return false;
}

bool TCvsObject::BringFilesBack() {
    const std::string backup = Get_NewName();
    bool complete = false;
    try {
        std::vector<std::string> fresh, kept;
        MakeFolders(backup, WorkingDirectory());
        CreateCopyList(WorkingDirectory(), fresh);
        CreateCopyList(backup, kept);
        const auto leave = [&](const std::string& path, const std::string& reason) {
            MessageProc("File %s is not moved back: %s", {path, reason});
        };
        bool allFit = true;
        std::erase_if(kept, [&](const std::string& path) {
            if (!IsAdminPath(path, backup))
                return false;
            if (path.find("\\CVS\\", backup.size()) == std::string::npos) {
                // The user's own folder; only its name means another to the client.
                leave(path, "its folder has the name of the client's records");
                allFit = false;
            }
            return true;
        });
        complete = MoveFileExt2(backup, WorkingDirectory(), kept, fresh, !KeepProjectCopy, leave) &&
                   allFit;
        if (complete && !KeepProjectCopy && !RemoveEmptyDirs(backup))
            MessageProc("Directory(%s) is kept, there are files left in it", {backup});
    } catch (const framework::Exception& error) {
        MessageProc(error.what());
    }
    if (!complete)
        MessageProc("Your files are in directory(%s)", {backup});
    return complete;
}

}  // namespace tandrel
