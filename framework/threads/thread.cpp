#include "framework/threads/thread.h"

#include <process.h>

#include "framework/base/exceptions.h"
#include "framework/threads/synchronize.h"

namespace framework {

TThread::TThread() {
    BindMainThread();
    Handle_.Reset(reinterpret_cast<HANDLE>(
        ::_beginthreadex(nullptr, 0, ThreadProc, this, CREATE_SUSPENDED, nullptr)));
    if (!Handle_)
        RaiseLastOSError();
}

TThread::~TThread() {
    if (Started_)
        return;
    // A suspended thread would stay behind for ever: let it end without its body.
    Abandoned_ = true;
    Start();
    WaitFor();
}

void TThread::Start() {
    if (Started_)
        return;
    Started_ = true;
    ::ResumeThread(Handle_.Get());
}

void TThread::WaitFor() {
    if (!Started_)
        return;
    if (OnMainThread())
        WaitServingHandOvers(Handle_.Get());
    else
        ::WaitForSingleObject(Handle_.Get(), INFINITE);
}

unsigned __stdcall TThread::ThreadProc(void* self) {
    auto& thread = *static_cast<TThread*>(self);
    if (thread.Abandoned_)
        return 0;
    try {
        thread.Execute();
    } catch (...) {
        thread.FatalException_ = std::current_exception();
    }
    try {
        Synchronize([&thread] {
            if (thread.OnTerminate)
                thread.OnTerminate(&thread);
        });
    } catch (...) {
        if (!thread.FatalException_)
            thread.FatalException_ = std::current_exception();
    }
    return 0;
}

}  // namespace framework
