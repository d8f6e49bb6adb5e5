#pragma once

#include <windows.h>

#include <atomic>
#include <exception>
#include <functional>

#include "framework/api.h"
#include "framework/base/handle.h"
#include "framework/base/object.h"

namespace framework {

/// A thread with its body in Execute. It belongs to the thread that creates it, mostly the main
/// thread, which starts it, waits for it and frees it.
///
/// A class with a body of its own is final, calls Start as the last act of its constructor (unless
/// it is to start later) and WaitFor as the first of its destructor: the body must never see half
/// an object.
class FRAMEWORK_API TThread : public TObject {
public:
    /// The thread exists, but does not run before Start. Raises EOSError when there is none to
    /// have.
    TThread();
    /// The thread must have ended or never have been started.
    ~TThread() override;

    /// Lets the thread run; a second call does nothing.
    void Start();
    /// Returns when the thread has ended, at once when it never started. On the main thread it
    /// serves hand-overs and sent messages meanwhile, so a thread that hands something over cannot
    /// be waited for in vain.
    void WaitFor();
    /// Marks the thread as one that is to end. What the mark does is up to the body.
    void Terminate() { Terminated_ = true; }
    bool Terminated() const { return Terminated_; }
    /// Signalled when the thread has ended.
    HANDLE Handle() const { return Handle_.Get(); }
    /// What ended the body, if an exception did; valid after the end.
    std::exception_ptr FatalException() const { return FatalException_; }

    /// Called on the main thread as the thread's last act. It is looked at only then, and there, so
    /// it may still be assigned while the thread is already running.
    TNotifyEvent OnTerminate;

protected:
    /// The body; runs on the new thread. Exceptions end it and are kept.
    virtual void Execute() = 0;

private:
    static unsigned __stdcall ThreadProc(void* self);

    KernelHandle Handle_;
    std::exception_ptr FatalException_;
    std::atomic<bool> Terminated_{false};
    bool Started_ = false;
    bool Abandoned_ = false;  // let run only to be cleared away
};

}  // namespace framework
