#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace bench {

/// Runs a command as the engine starts it (same flags, same pipes), reads its output in pieces of
/// 1023 bytes and waits for its end. Nothing else.
void BareRun(const std::string& commandLine, const std::function<void(const char*)>& onChunk,
             const std::string& directory = "C:\\");

/// The same on a thread of its own, which hands each piece to the calling thread by one
/// SendMessage.
void BareRelay(const std::string& commandLine, const std::function<void(const char*)>& onChunk);

}  // namespace bench
