#pragma once

#include <string>
#include <vector>

#include "framework/api.h"

namespace framework {

/// Changes whenever a class that host and packages share changes: both sides must be built with the
/// same one.
inline constexpr int InterfaceVersion = 1;

/// What a package says of itself.
struct TPackageInfo {
    std::string Name;
    std::string Version;
};

/// The packages that a host has loaded. Main thread only.
class FRAMEWORK_API TPackageRegistry {
public:
    /// Called by packages. Raises framework::Exception when one of that name is there already.
    void Register(const TPackageInfo& package);
    /// A name that is not there does nothing.
    void Unregister(const std::string& name);
    const std::vector<TPackageInfo>& Packages() const { return Packages_; }

private:
    std::vector<TPackageInfo> Packages_;
};

}  // namespace framework
