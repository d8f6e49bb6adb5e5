// Placing a project into a repository, pulling one out, releasing a working copy.

#include <exception>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "core/ProjectFiles.h"
#include "cvs/AdminFiles.h"
#include "cvs/Contained.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "cvs/Kept.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/names.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

/// Whether a path below the folder leads through the client's records, or through a folder that the
/// system takes for them.
bool IsAdminPath(const std::string& path, const std::string& folder) {
    return framework::FindText(framework::UpperCase(path), "\\CVS\\", folder.size()) !=
           std::string::npos;
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

/// The first file or folder below the folder that a path does not lead to: its name is not in the
/// code page, or its path too long as soon as the folder's name is longer by `more`. Empty when
/// there is none.
std::string FirstUnusable(const std::string& folder, std::size_t more) {
    framework::TFileSearch search(SlashSep(folder, "*.*"), framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        std::string path = SlashSep(folder, entry.Name);
        // A folder is listed with a pattern behind its name.
        const std::size_t room = more + (entry.IsDirectory() ? sizeof "\\*.*" - 1 : 0);
        if (framework::IsUnusable(entry.Name) || path.size() + room >= MAX_PATH)
            return path;
        if (!entry.IsDirectory() || entry.IsLink())
            continue;
        if (std::string below = FirstUnusable(path, more); !below.empty())
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
    if (Refused(otRelease))
        return false;
    TCustomCvsObj::Release();
    return sh_Release_Form(*this) && ReleaseAccepted();
}

bool TCvsObject::ReleaseAccepted() {
    if (Refused(otRelease))
        return false;
    TCustomCvsObj::Release();
    Fire(OnRelease);
    const TFlagForCall answers(AnswerPrompts);
    return Run([this] { MessageProc("Release directory(%s)  ", {WorkingDirectory()}); });
}

bool TCvsObject::PullProject() {
    return !Refused(otCheckOut) && PullProject_Prepare(*this) && PullProjectAccepted();
}

bool TCvsObject::PullProjectAccepted() {
    if (Refused(otCheckOut))
        return false;
    Fire(OnPullProject);
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
    if (Refused(otImport))
        return false;
    if (IsVCSStoredFlag)
        MessageProc("Project already  in CVS ");
    else if (PlaceProject_Prepare(*this))
        return PlaceProjectAccepted();
    ShowPlaceResult(1);
    return false;
}

bool TCvsObject::PlaceProjectAccepted() {
    if (Refused(otImport))
        return false;
    // First, so that the host can still put right what the checks would refuse.
    Fire(OnPlaceProject);
    const bool placed = CanBePlaced() && WriteIgnoreLists() && Place();
    ShowPlaceResult(placed ? 0 : 1);
    return placed;
}

bool TCvsObject::CanBePlaced() {
    if (!framework::DirectoryExists(WorkingDirectory())) {
        MessageProc("Directory(%s) does not exist, nothing was done", {WorkingDirectory()});
        return false;
    }
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
    return CanAllBeNamed(WorkingDirectory(), backup.size() - WorkingDirectory().size());
}

bool TCvsObject::CanAllBeNamed(const std::string& folder, std::size_t more) {
    std::string unusable;
    const auto error = ErrorOf([&] { unusable = FirstUnusable(folder, more); });
    if (error)
        MessageProc(*error);
    if (error || unusable.empty())
        return !error;
    MessageProc("The name %s is too long or not in the code page, nothing was done", {unusable});
    return false;
}

bool TCvsObject::CanClientName() {
    // The client takes look-alikes for letters that the code page lacks, even for separators: it
    // would put other files into the repository, or delete them.
    if (!StrictQuoting)
        return true;
    if (Operation == otImport)
        return CanAllBeNamed(WorkingDirectory(), 0);
    if (Operation == otRelease && ReleaseDelete)
        return CanAllBeNamed(SlashSep(ProjectRoot(), Modulename()), 0);
    return true;
}

bool TCvsObject::WriteIgnoreLists() {
    const bool ofThisFolder =
        !WorkDirTree.Empty() &&
        framework::SameText(WorkDirTree.GetItem(0).Directory, WorkingDirectory());
    if (!ofThisFolder)
        Load_WorkDirTree();
    const auto error = ErrorOf([this] { WorkDirTree.SaveIgnore(IgnoreFileName); });
    if (error)
        MessageProc(*error);
    return !error;
}

bool TCvsObject::Place() {
    // Whatever a handler makes of the working directory: it is this folder that is moved, and these
    // names tell where its files are.
    const TMovedFolder moved{WorkingDirectory(), Get_NewName()};
    if (!Import(false))
        return false;
    MoveAside(moved);
    // The model's files are elsewhere for the time being.
    WorkDirTree.Clear();
    bool checkedOut = false;
    std::exception_ptr raised;
    try {
        TellCopyMade(moved);
        // Whatever has taken the folder's place meanwhile.
        RevoveDirExt(moved.Folder);
        StikyType = stNone;
        StikyBranch = VendorTag;
        checkedOut = CheckOutWorkingDirectory(moved.Folder);
    } catch (...) {
        // A handler that raises does not mean the files to stay aside.
        raised = std::current_exception();
    }
    const bool complete = BringFilesBack(moved);
    // The last that the user heard of them is that they were moved aside.
    if (complete && !checkedOut)
        MessageProc("Your files are in directory(%s)", {moved.Folder});
    if (raised)
        std::rethrow_exception(raised);
    Load_WorkDirTree();
    return complete && checkedOut;
}

bool TCvsObject::CheckOutWorkingDirectory(const std::string& folder) {
    // Options of other check-outs, which would make another folder, a part of this one, or none.
    const TKept target(UseTargetDir), output(ToStandardOutput), local(LocalOnly);
    UseTargetDir = ToStandardOutput = LocalOnly = false;
    if (!CheckOut(false))
        return false;
    // The repository may have a folder of its own for a module of that name.
    if (GetIsVCSstored())
        return true;
    MessageProc("Directory(%s) is not made by the check-out of project %s", {folder, Modulename()});
    return false;
}

bool TCvsObject::BringFilesBack(const TMovedFolder& moved) {
    bool complete = true;
    // Told when all is done: who raises at one of them does not mean the other files to stay aside.
    std::vector<std::string> told;
    const auto leave = [&](const std::string& path, const std::string& reason) {
        told.push_back(framework::Format("File %s is not moved back: %s", {path, reason}));
        complete = false;
    };
    try {
        framework::TStringList fresh, kept, mine;
        MakeFolders(moved.Backup, moved.Folder);
        CreateCopyList(moved.Folder, fresh);
        CreateCopyList(moved.Backup, kept);
        for (const std::string& path : kept) {
            if (!IsAdminPath(path, moved.Backup))
                mine.Add(path);
            else if (framework::FindText(path, "\\CVS\\", moved.Backup.size()) == std::string::npos)
                // The user's own folder; only its name means another to the client.
                leave(path, "its folder has the name of the client's records");
        }
        MoveFileExt2(moved.Backup, moved.Folder, mine, fresh, !KeepProjectCopy, leave);
        if (complete && !KeepProjectCopy && !RemoveEmptyDirs(moved.Backup))
            told.push_back(framework::Format("Directory(%s) is kept, there are files left in it",
                                             {moved.Backup}));
    } catch (const framework::Exception& error) {
        told.emplace_back(error.what());
        complete = false;
    }
    if (!complete)
        told.push_back(framework::Format("Your files are in directory(%s)", {moved.Backup}));
    for (const std::string& text : told)
        MessageProc(text);
    return complete;
}

}  // namespace tandrel
