#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "framework/base/format.h"
#include "framework/base/memory_stream.h"
#include "framework/base/object.h"
#include "framework/ui/timer.h"

namespace tandrel {

namespace Exec_obj {

class TProgressThread;

/// A text of a run, as it comes or as a message; the sender is the TExecuteClass.
using TOnExecuteEvent = std::function<void(framework::TObject* Sender, const std::string& Text)>;

/// The child may be asking. `WBuffer_Value` is the last answer and takes the next one; clearing
/// `FConfirmFlag` makes this question the last.
using TOnConfirmExecuteEvent = std::function<void(const std::string& ConfText,
                                                  std::string& WBuffer_Value, bool& FConfirmFlag)>;

}  // namespace Exec_obj

/// Runs one command line of a user tool at a time: in a console that waits for Enter, or on a
/// worker thread, which reads what the child writes when the standard handles are redirected.
///
/// Everything happens on the main thread, all events too. What a run needs is taken when it starts;
/// the members that the worker also looks at are atomic.
class TExecuteClass : public framework::TObject {
public:
    TExecuteClass();
    ~TExecuteClass() override;

    /// Runs the command line in the folder and returns when the run has ended; until then no posted
    /// message is served. A second call during a threaded run is refused with an error message.
    /// In console mode raises framework::Exception when the child cannot be started or its exit
    /// code not be read; in threaded mode the error event tells.
    void Execute(const std::string& dir, const std::string& cmdLine);
    /// Marks the worker as one that is to end, and tells. Neither the child nor the reading of its
    /// output is stopped by that.
    void CancelExecute();
    /// Tells an error: `fmt` as it is without arguments, else formatted with them, and a line
    /// break.
    void ErrorMessageProc(std::string_view fmt, framework::FormatArgs args = {});
    /// Hand on what the child wrote: at most 1024 characters, converted when FOemConvert is set.
    void OutPutMessage(const std::string& text);
    void OutPutErrorMessage(const std::string& text);
    /// Asks OnConfirm for the answer to what the child wrote.
    void ProcessConfirm(const std::string& confText, std::string& wbuffer);
    /// Waits for the worker, frees it and forgets it.
    void FreeAndNilThread();
    /// A run in a console, of what FCmdLine, FDir and FEnvironment say: what Execute does without
    /// FThreaded. Raises framework::Exception as Execute does.
    void ExecuteCommand();
    /// The worker's last act: starts Timer, marks the run as ended and calls OnFinish.
    void OnTerminate(framework::TObject* Sender);
    /// What Timer calls: stops it and calls OnStopTimer.
    void StopTimer(framework::TObject* Sender);

    framework::TObject* FData = nullptr;  ///< The caller's; it is not looked at.
    /// Takes every byte that the child writes, at its end, if there is one. The caller's, who frees
    /// it, and not before the run has ended.
    framework::TMemoryStream* FStream = nullptr;
    std::string FDir;      ///< As given to the last Execute.
    std::string FCmdLine;  ///< As given to the last Execute.
    /// The child's environment: texts NAME=VALUE, a zero behind each; empty for this process's own.
    std::string FEnvironment;
    DWORD FTimeout = 1000;                   ///< Milliseconds without an event until OnTimeout.
    std::atomic<std::int32_t> FExitCode{0};  ///< Of the last run; 1 until it has ended.
    /// While set, every piece of standard output is a question; each run clears it.
    std::atomic<bool> FConfirmFlag{false};
    framework::TTimer Timer;  ///< Runs when a threaded run has ended.
    /// The worker of the run that is going on, or none.
    std::unique_ptr<Exec_obj::TProgressThread> Thread;

    framework::TNotifyEvent OnStart;
    framework::TNotifyEvent OnFinish;
    framework::TNotifyEvent OnTimeout;
    framework::TNotifyEvent OnStopTimer;  ///< Half a second after the end of a threaded run.
    Exec_obj::TOnExecuteEvent OnOutPutMessage;
    Exec_obj::TOnExecuteEvent OnOutPutErrorMessage;
    Exec_obj::TOnConfirmExecuteEvent OnConfirm;

    bool FRedirect = false;    ///< Threaded runs: read what the child writes.
    bool FFinished = false;    ///< A run has ended.
    bool FThreaded = true;     ///< False: run in a console.
    bool FOemConvert = false;  ///< Output is in the code page of console programs.

private:
    class TThreadForRun;

    void RunInConsole(HANDLE input, HANDLE output);
    void WaitForThread();
    std::string EventText(const std::string& text) const;
};

}  // namespace tandrel
