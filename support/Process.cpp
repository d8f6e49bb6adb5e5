#include "support/Process.h"

#include "framework/base/exceptions.h"
#include "framework/base/handle.h"
#include "framework/base/paths.h"

namespace support {

using framework::KernelHandle;

namespace {

struct TPipe {
    KernelHandle Read, Write;
    TPipe() {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        if (!::CreatePipe(Read.Receive(), Write.Receive(), &inheritable, 0))
            framework::RaiseLastOSError();
    }
};

/// Reads what is there; false when nobody can write any more.
bool ReadAvailable(HANDLE pipe, std::string& output) {
    DWORD available = 0;
    if (!::PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr))
        return false;
    if (available == 0)
        return true;
    const std::size_t before = output.size();
    output.resize(before + available);
    DWORD read = 0;
    if (!::ReadFile(pipe, output.data() + before, available, &read, nullptr))
        read = 0;
    output.resize(before + read);
    return true;
}

}  // namespace

TProcessResult RunProcess(const std::string& commandLine, const std::string& directory,
                          const std::string& input, DWORD deadline) {
    TPipe output, answers;
    ::SetHandleInformation(output.Read.Get(), HANDLE_FLAG_INHERIT, 0);
    ::SetHandleInformation(answers.Write.Get(), HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = answers.Read.Get();
    startup.hStdOutput = startup.hStdError = output.Write.Get();
    PROCESS_INFORMATION information{};
    std::string line = commandLine;
    const auto begin = [&] {
        return ::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_CONSOLE,
                                nullptr, directory.c_str(), &startup, &information) != FALSE;
    };
    // A busy 64-bit Wine now and then loses a process before it has begun.
    if (!begin() && (::GetLastError() != ERROR_INTERNAL_ERROR || !begin()))
        framework::RaiseLastOSError();
    const KernelHandle process(information.hProcess), thread(information.hThread);
    output.Write.Reset();
    answers.Read.Reset();
    DWORD written = 0;
    if (!input.empty())
        ::WriteFile(answers.Write.Get(), input.data(), static_cast<DWORD>(input.size()), &written,
                    nullptr);
    answers.Write.Reset();

    TProcessResult result;
    const DWORD start = ::GetTickCount();
    // The end of the process decides: what it leaves behind may keep the pipe for ever.
    while (::WaitForSingleObject(process.Get(), 5) == WAIT_TIMEOUT) {
        ReadAvailable(output.Read.Get(), result.Output);
        if (::GetTickCount() - start > deadline) {
            ::TerminateProcess(process.Get(), 1);
            throw framework::Exception("Not finished in time: " + commandLine);
        }
    }
    ReadAvailable(output.Read.Get(), result.Output);
    ::GetExitCodeProcess(process.Get(), &result.ExitCode);
    return result;
}

std::string ProgramBeside(const std::string& name) {
    char program[MAX_PATH];
    ::GetModuleFileNameA(nullptr, program, sizeof program);
    return framework::ExtractFilePath(program) + name;
}

std::string FakeClient() {
    return "\"" + ProgramBeside("fake_client.exe") + "\"";
}

}  // namespace support
