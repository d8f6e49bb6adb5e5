#include "package/Package.h"

#include "package/Version.h"

namespace {

constexpr const char* Name = "Tandrel";

}  // namespace

bool TandrelRegister(framework::TPackageRegistry& registry, int interfaceVersion) {
    if (interfaceVersion != framework::InterfaceVersion)
        return false;
    registry.Register({Name, TANDREL_VERSION});
    return true;
}

void TandrelUnregister(framework::TPackageRegistry& registry) {
    registry.Unregister(Name);
}
