#include "tools/Exec_obj.h"

#include "framework/base/lead_bytes.h"
#include "framework/base/oem.h"
#include "framework/threads/synchronize.h"
#include "framework/ui/application.h"
#include "tools/Exec_threads.h"

namespace tandrel {
namespace {

constexpr unsigned StopDelay = 500;      // ms
constexpr std::size_t TextLimit = 1024;  // bytes of a text given to an event

}  // namespace

using Exec_obj::TProgressThread;

/// Frees the worker, also when the wait was left by an exception.
class TExecuteClass::TThreadForRun {
public:
    explicit TThreadForRun(TExecuteClass& runner) : Runner_(runner) {}
    ~TThreadForRun() { Runner_.FreeAndNilThread(); }
    TThreadForRun(const TThreadForRun&) = delete;
    TThreadForRun& operator=(const TThreadForRun&) = delete;

private:
    TExecuteClass& Runner_;
};

TExecuteClass::TExecuteClass() : Timer(StopDelay) {
    Timer.OnTimer = [this](TObject* sender) { StopTimer(sender); };
}

TExecuteClass::~TExecuteClass() = default;

void TExecuteClass::Execute(const std::string& dir, const std::string& cmdLine) {
    FExitCode = 1;
    FDir = dir;
    FCmdLine = cmdLine;
    FFinished = false;
    if (!FThreaded) {
        ExecuteCommand();
        return;
    }
    if (Thread) {
        ErrorMessageProc("Execute %s failed,reason execute already running ", {FCmdLine});
        return;
    }
    if (OnStart)
        OnStart(this);
    Timer.SetEnabled(false);
    Thread = std::make_unique<TProgressThread>(false, *this);
    const TThreadForRun freed(*this);
    Thread->OnTerminate = [this](TObject* sender) { OnTerminate(sender); };
    WaitForThread();
}

// A single wait: what still comes is served while the worker is being freed.
void TExecuteClass::WaitForThread() {
    if (framework::WaitOnceServingHandOvers(Thread->Handle(), FTimeout) ==
            framework::TWaitEnd::TimedOut &&
        OnTimeout)
        OnTimeout(this);
}

void TExecuteClass::FreeAndNilThread() {
    if (!Thread)
        return;
    // As long as the worker runs it is the one that a second run is refused for.
    Thread->WaitFor();
    Thread.reset();
}

void TExecuteClass::OnTerminate(TObject*) {
    try {
        Timer.SetEnabled(false);
        Timer.SetEnabled(true);
        FFinished = true;
        if (OnFinish)
            OnFinish(this);
    } catch (...) {
        // The worker is the one who called; it must not be told of an error in a handler.
        framework::Application().HandleException();
    }
}

void TExecuteClass::StopTimer(TObject*) {
    Timer.SetEnabled(false);
    if (OnStopTimer)
        OnStopTimer(this);
}

void TExecuteClass::CancelExecute() {
    if (Thread)
        Thread->Terminate();
    ErrorMessageProc("User cancel execute command  %s  ", {FCmdLine});
}

void TExecuteClass::ErrorMessageProc(std::string_view fmt, framework::FormatArgs args) {
    if (!OnOutPutErrorMessage)
        return;
    const std::string text = args.size() == 0 ? std::string(fmt) : framework::Format(fmt, args);
    OnOutPutErrorMessage(this, text + "\r\n");
}

std::string TExecuteClass::EventText(const std::string& text) const {
    // What is short enough stays as it is, also when it ends in half a letter.
    std::string cut(text.size() > TextLimit ? framework::WholeLetters(text, TextLimit) : text);
    return FOemConvert ? framework::FromOem(std::move(cut)) : cut;
}

void TExecuteClass::OutPutMessage(const std::string& text) {
    if (OnOutPutMessage)
        OnOutPutMessage(this, EventText(text));
}

void TExecuteClass::OutPutErrorMessage(const std::string& text) {
    if (OnOutPutErrorMessage)
        OnOutPutErrorMessage(this, EventText(text));
}

void TExecuteClass::ProcessConfirm(const std::string& confText, std::string& wbuffer) {
    if (!OnConfirm)
        return;
    const bool before = FConfirmFlag;
    bool flag = before;
    OnConfirm(confText, wbuffer, flag);
    // The handler may also have changed the member itself.
    if (flag != before)
        FConfirmFlag = flag;
}

}  // namespace tandrel
