#include "hosting/ChildJob.h"

namespace hosting {

bool TChildJob::EndWithUs(bool end) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = end ? JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE : 0;
    return ::SetInformationJobObject(Job_.Get(), JobObjectExtendedLimitInformation, &limits,
                                     sizeof limits) != FALSE;
}

TChildJob::TChildJob(TAssign assign) : Job_(::CreateJobObjectW(nullptr, nullptr)) {
    // The process itself: what it starts then belongs to the job from the first moment. When the
    // process is killed, the only handle goes with it, and with the handle everything in the job.
    if (Job_ && (!EndWithUs(true) || !assign(Job_.Get(), ::GetCurrentProcess())))
        Job_.Reset();
}

TChildJob::~TChildJob() {
    if (Job_)
        EndWithUs(false);
}

}  // namespace hosting
