#include "core/CvsExecute.h"

#include "core/Customvcs.h"
#include "core/Cvs_files.h"
#include "core/Progress_frm.h"
#include "framework/base/exceptions.h"
#include "framework/ui/application.h"
#include "framework/ui/task_windows.h"

namespace tandrel {
namespace {

constexpr unsigned FormReleaseDelay = 500;  // ms
constexpr DWORD QuietTime = 1000;           // ms without input until the form shows

/// Waits for the worker, frees it and forgets it, also when the wait was left by an exception.
class TThreadForRun {
public:
    explicit TThreadForRun(TCvsExecuteClass& runner) : Runner_(runner) {}
    ~TThreadForRun() {
        Runner_.Thread->WaitFor();
        if (Runner_.ProgressForm)
            Runner_.ProgressForm->Thread = nullptr;
        Runner_.Thread.reset();
    }
    TThreadForRun(const TThreadForRun&) = delete;
    TThreadForRun& operator=(const TThreadForRun&) = delete;

private:
    TCvsExecuteClass& Runner_;
};

}  // namespace

using Progress_frm::TProgressThread;
using Progress_frm::TVcs_ProgressForm;

TCvsExecuteClass::TCvsExecuteClass(TCustomCvsObj& cvsObj)
    : CvsObj(cvsObj), Timer(FormReleaseDelay) {
    Timer.OnTimer = [this](TObject* sender) { OnStopTimer(sender); };
}

TCvsExecuteClass::~TCvsExecuteClass() {
    FreeForm();
}

void TCvsExecuteClass::Execute(const std::string& directory) {
    Directory = directory;
    if (Refuses(CvsObj.CommandLine))
        return;
    if (!ProgressForm)
        ProgressForm = &framework::Application().CreateForm<TVcs_ProgressForm>();
    ProgressForm->VcsObject = &CvsObj;
    // A form that is waiting to be freed is used again.
    Timer.SetEnabled(false);
    CvsObj.ExitCode = 1;
    Thread = std::make_unique<TProgressThread>(false, *this);
    const TThreadForRun freed(*this);
    Thread->OnTerminate = [this](TObject* sender) { OnTerminate(sender); };
    const framework::TTaskWindowsDisabled disabled;
    WaitForThread();
}

bool TCvsExecuteClass::Refuses(const std::string& arguments) {
    if (!Thread)
        return false;
    CvsObj.MessageProc("Cvs execute %s failed,reason execute already running ", {arguments});
    return true;
}

void TCvsExecuteClass::WaitForThread() {
    const HANDLE thread = Thread->Handle();
    if (IsDebuggerPresent()) {
        ::WaitForSingleObject(thread, QuietTime);
        return;
    }
    for (;;) {
        switch (::MsgWaitForMultipleObjects(1, &thread, FALSE, QuietTime, QS_ALLINPUT)) {
            case WAIT_OBJECT_0:
                return;
            case WAIT_OBJECT_0 + 1:
                framework::Application().ProcessMessages();
                break;
            case WAIT_TIMEOUT:
                if (!ProgressForm)
                    framework::RaiseLastOSError();
                ::SendMessageW(ProgressForm->Handle(), Progress_frm::WM_STARTPROGRESS,
                               reinterpret_cast<WPARAM>(&Thread), 0);
                break;
            default:
                break;
        }
    }
}

void TCvsExecuteClass::OnTerminate(framework::TObject*) {
    Timer.SetEnabled(false);
    Timer.SetEnabled(true);
    try {
        if (OnEndProgress)
            OnEndProgress(this);
    } catch (...) {
        // The worker is the one who called; it must not be told of an error in a handler.
        framework::Application().HandleException();
    }
}

void TCvsExecuteClass::OnStopTimer(framework::TObject*) {
    Timer.SetEnabled(false);
    FreeForm();
}

void TCvsExecuteClass::FreeForm() {
    if (ProgressForm)
        std::exchange(ProgressForm, nullptr)->Free();
}

}  // namespace tandrel
