// Operations on one file, and what is read out of the client's log.

#include "cvs/Cvstempl.h"
#include "cvs/LogParser.h"
#include "framework/base/system_time.h"

namespace tandrel {
namespace {

/// Puts a value back when the call is over.
template <class T>
class TKept {
public:
    explicit TKept(T& value) : Value_(value), Before_(value) {}
    ~TKept() { Value_ = Before_; }
    TKept(const TKept&) = delete;
    TKept& operator=(const TKept&) = delete;

private:
    T& Value_;
    const T Before_;
};

}  // namespace

bool TCvsObject::StatusFile(const std::string& FileName) {
    LocalOnly = true;
    StatusVerbose = true;
    return TCustomCvsObj::StatusFile(FileName);
}

bool TCvsObject::LogFile(const std::string& FileName) {
    LocalOnly = true;
    return TCustomCvsObj::LogFile(FileName);
}

std::string TCvsObject::LogFileEx(const std::string& FileName) {
    LogHeaderOnly = true;
    return TCustomCvsObj::LogFileEx(FileName);
}

std::string TCvsObject::DiffFileEx(const std::string& FileName) {
    DiffSpec.Kind = dctHead;
    return TCustomCvsObj::DiffFileEx(FileName);
}

bool TCvsObject::DiffFile(bool Interactive, const std::string& FileName) {
    if (Interactive) return NoDialog();
    const TFileItemsForCall cleared(FileItems);
    FileItems.AddFile(FileName, Km_none);
    LocalOnly = true;
    DiffSpec.Date1 = DiffSpec.Date2 = framework::Now();
    if (OnDiff) OnDiff(*this);
    return TCustomCvsObj::DiffFile(Interactive, FileName);
}

bool TCvsObject::RunLog(bool headerOnly, TLogList& list,
                        bool (*parse)(std::string_view text, TLogList& list)) {
    const TKept local(LocalOnly), header(LogHeaderOnly);
    const TKept operation(Operation);
    const TOutputCapture capture(*this);
    LocalOnly = true;
    LogHeaderOnly = headerOnly;
    const bool done = IsVCSStoredFlag ? Log() : RLog();
    list.Clear();
    if (!parse(capture.Text(), list)) MessageProc("error parsing RFS log");
    return done;
}

bool TCvsObject::ParseLogInfo() { return RunLog(true, LogListA, ParseSymbolicNames); }

bool TCvsObject::ParseLogInfoForRevDate() { return RunLog(false, LogListB, ParseRevisionDates); }

}  // namespace tandrel
