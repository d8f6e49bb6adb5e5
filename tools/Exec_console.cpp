// Runs in a console of their own.

#include <windows.h>

#include <array>
#include <exception>
#include <string_view>

#include "framework/base/exceptions.h"
#include "framework/base/handle.h"
#include "tools/Exec_obj.h"

namespace tandrel {
namespace {

constexpr DWORD WaitTime = 1000;   // ms for the child to end
constexpr DWORD SettleTime = 100;  // ms for its last output to show
constexpr char Prompt[] = "Press enter to continue ...\r\n";

framework::FileHandle OpenConsole(const wchar_t* name) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    return framework::FileHandle(::CreateFileW(name, GENERIC_READ | GENERIC_WRITE,
                                               FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                               OPEN_EXISTING, 0, nullptr));
}

/// Ctrl+C is for the child; this process is only its host.
BOOL WINAPI IgnoreBreak(DWORD event) {
    return event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
}

/// A console for as long as the object lives: one of its own, or the one the process already has.
class TConsole {
public:
    TConsole() {
        for (std::size_t i = 0; i < Standard.size(); ++i)
            Saved_[i] = ::GetStdHandle(Standard[i]);
        Allocated_ = ::AllocConsole() != FALSE;
        ::SetConsoleCtrlHandler(IgnoreBreak, TRUE);
        // Closing the window would end this process.
        if (Allocated_)
            ::DeleteMenu(::GetSystemMenu(::GetConsoleWindow(), FALSE), SC_CLOSE, MF_BYCOMMAND);
        Input = OpenConsole(L"CONIN$");
        Output = OpenConsole(L"CONOUT$");
    }
    ~TConsole() {
        Input.Reset();
        Output.Reset();
        ::SetConsoleCtrlHandler(IgnoreBreak, FALSE);
        // The system has put the console's handles in the place of ours and closes them now.
        if (Allocated_)
            ::FreeConsole();
        for (std::size_t i = 0; i < Standard.size(); ++i)
            ::SetStdHandle(Standard[i], Saved_[i]);
    }
    TConsole(const TConsole&) = delete;
    TConsole& operator=(const TConsole&) = delete;

    void WaitForEnter() const {
        DWORD count = 0;
        ::WriteConsoleA(Output.Get(), Prompt, sizeof Prompt - 1, &count, nullptr);
        // One read is not one line if the child has changed the console's mode.
        std::array<char, 256> text;
        while (::ReadConsoleA(Input.Get(), text.data(), static_cast<DWORD>(text.size()), &count,
                              nullptr) &&
               count > 0)
            if (std::string_view(text.data(), count).find_first_of("\r\n") !=
                std::string_view::npos)
                return;
    }

    framework::FileHandle Input, Output;

private:
    static constexpr std::array<DWORD, 3> Standard{STD_INPUT_HANDLE, STD_OUTPUT_HANDLE,
                                                   STD_ERROR_HANDLE};
    std::array<HANDLE, 3> Saved_{};
    bool Allocated_ = false;
};

}  // namespace

void TExecuteClass::ExecuteCommand() {
    if (OnStart)
        OnStart(this);
    std::exception_ptr error;
    {
        const TConsole console;
        try {
            RunInConsole(console.Input.Get(), console.Output.Get());
        } catch (...) {
            error = std::current_exception();
        }
        ::Sleep(SettleTime);
        console.WaitForEnter();
    }
    FFinished = true;
    if (OnFinish)
        OnFinish(this);
    if (error)
        std::rethrow_exception(error);
}

void TExecuteClass::RunInConsole(HANDLE input, HANDLE output) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    if (input != INVALID_HANDLE_VALUE && output != INVALID_HANDLE_VALUE) {
        // This process's own standard handles may lead elsewhere.
        startup.dwFlags |= STARTF_USESTDHANDLES;
        startup.hStdInput = input;
        startup.hStdOutput = startup.hStdError = output;
    }
    PROCESS_INFORMATION information{};
    std::string commandLine = FCmdLine;  // the system may write to it
    if (!::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0,
                          FEnvironment.empty() ? nullptr : FEnvironment.data(), FDir.c_str(),
                          &startup, &information))
        throw framework::Exception("Could not create process ");
    const framework::KernelHandle process(information.hProcess), mainThread(information.hThread);
    ::WaitForSingleObject(process.Get(), WaitTime);
    DWORD exitCode = 0;
    if (!::GetExitCodeProcess(process.Get(), &exitCode))
        throw framework::Exception("Could not get process exit code");
    FExitCode = static_cast<std::int32_t>(exitCode);
}

}  // namespace tandrel
