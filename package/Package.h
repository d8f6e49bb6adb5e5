#pragma once

#include "framework/base/packages.h"

#if defined(TANDREL_BUILD)
#define TANDREL_API __declspec(dllexport)
#else
#define TANDREL_API __declspec(dllimport)
#endif

/// Registers the package with a host. Call it on the main thread before anything else of the
/// package is used. @param interfaceVersion the host's framework::InterfaceVersion. @return false,
/// and nothing has happened, when the package was built for another one. Raises
/// framework::Exception when it is registered already.
extern "C" TANDREL_API bool TandrelRegister(framework::TPackageRegistry& registry,
                                            int interfaceVersion);
/// The host is about to unload the package: no object of it may be left.
extern "C" TANDREL_API void TandrelUnregister(framework::TPackageRegistry& registry);
