#pragma once

#include <windows.h>

#include <string>

namespace tests {

/// A word that no test at the same server has used. The number of a process is none: those on other
/// seats have the same ones.
inline std::string UniqueWord() {
    LARGE_INTEGER now{};
    ::QueryPerformanceCounter(&now);
    return std::to_string(::GetCurrentProcessId()) + "x" + std::to_string(now.QuadPart);
}

}  // namespace tests
