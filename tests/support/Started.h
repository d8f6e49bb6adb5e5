#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "framework/base/handle.h"

namespace tests {

/// A program that runs, its output caught; killed with the object.
struct TStarted {
    explicit TStarted(std::string line) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        framework::KernelHandle write;
        EXPECT_TRUE(::CreatePipe(Output.Receive(), write.Receive(), &inherited, 0));
        ::SetHandleInformation(Output.Get(), HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = startup.hStdError = write.Get();
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                     "C:\\", &startup, &process));
        Process.Reset(process.hProcess);
        Id = process.dwProcessId;
        ::CloseHandle(process.hThread);
    }
    ~TStarted() { ::TerminateProcess(Process.Get(), 1); }
    std::string ReadLine() const {
        std::string line;
        DWORD read = 0;
        for (char c = 0; ::ReadFile(Output.Get(), &c, 1, &read, nullptr) && read && c != '\n';)
            line += c;
        return line;
    }
    framework::KernelHandle Process, Output;
    DWORD Id = 0;
};

}  // namespace tests
