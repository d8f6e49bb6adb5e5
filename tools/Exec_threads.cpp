// The threads of a threaded run. Only what is handed over touches the main thread's things.

#include "tools/Exec_threads.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "framework/base/child_pipes.h"
#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/lead_bytes.h"
#include "framework/threads/synchronize.h"
#include "tools/Exec_obj.h"

namespace tandrel::Exec_obj {
namespace {

constexpr DWORD ChunkSize = 1023;      // bytes of output handed over at a time
constexpr DWORD GraceTime = 1000;      // ms for the child to end after its output
constexpr DWORD TimeAfterKill = 3000;  // ms until the kill is told

/// Only the child's end of a pipe is for children: whoever held ours would keep the pipe open.
framework::KernelHandle Keep(framework::KernelHandle& end) {
    ::SetHandleInformation(end.Get(), HANDLE_FLAG_INHERIT, 0);
    return std::move(end);
}

/// Main thread.
void KeepBytes(TExecuteClass& runner, std::string_view bytes) {
    if (!runner.FStream)
        return;
    runner.FStream->SetPosition(runner.FStream->Size());
    runner.FStream->Write(bytes);
}

}  // namespace

struct TProgressThread::TChild {
    framework::KernelHandle Process;
    framework::KernelHandle Output, Errors;  // what the child writes
    framework::TAnswerPipe Answers;          // what the child reads
    std::optional<bool> Killed;              // whether that went well, when it was tried
};

TProgressThread::TProgressThread(bool createSuspended, TExecuteClass& executeClass)
    : ExecuteClass(executeClass),
      CmdLine_(executeClass.FCmdLine),
      Dir_(executeClass.FDir),
      Environment_(executeClass.FEnvironment),
      Redirect_(executeClass.FRedirect) {
    if (!createSuspended)
        Start();
}

TProgressThread::~TProgressThread() {
    WaitFor();
}

void TProgressThread::Execute() {
    ExecuteCmd();
}

void TProgressThread::ExecuteCmd() {
    TChild child = StartChild();
    if (Redirect_)
        ReadChild(child);
    ExecuteClass.FConfirmFlag = false;
    if (Redirect_)
        AwaitEnd(child);
    TakeExitCode(child.Process.Get());
}

bool TProgressThread::CreateChild(STARTUPINFOA& startup, DWORD flags,
                                  framework::KernelHandle& process) {
    PROCESS_INFORMATION information{};
    std::string commandLine = CmdLine_;  // the system may write to it
    if (!::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, flags,
                          Environment_.empty() ? nullptr : Environment_.data(), Dir_.c_str(),
                          &startup, &information))
        return false;
    const framework::KernelHandle mainThread(information.hThread);
    process.Reset(information.hProcess);
    return true;
}

TProgressThread::TChild TProgressThread::StartChild() {
    TChild child;
    // The child's ends close here, or the end of its output would never be seen.
    framework::TPipe output, errors, input;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    DWORD flags = 0;
    if (Redirect_) {
        flags = CREATE_NEW_CONSOLE;
        // Without a pipe the run goes on: the child then simply has nothing to read or write.
        output = framework::MakePipe();
        errors = framework::MakePipe();
        input = framework::MakePipe();
        child.Output = Keep(output.Read);
        child.Errors = Keep(errors.Read);
        startup.dwFlags |= STARTF_USESTDHANDLES;
        startup.wShowWindow = SW_HIDE;
        startup.hStdOutput = output.Write.Get();
        startup.hStdError = errors.Write.Get();
        startup.hStdInput = input.Read.Get();
        child.Answers = framework::TAnswerPipe(Keep(input.Write));
    }
    if (!CreateChild(startup, flags, child.Process)) {
        const DWORD reason = ::GetLastError();
        TellError("Could not create process ");
        TellError(framework::SysErrorMessage(reason) + "\r\n");
        throw framework::Exception("Could not create process ");
    }
    return child;
}

void TProgressThread::ReadChild(TChild& child) {
    // Its end is waited for when the block is left.
    TErrorReadThread errors(std::move(child.Errors), ExecuteClass);
    ReadOutput(child);
    // Before that wait: a child that is no longer read or answered must find that out, and not wait
    // itself for somebody to read on or to answer.
    child.Output.Reset();
    child.Answers = {};
    AwaitQuiet(child, errors);
}

void TProgressThread::AwaitQuiet(TChild& child, TErrorReadThread& errors) {
    const ULONGLONG start = ::GetTickCount64();
    const HANDLE ends[] = {child.Process.Get(), errors.Handle()};
    for (;;) {
        const ULONGLONG quiet = std::min(errors.QuietTime(), ::GetTickCount64() - start);
        if (quiet >= GraceTime)
            break;
        const auto left = GraceTime - static_cast<DWORD>(quiet);
        if (::WaitForMultipleObjects(2, ends, FALSE, left) != WAIT_TIMEOUT)
            return;
    }
    Kill(child);
    // What it wrote is read to its end, but others may hold the pipe.
    if (::WaitForSingleObject(errors.Handle(), GraceTime) != WAIT_OBJECT_0)
        errors.Stop();
}

void TProgressThread::ReadOutput(TChild& child) {
    std::array<char, ChunkSize> buffer;
    framework::TLetterPieces pieces;
    try {
        for (DWORD read = 0;; read = 0) {
            child.Answers.EndWhenTaken(child.Output.Get(), child.Process.Get(),
                                       [] { return false; });
            if (!framework::FileFunctions().Read(child.Output.Get(), buffer.data(), ChunkSize,
                                                 &read, nullptr)) {
                HandOverOutput(pieces.Rest());
                return;
            }
            // A write of nothing is read, too, and is not the end. Of a letter there may be half.
            const std::string chunk = pieces.Next({buffer.data(), read});
            if (!ExecuteClass.FConfirmFlag || chunk.empty()) {
                HandOverOutput(chunk);
                continue;
            }
            framework::Synchronize([&] {
                KeepBytes(ExecuteClass, chunk);
                ConfText = chunk;
                AProcessConfirm();
            });
            child.Answers.Answer(WBuffer);
            Msg = chunk;
            framework::Synchronize([this] { AMessageProc(); });
        }
    } catch (...) {
        // Whatever went wrong with a chunk, the child must still be seen to its end.
    }
}

void TProgressThread::HandOverOutput(std::string_view chunk) {
    if (chunk.empty())
        return;
    Msg = chunk;
    framework::Synchronize([this] {
        KeepBytes(ExecuteClass, Msg);
        AMessageProc();
    });
}

void TProgressThread::HandOverErrors(std::string_view chunk) {
    if (chunk.empty())
        return;
    ErrMsg = chunk;
    framework::Synchronize([this] {
        KeepBytes(ExecuteClass, ErrMsg);
        AErrorMessageProc();
    });
}

void TProgressThread::Kill(TChild& child) {
    child.Killed = ::TerminateProcess(child.Process.Get(), 1) != FALSE;
}

void TProgressThread::AwaitEnd(TChild& child) {
    if (!child.Killed) {
        if (::WaitForSingleObject(child.Process.Get(), GraceTime) == WAIT_OBJECT_0)
            return;
        Kill(child);
    }
    child.Process.Reset();
    if (!*child.Killed)
        throw framework::Exception("Process terminated with failure");
    ::Sleep(TimeAfterKill);
    TellError("Process TIMEOUT occured, process terminated");
    throw framework::Exception(ErrMsg);
}

void TProgressThread::TakeExitCode(HANDLE process) {
    DWORD exitCode = 0;
    if (!::GetExitCodeProcess(process, &exitCode))
        throw framework::Exception("Could not get process exit code");
    ExecuteClass.FExitCode = static_cast<std::int32_t>(exitCode);
}

void TProgressThread::TellError(const std::string& message) {
    ErrMsg = message;
    framework::Synchronize([this] { AErrorMessageProc(); });
}

void TProgressThread::AMessageProc() {
    ExecuteClass.OutPutMessage(Msg);
}

void TProgressThread::AErrorMessageProc() {
    ExecuteClass.OutPutErrorMessage(ErrMsg);
}

void TProgressThread::AProcessConfirm() {
    ExecuteClass.ProcessConfirm(ConfText, WBuffer);
}

TErrorReadThread::TErrorReadThread(framework::KernelHandle read, TExecuteClass& executeClass,
                                   HANDLE echo)
    : Read_(std::move(read)),
      ExecuteClass_(executeClass),
      EchoHandle_(echo),
      Echo_(echo != nullptr) {
    Start();
}

TErrorReadThread::~TErrorReadThread() {
    WaitFor();
}

void TErrorReadThread::Execute() {
    try {
        ReadErrors();
    } catch (...) {
        // What a handler could not bear ends the reading, not the run.
    }
    Read_.Reset();
}

ULONGLONG TErrorReadThread::QuietTime() const {
    const ULONGLONG since = QuietSince_;
    return since == HandingOver ? 0 : ::GetTickCount64() - since;
}

void TErrorReadThread::Stop() {
    constexpr DWORD Interval = 10;  // ms
    Terminate();
    // It may be just before its next read.
    do
        ::CancelSynchronousIo(Handle());
    while (::WaitForSingleObject(Handle(), Interval) == WAIT_TIMEOUT);
}

void TErrorReadThread::ReadErrors() {
    std::array<char, ChunkSize> buffer;
    framework::TLetterPieces pieces;
    for (DWORD read = 0;
         !Terminated() && ::ReadFile(Read_.Get(), buffer.data(), ChunkSize, &read, nullptr) &&
         read > 0;
         read = 0, QuietSince_ = ::GetTickCount64()) {
        QuietSince_ = HandingOver;
        HandOver(pieces.Next({buffer.data(), read}));
        DWORD written = 0;
        if (Echo_ && !::WriteFile(EchoHandle_, buffer.data(), read, &written, nullptr))
            return;
    }
    HandOver(pieces.Rest());
}

void TErrorReadThread::HandOver(std::string chunk) {
    if (chunk.empty())
        return;
    ErrMsg = std::move(chunk);
    framework::Synchronize([this] {
        KeepBytes(ExecuteClass_, ErrMsg);
        AErrorMessageProc();
    });
}

void TErrorReadThread::AErrorMessageProc() {
    ExecuteClass_.OutPutErrorMessage(ErrMsg);
}

}  // namespace tandrel::Exec_obj
