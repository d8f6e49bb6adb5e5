#include "framework/ui/contrast.h"

#include <windows.h>

namespace framework {
namespace {

bool IsThemeOfContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace

std::function<bool()>& HighContrast() {
    static std::function<bool()> asked = IsThemeOfContrast;
    return asked;
}

}  // namespace framework
