#include "framework/base/oem.h"

#include <windows.h>

namespace framework {

std::string FromOem(std::string text) {
    // Where both are the same the text may hold characters of several bytes, cut at its ends.
    if (::GetOEMCP() != ::GetACP())
        ::OemToCharBuffA(text.data(), text.data(), static_cast<DWORD>(text.size()));
    return text;
}

}  // namespace framework
