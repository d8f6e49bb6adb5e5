#pragma once

#include <windows.h>

#include <string>

namespace support {

struct TProcessResult {
    DWORD ExitCode = 0;
    std::string Output;  ///< Standard output and standard error as they came.
};

/// Runs a program to its end, without anything of the engine: the bare way to ask the real client.
/// Raises framework::EOSError when it cannot be started and framework::Exception when it does not
/// end in time; it is killed then.
/// @param input what it may read. @param deadline milliseconds.
TProcessResult RunProcess(const std::string& commandLine, const std::string& directory,
                          const std::string& input = {}, DWORD deadline = 60000);

/// The full path of a program that lies beside this one.
std::string ProgramBeside(const std::string& name);

/// The start of a command line that runs the fake client (support/fake_client), which lies beside
/// the program.
std::string FakeClient();

}  // namespace support
