// Operations on one file, in terms of the operations on FileItems.

#include "core/Customvcs.h"
#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/files.h"

namespace tandrel {

bool TCustomCvsObj::WithFile(const std::string& FileName, TOperationType Kind,
                             bool (TCustomCvsObj::*Operate)()) {
    if (Refused(Kind))
        return false;
    const TFileItemsForCall cleared(FileItems);
    FileItems.AddFile(FileName, Km_none);
    return (this->*Operate)();
}

bool TCustomCvsObj::DeleteListedFiles(bool OnlyExisting) {
    std::string files;
    for (const TFileItem& item : FileItems) {
        if (item.FileType != fi_file)
            continue;
        const std::string path = SlashSep(item.Directory, item.Name);
        if (OnlyExisting && !framework::FileExists(path))
            continue;
        if (!files.empty())
            files += '\0';
        files += path;
    }
    ModelCurrent = false;
    return RevoveFilesExt(files);
}

bool TCustomCvsObj::DeleteFileListsFiles() {
    return DeleteListedFiles(false);
}

bool TCustomCvsObj::AddFile(const std::string& FileName) {
    return WithFile(FileName, otAdd, &TCustomCvsObj::Add);
}

bool TCustomCvsObj::StatusFile(const std::string& FileName) {
    return WithFile(FileName, otStatus, &TCustomCvsObj::Status);
}

bool TCustomCvsObj::LogFile(const std::string& FileName) {
    return WithFile(FileName, otLog, &TCustomCvsObj::Log);
}

bool TCustomCvsObj::DiffFile(bool, const std::string&) {
    return !Refused(otDiff) && Diff();
}

bool TCustomCvsObj::RemoveFile(const std::string& FileName, bool DeleteLocal) {
    if (Refused(otRemove))
        return false;
    DeleteLocalFiles = DeleteLocal;
    FileItems.AddFile(FileName, Km_none);
    if (DeleteLocalFiles && !DeleteFileListsFiles()) {
        // The list stays: the caller can see what was to be deleted, and try again.
        MessageProc("file %s not deleted", {FileName});
        return false;
    }
    const TFileItemsForCall cleared(FileItems);
    return Remove();
}

bool TCustomCvsObj::MoveFile(const std::string& Src, const std::string& Dst, bool OsMove) {
    if (Refused(otRemove))
        return false;
    Set_OsMoveFilesFlag(OsMove);
    ModelCurrent = false;
    if (OsMove && framework::FileExists(Src)) {
        if (!MoveFileExt(Src, Dst, true)) {
            MessageProc("file %s not moved to %s", {Src, Dst});
            return false;
        }
    } else if (OsMove || !framework::FileExists(Dst)) {
        MessageProc("file %s is not Exists", {Dst});
        return false;
    }
    return WithFile(Src, otRemove, &TCustomCvsObj::Remove) &&
           WithFile(Dst, otAdd, &TCustomCvsObj::Add);
}

std::string TCustomCvsObj::StatusFileEx(const std::string& FileName) {
    const TOutputCapture capture(*this);
    StatusFile(FileName);
    return capture.Text();
}

std::string TCustomCvsObj::DiffFileEx(const std::string& FileName) {
    const TOutputCapture capture(*this);
    DiffFile(false, FileName);
    return capture.Text();
}

std::string TCustomCvsObj::LogFileEx(const std::string& FileName) {
    const TOutputCapture capture(*this);
    LogFile(FileName);
    return capture.Text();
}

}  // namespace tandrel
