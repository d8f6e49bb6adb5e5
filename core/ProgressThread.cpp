// The worker thread of a run. Only what is said to hand over touches the main thread's things.

#include <windows.h>

#include <array>
#include <utility>

#include "core/Customvcs.h"
#include "core/CvsExecute.h"
#include "core/Progress_frm.h"
#include "framework/base/child_pipes.h"
#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/format.h"
#include "framework/base/handle.h"
#include "framework/base/lead_bytes.h"
#include "framework/threads/synchronize.h"

namespace tandrel::Progress_frm {
namespace {

constexpr DWORD ChunkSize = 1023;      // bytes of output handed over at a time
constexpr DWORD GraceTime = 1000;      // ms for the child to end after its output
constexpr DWORD TimeAfterKill = 3000;  // ms until the run counts as over

}  // namespace

struct TProgressThread::TChild {
    framework::KernelHandle Process;
    framework::KernelHandle Output;  // what the child writes
    framework::TAnswerPipe Answers;  // what the child reads
};

TProgressThread::TProgressThread(bool createSuspended, TCvsExecuteClass& executeClass)
    : ExecuteClass(executeClass),
      Obj_(executeClass.CvsObj),
      CommandLine_(Obj_.CvsExecutable + Obj_.CommandLine),
      Arguments_(Obj_.CommandLine),
      Directory_(executeClass.Directory.empty() ? Obj_.Get_CurrentProcDirectory()
                                                : executeClass.Directory),
      FormWindow_(executeClass.ProgressForm->Handle()),
      OffLine_(!Obj_.ServerOnline() && Obj_.ConnectionType != cnLocal) {
    if (!createSuspended)
        Start();
}

TProgressThread::~TProgressThread() {
    WaitFor();
}

void TProgressThread::Execute() {
    ExecuteCommand(Directory_);
}

void TProgressThread::SendMsg(const std::string& text) {
    if (!text.empty())
        ::SendMessageW(FormWindow_, WM_USERMESSAGE, reinterpret_cast<WPARAM>(text.c_str()), 0);
}

void TProgressThread::SendMsg2(const char* chunk) {
    ::SendMessageW(FormWindow_, WM_USERMESSAGE2, reinterpret_cast<WPARAM>(chunk), 0);
}

void TProgressThread::ExecuteCommand(const std::string& directory) {
    // For this run only, whether it comes to asking or not.
    const struct TOneShot {
        std::atomic<bool>& Flag;
        ~TOneShot() { Flag = false; }
    } answers{Obj_.AnswerPrompts};
    if (OffLine_) {
        SendMsg("server is offline ");
        framework::Synchronize([this] { Obj_.SaveCommandLog(); });
        return;
    }
    Obj_.Aborted = false;
    TChild child = StartChild(directory);
    if (ReadOutput(child))
        SendMsg(framework::Format("User cancel execute command  %s  ", {Arguments_}));
    child.Output.Reset();
    child.Answers = {};
    Obj_.AnswerPrompts = false;
    AwaitEnd(child);
}

TProgressThread::TChild TProgressThread::StartChild(const std::string& directory) {
    // Without a pipe the run goes on: the child then simply has nothing to read or write.
    framework::TPipe output = framework::MakePipe();
    framework::TPipe input = framework::MakePipe();
    framework::TAnswerPipe answers(std::move(input.Write));
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = input.Read.Get();
    // One pipe for both, so that errors stand where they were written among the output.
    startup.hStdOutput = output.Write.Get();
    startup.hStdError = output.Write.Get();
    PROCESS_INFORMATION information{};
    std::string commandLine = CommandLine_;  // the system may write to it
    if (!::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NEW_CONSOLE,
                          nullptr, directory.c_str(), &startup, &information)) {
        const DWORD reason = ::GetLastError();
        SendMsg("Could not create process ");
        SendMsg(framework::SysErrorMessage(reason));
        throw framework::Exception("Could not create process");
    }
    const framework::KernelHandle mainThread(information.hThread);
    // The child's ends close here, or the end of its output would never be seen.
    return {framework::KernelHandle(information.hProcess), std::move(output.Read),
            std::move(answers)};
}

bool TProgressThread::ReadOutput(TChild& child) {
    std::array<char, ChunkSize> buffer;
    framework::TLetterPieces pieces;
    try {
        for (;;) {
            child.Answers.EndWhenTaken(child.Output.Get(), child.Process.Get(),
                                       [this] { return Obj_.Aborted.load(); });
            // Only now: a child that does not take its answer may never write again either.
            if (Obj_.Aborted)
                return true;
            DWORD read = 0;
            if (!framework::FileFunctions().Read(child.Output.Get(), buffer.data(), ChunkSize,
                                                 &read, nullptr)) {
                HandOver(pieces.Rest());
                return false;
            }
            // A write of nothing is read, too, and is not the end. Of a letter there may be half.
            const std::string chunk = pieces.Next({buffer.data(), read});
            if (chunk.empty())
                continue;
            if (Obj_.AnswerPrompts)
                AnswerPrompt(child, chunk.c_str());
            HandOver(chunk);
        }
    } catch (...) {
        // Whatever went wrong with a chunk, the child must still be seen to its end.
        return false;
    }
}

void TProgressThread::HandOver(const std::string& chunk) {
    if (!chunk.empty() && (!Obj_.SuppressOutput || !Obj_.OutputList) && Obj_.OnMessage)
        SendMsg2(chunk.c_str());
}

void TProgressThread::AnswerPrompt(TChild& child, const char* output) {
    std::string text;
    framework::Synchronize([&] { Obj_.ProcessConfirm(output, text); });
    child.Answers.Answer(text);
}

void TProgressThread::AwaitEnd(TChild& child) {
    if (::WaitForSingleObject(child.Process.Get(), GraceTime) != WAIT_OBJECT_0) {
        const bool terminated = ::TerminateProcess(child.Process.Get(), 1) != FALSE;
        child.Process.Reset();
        if (!terminated)
            throw framework::Exception("Process terminated with failure");
        ::Sleep(TimeAfterKill);
        throw framework::Exception("Process TIMEOUT occured, process terminated");
    }
    DWORD exitCode = 0;
    if (!::GetExitCodeProcess(child.Process.Get(), &exitCode))
        throw framework::Exception("Could not get process exit code");
    Obj_.ExitCode = static_cast<std::int32_t>(exitCode);
    Obj_.Aborted = false;
    SendMsg(framework::Format(
        "%s  with Exitcode %d",
        {exitCode != 0 ? " CVS command execute" : " CVS command execute successful",
         static_cast<std::int32_t>(exitCode)}));
}

}  // namespace tandrel::Progress_frm
