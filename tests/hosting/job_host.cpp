// Starts a child that stays, tells its process number, and waits to be killed.

#include <windows.h>

#include <cstdio>

#include "hosting/ChildJob.h"
#include "support/Process.h"

int main() {
    const hosting::TChildJob job;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    std::string line = support::FakeClient() + " sleep 120000";
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &child))
        return 1;
    std::printf("%lu\n", child.dwProcessId);
    std::fflush(stdout);
    ::WaitForSingleObject(child.hProcess, INFINITE);
    return 0;
}
