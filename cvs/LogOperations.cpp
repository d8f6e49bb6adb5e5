// Operations on one file, and what is read out of the client's log.

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "cvs/Kept.h"
#include "cvs/LogParser.h"
#include "framework/base/system_time.h"

namespace tandrel {

bool TCvsObject::StatusFile(const std::string& FileName) {
    if (Refused(otStatus))
        return false;
    LocalOnly = true;
    StatusVerbose = true;
    return TCustomCvsObj::StatusFile(FileName);
}

bool TCvsObject::LogFile(const std::string& FileName) {
    if (Refused(otLog))
        return false;
    LocalOnly = true;
    return TCustomCvsObj::LogFile(FileName);
}

std::string TCvsObject::LogFileEx(const std::string& FileName) {
    if (Refused(otLog))
        return {};
    LogHeaderOnly = true;
    return TCustomCvsObj::LogFileEx(FileName);
}

std::string TCvsObject::DiffFileEx(const std::string& FileName) {
    if (Refused(otDiff))
        return {};
    DiffSpec.Kind = dctHead;
    return TCustomCvsObj::DiffFileEx(FileName);
}

bool TCvsObject::DiffFile(bool Interactive, const std::string& FileName) {
    if (Refused(otDiff))
        return false;
    const TFileItemsForCall cleared(FileItems);
    FileItems.AddFile(FileName, Km_none);
    LocalOnly = true;
    DiffSpec.Date1 = DiffSpec.Date2 = framework::Now();
    if (Interactive && !sh_Diff_Form(*this))
        return false;
    Fire(OnDiff);
    return TCustomCvsObj::DiffFile(Interactive, FileName);
}

bool TCvsObject::RunLog(bool headerOnly, TLogList& list,
                        bool (*parse)(std::string_view text, TLogList& list)) {
    if (Refused(otLog))
        return false;
    const TKept local(LocalOnly), header(LogHeaderOnly);
    const TKept operation(Operation);
    const TOutputCapture capture(*this);
    LocalOnly = true;
    LogHeaderOnly = headerOnly;
    const bool done = IsVCSStoredFlag ? Log() : RLog();
    list.Clear();
    if (!parse(capture.Text(), list))
        MessageProc("error parsing RFS log");
    return done;
}

bool TCvsObject::ParseLogInfo() {
    return RunLog(true, LogListA, ParseSymbolicNames);
}

std::string TCvsObject::Get_CVSProjectTag(TTagShowOption option, bool withFiles) {
    if (LogListA.Empty() && Refused(otLog))
        return {};
    const TFlagForCall noFiles(LogNoFiles, !withFiles);
    if (LogListA.Empty())
        ParseLogInfo();
    std::string name;
    Get_ProjectTag(*this, option, name);
    return name;
}

framework::TDateTime TCvsObject::Get_CVSFileRevDate() {
    if (LogListB.Empty() && Refused(otLog))
        return 0;
    if (LogListB.Empty())
        ParseLogInfoForRevDate();
    return Get_FileRevDate(*this);
}

bool TCvsObject::ParseLogInfoForRevDate() {
    return RunLog(false, LogListB, ParseRevisionDates);
}

}  // namespace tandrel
