#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <string_view>

#include "framework/base/handle.h"
#include "framework/threads/thread.h"

namespace tandrel {

class TExecuteClass;

namespace Exec_obj {

class TErrorReadThread;

/// The worker of one threaded run of a tool. It touches the runner's events and stream only in
/// hand-overs to the main thread.
class TProgressThread final : public framework::TThread {
public:
    /// Takes what the run needs from the runner, which must outlive it.
    TProgressThread(bool createSuspended, TExecuteClass& executeClass);
    ~TProgressThread() override;

    /// The run. Raises framework::Exception when the child cannot be started, stays or its exit
    /// code cannot be read. Not on the main thread.
    void ExecuteCmd();
    /// The run in another way, which no runner uses: this process's own standard handles are
    /// exchanged while the child starts, and its standard output is read to the end before its
    /// standard error, so that much of the latter stops both. Raises framework::Exception for all
    /// that fails. Runs on the calling thread.
    void ExecuteCmd_FromMSDN();

    TExecuteClass& ExecuteClass;
    std::string WBuffer;   ///< The answer to the last question.
    std::string ConfText;  ///< The question.
    std::string Msg;       ///< The last piece of standard output.
    std::string ErrMsg;    ///< The last error.

    // What the worker hands over. Main thread.
    void AMessageProc();       ///< Tells the runner Msg.
    void AErrorMessageProc();  ///< Tells the runner ErrMsg.
    void AProcessConfirm();    ///< Asks the runner ConfText; the answer is in WBuffer.

protected:
    void Execute() override;

private:
    struct TChild;

    TChild StartChild();
    bool CreateChild(STARTUPINFOA& startup, DWORD flags, framework::KernelHandle& process);
    void ReadChild(TChild& child);
    void ReadOutput(TChild& child);
    void AwaitQuiet(TChild& child, TErrorReadThread& errors);
    void Kill(TChild& child);
    void AwaitEnd(TChild& child);
    void TakeExitCode(HANDLE process);
    void HandOverOutput(std::string_view chunk);
    void HandOverErrors(std::string_view chunk);
    void ReadToEnd(HANDLE pipe, void (TProgressThread::*handOver)(std::string_view));
    void TellError(const std::string& message);

    std::string CmdLine_, Dir_, Environment_;
    bool Redirect_;
};

/// Reads a child's standard error while the worker reads its standard output.
class TErrorReadThread final : public framework::TThread {
public:
    /// @param read the end of the pipe that is read; it is closed when reading ends, so that the
    /// child never waits for somebody to read on. @param echo also written to, if there is one;
    /// stays the caller's.
    TErrorReadThread(framework::KernelHandle read, TExecuteClass& executeClass,
                     HANDLE echo = nullptr);
    ~TErrorReadThread() override;

    /// For how many milliseconds nothing has come; 0 while a piece is being handed over. Any
    /// thread.
    ULONGLONG QuietTime() const;
    /// Ends the reading wherever it is, and waits for that.
    void Stop();

    std::string ErrMsg;  ///< The last piece.
    /// Tells the runner ErrMsg. Main thread.
    void AErrorMessageProc();

protected:
    void Execute() override;

private:
    void ReadErrors();
    void HandOver(std::string chunk);

    static constexpr ULONGLONG HandingOver = 0;
    std::atomic<ULONGLONG> QuietSince_{::GetTickCount64()};
    framework::KernelHandle Read_;
    TExecuteClass& ExecuteClass_;
    HANDLE EchoHandle_;
    bool Echo_;
};

}  // namespace Exec_obj
}  // namespace tandrel
