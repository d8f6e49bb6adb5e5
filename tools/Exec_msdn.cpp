// The other way to run a child, by exchanging this process's own standard handles.

#include <array>
#include <utility>

#include "framework/base/child_pipes.h"
#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/lead_bytes.h"
#include "tools/Exec_threads.h"

namespace tandrel::Exec_obj {
namespace {

using framework::KernelHandle;

void Check(BOOL done, const char* message) {
    if (!done)
        throw framework::Exception(message);
}

void Close(KernelHandle& handle, const char* message) {
    Check(::CloseHandle(handle.Release()), message);
}

/// A standard handle of this process, to be put back.
class TSavedHandle {
public:
    explicit TSavedHandle(DWORD which) : Which_(which), Saved_(::GetStdHandle(which)) {}
    ~TSavedHandle() {
        if (Replaced_)
            ::SetStdHandle(Which_, Saved_);
    }
    TSavedHandle(const TSavedHandle&) = delete;
    TSavedHandle& operator=(const TSavedHandle&) = delete;

    bool Replace(HANDLE handle) { return Replaced_ = ::SetStdHandle(Which_, handle) != FALSE; }
    bool Restore() {
        Replaced_ = false;
        return ::SetStdHandle(Which_, Saved_) != FALSE;
    }

private:
    DWORD Which_;
    HANDLE Saved_;
    bool Replaced_ = false;
};

/// A pipe whose one end stands in for a standard handle; the other is ours and not inherited.
class TRedirection {
public:
    TRedirection(DWORD which, const char* failure) : Saved_(which) {
        framework::TPipe pipe = framework::MakePipe();
        Check(pipe.Read && pipe.Write, "Could not create pipe");
        const bool childReads = which == STD_INPUT_HANDLE;
        Childs = std::move(childReads ? pipe.Read : pipe.Write);
        KernelHandle inheritable = std::move(childReads ? pipe.Write : pipe.Read);
        Check(Saved_.Replace(Childs.Get()), failure);
        const HANDLE process = ::GetCurrentProcess();
        Check(::DuplicateHandle(process, inheritable.Get(), process, Ours.Receive(), 0, FALSE,
                                DUPLICATE_SAME_ACCESS),
              "DuplicateHandle failed");
    }

    void Restore(const char* failure) { Check(Saved_.Restore(), failure); }

    KernelHandle Childs, Ours;

private:
    TSavedHandle Saved_;  // put back before what stands in for it is closed
};

}  // namespace

void TProgressThread::ExecuteCmd_FromMSDN() {
    TRedirection output(STD_OUTPUT_HANDLE, "Redirecting STDOUT failed");
    TRedirection errors(STD_ERROR_HANDLE, "Redirecting STDOUT failed");
    TRedirection input(STD_INPUT_HANDLE, "Redirecting Stdin failed");
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    KernelHandle process;
    Check(CreateChild(startup, 0, process), "Could not create process ");
    // The end of these texts is a backslash and a letter, no line break.
    input.Restore("Re-redirecting Stdin failed\\n");
    output.Restore("Re-redirecting Stdout failed\\n");
    errors.Restore("Re-redirecting StdError failed\\n");
    Close(output.Childs, "Closing handle failed");
    Close(errors.Childs, "Closing handle failed");
    Close(input.Ours, "Closing handle failed");
    ReadToEnd(output.Ours.Get(), &TProgressThread::HandOverOutput);
    ReadToEnd(errors.Ours.Get(), &TProgressThread::HandOverErrors);
    Close(output.Ours, "Close pipe failed\\n");
    Close(errors.Ours, "Close pipe failed\\n");
    TakeExitCode(process.Get());
}

void TProgressThread::ReadToEnd(HANDLE pipe, void (TProgressThread::*handOver)(std::string_view)) {
    std::array<char, 1023> buffer;
    framework::TLetterPieces pieces;
    for (DWORD read = 0; framework::FileFunctions().Read(
             pipe, buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr);
         read = 0)
        (this->*handOver)(pieces.Next({buffer.data(), read}));
    (this->*handOver)(pieces.Rest());
}

}  // namespace tandrel::Exec_obj
