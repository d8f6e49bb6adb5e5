#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "framework/base/object.h"
#include "framework/ui/timer.h"

namespace tandrel {

class TCustomCvsObj;

namespace Progress_frm {
class TProgressThread;
class TVcs_ProgressForm;
}  // namespace Progress_frm

/// Reports the beginning or the end of a run; the sender is the TCvsExecuteClass.
using TOnExecuteEvent = framework::TNotifyEvent;

/// Runs one command line at a time for a version-control object: starts the worker thread, keeps
/// the host's windows disabled and its messages served until the worker has ended, and shows the
/// progress form when that takes longer than a second. Main thread only.
class TCvsExecuteClass : public framework::TObject {
public:
    /// @param cvsObj the owner; it must outlive this object.
    explicit TCvsExecuteClass(TCustomCvsObj& cvsObj);
    ~TCvsExecuteClass() override;

    /// Runs the owner's CvsExecutable followed by its CommandLine in the folder (the owner's
    /// process directory when empty) and returns when the run has ended. The outcome is in the
    /// owner's ExitCode and in its messages. A second call during a run is refused with a message.
    void Execute(const std::string& directory);
    /// Tells the user that the command is refused, and answers true, while another one runs.
    bool Refuses(const std::string& arguments);
    /// The worker has ended: the form is to go soon, and the host is told.
    void OnTerminate(framework::TObject* Sender);
    /// The form has not been used again: frees it.
    void OnStopTimer(framework::TObject* Sender);

    TCustomCvsObj& CvsObj;  ///< The owner.
    /// Frees the form when it has not been used again for its interval.
    framework::TTimer Timer;
    /// Belongs to the application object; none while no command runs or has just run.
    Progress_frm::TVcs_ProgressForm* ProgressForm = nullptr;
    /// The worker of the run that is going on, or none.
    std::unique_ptr<Progress_frm::TProgressThread> Thread;
    TOnExecuteEvent OnStartProgress;  ///< Never fired.
    TOnExecuteEvent OnEndProgress;    ///< The worker has ended.
    std::string Directory;            ///< As given to the last Execute.

private:
    void WaitForThread();
    void FreeForm();
};

}  // namespace tandrel
