#pragma once

/// FRAMEWORK_API marks what the framework library offers to the host and to packages.
/// Both sides must use the same shared C++ run-time, so that classes, strings and exceptions can
/// cross the library's border.
#if defined(_WIN32)
#if defined(FRAMEWORK_BUILD)
#define FRAMEWORK_API __declspec(dllexport)
#else
#define FRAMEWORK_API __declspec(dllimport)
#endif
#else
#define FRAMEWORK_API
#endif
