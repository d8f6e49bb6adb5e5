#include "core/Resources.h"

// The linker's name for the start of the module it makes.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace tandrel {

HINSTANCE ResourceModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace tandrel
