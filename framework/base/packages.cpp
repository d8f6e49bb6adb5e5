#include "framework/base/packages.h"

#include <algorithm>

#include "framework/base/exceptions.h"

namespace framework {

void TPackageRegistry::Register(const TPackageInfo& package) {
    for (const TPackageInfo& other : Packages_)
        if (other.Name == package.Name)
            throw Exception("The package " + package.Name + " is registered already");
    Packages_.push_back(package);
}

void TPackageRegistry::Unregister(const std::string& name) {
    std::erase_if(Packages_, [&](const TPackageInfo& package) { return package.Name == name; });
}

}  // namespace framework
