// The processes of commands, and the host's own: how they end.

#include "core/CvsExecute.h"
#include "core/Progress_frm.h"
#include "framework/ui/timer.h"
#include "hosting/ChildJob.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Started.h"

namespace {

using namespace tests;

TEST_F(Projects, SurviveAClientThatCrashes) {
    TProject project(Host, Settings, Folder / "one");
    EXPECT_FALSE(Run(project, "crash"));
    EXPECT_TRUE(Run(project, "exit 0")) << "and go on";
}

TEST_F(Projects, ShowACommandThatTakesLongAndLetTheUserCancelIt) {
    TProject project(Host, Settings, Folder / "one");
    TCvsObject& cvs = project.Cvs();
    bool shown = false;
    cvs.OnMessage = [&, host = cvs.OnMessage](TObject* sender, const std::string& text) {
        host(sender, text);
        tandrel::Progress_frm::TVcs_ProgressForm& form = *cvs.ExecuteClass->ProgressForm;
        if (shown || !form.Visible())
            return;
        shown = true;
        Click(form, "BitBtn2");
    };
    // Each pause is longer than the second after which the form shows.
    EXPECT_FALSE(Run(project, "say-and-sleep . 1500 20"));
    EXPECT_TRUE(shown);
    ExpectTold("User cancel execute command");
}

TEST_F(Projects, EndACommandThatSaysNothingWhenTheUserCancelsIt) {
    TProject project(Host, Settings, Folder / "one");
    TCvsObject& cvs = project.Cvs();
    // Sees the form without being input to it, which would keep it hidden.
    TTimer user(1700);
    user.OnTimer = [&](TObject*) {
        auto* const form = cvs.ExecuteClass->ProgressForm;
        if (form && form->Visible())
            Click(*form, "BitBtn2");
    };
    user.Restart();
    const ULONGLONG start = ::GetTickCount64();
    // Also one that has started another, which holds the pipe; and a second time.
    for (const char* client : {"sleep 600000", "with-grandchild 600000"}) {
        Host.Told.clear();
        EXPECT_FALSE(Run(project, client));
        EXPECT_LT(::GetTickCount64() - start, 120000u);
        ExpectTold("did not answer");
    }
    EXPECT_TRUE(Run(project, "exit 0")) << "and go on";
}

BOOL WINAPI RefuseJob(HANDLE, HANDLE) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

TEST(ChildJob, IsDoneWithoutWhereThereIsNone) {
    // As Windows 7 does for a process that is in a job already.
    const TChildJob none(RefuseJob);
    EXPECT_FALSE(none.Ties());
}

TEST(KilledHost, TakesItsChildrenWithIt) {
    const TStarted started("\"" + support::ProgramBeside("job_host.exe") + "\"");
    const auto child = static_cast<DWORD>(std::stoul(started.ReadLine()));
    const KernelHandle handle(::OpenProcess(SYNCHRONIZE, FALSE, child));
    ASSERT_TRUE(handle);
    EXPECT_EQ(::WaitForSingleObject(handle.Get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    ::TerminateProcess(started.Process.Get(), 9);
    EXPECT_EQ(::WaitForSingleObject(handle.Get(), 60000), static_cast<DWORD>(WAIT_OBJECT_0));
}

}  // namespace
