#pragma once

#include <windows.h>

#include <functional>

#include "framework/api.h"

namespace framework {

/// The thread that called this first is the main thread: the one that owns the windows and serves
/// hand-overs. TApplication and TThread call it; later calls do nothing.
FRAMEWORK_API void BindMainThread();

/// True on the main thread, and everywhere before one is bound.
FRAMEWORK_API bool OnMainThread();

/// Runs `action` on the main thread and returns when it has ended; an exception it throws is thrown
/// here. On the main thread it is simply called. The main thread serves the request whenever it
/// looks for messages or waits for a thread.
FRAMEWORK_API void Synchronize(const std::function<void()>& action);

/// Main thread: waits until the object is signalled and meanwhile serves hand-overs and messages
/// that other threads send, but no posted message and no input.
FRAMEWORK_API void WaitServingHandOvers(HANDLE object);

/// How a single wait ended.
enum class TWaitEnd { Signalled, Served, TimedOut };

/// Main thread: waits once, at most so many milliseconds, until the object is signalled or a
/// hand-over has been served. Messages that others send are served meanwhile. Raises EOSError when
/// it cannot wait.
FRAMEWORK_API TWaitEnd WaitOnceServingHandOvers(HANDLE object, DWORD milliseconds);

}  // namespace framework
