#pragma once

#include <windows.h>

#include <atomic>
#include <string>

#include "framework/threads/thread.h"
#include "framework/ui/buttons.h"
#include "framework/ui/form.h"
#include "framework/ui/images.h"
#include "framework/ui/labels.h"

namespace tandrel {

class TCustomCvsObj;
class TCvsExecuteClass;

namespace Progress_frm {

/// Messages to the progress form. They are sent, never posted: the sender waits until the main
/// thread has handled them.
inline constexpr UINT WM_STARTPROGRESS =
    WM_USER + 256;  ///< wParam: address of the runner's Thread.
inline constexpr UINT WM_FINISHPROGRESS = WM_USER + 257;  ///< Never sent by the runner.
inline constexpr UINT WM_USERMESSAGE = WM_USER + 258;     ///< wParam: a zero-terminated line.
inline constexpr UINT WM_USERMESSAGE2 = WM_USER + 259;    ///< wParam: zero-terminated raw output.

/// The worker of one run: starts the child, hands its output to the main thread chunk by chunk,
/// answers its questions, and waits for its end.
class TProgressThread final : public framework::TThread {
public:
    /// Main thread. Takes what the run needs from the owner of `executeClass`, whose progress form
    /// has to be there. @param createSuspended wait for Start.
    TProgressThread(bool createSuspended, TCvsExecuteClass& executeClass);
    ~TProgressThread() override;

    TCvsExecuteClass& ExecuteClass;  ///< Who started it.
    /// Set by the form's Cancel button. It is the host's to act on.
    std::atomic<bool> CancelMark{false};

    /// The whole life of the child, on the worker's thread. Raises framework::Exception when the
    /// child cannot be started or has to be killed.
    void ExecuteCommand(const std::string& directory);
    /// Hands a line that is not empty over to the progress form, and waits until it was handled.
    void SendMsg(const std::string& text);
    /// Hands raw output over likewise.
    void SendMsg2(const char* chunk);

protected:
    void Execute() override;

private:
    struct TChild;

    TChild StartChild(const std::string& directory);
    /// Reads until the child closes its output or the run is aborted; true when it was aborted.
    bool ReadOutput(TChild& child);
    void AnswerPrompt(TChild& child, const char* output);
    void HandOver(const std::string& chunk);
    void AwaitEnd(TChild& child);

    TCustomCvsObj& Obj_;
    // What belongs to this run is taken on the main thread, before the worker starts: a handler of
    // the host may change the object while the worker runs.
    const std::string CommandLine_;
    const std::string Arguments_;
    const std::string Directory_;
    const HWND FormWindow_;
    const bool OffLine_;  // the command is to be kept, not run
};

/// The small window that tells that a command is running. It also is the place where the worker's
/// messages arrive, shown or not.
class TVcs_ProgressForm : public framework::TForm {
public:
    TVcs_ProgressForm();

    TProgressThread* Thread = nullptr;   ///< The run being shown, or none.
    TCustomCvsObj* VcsObject = nullptr;  ///< Whose messages are relayed.

    /// What the messages of the same names do. @param thread address of the runner's Thread.
    void WMStartProgress(WPARAM thread);
    void WMFinishProgress();
    void WMUserMessage(const char* text);
    void WMUserMessage2(const char* chunk);
    /// Marks the run as cancelled.
    void BitBtn2Click(framework::TObject* Sender);

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void BuildControls();

    framework::TAnimate* Animate1_ = nullptr;
    framework::TButton* BitBtn2_ = nullptr;
};

}  // namespace Progress_frm
}  // namespace tandrel
