// tour
//
// Plays a working day in the host. The exit code is 0 when every step did what it should. Pictures
// and the transcript go to the folder TANDREL_OUT.

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <cstdlib>

#include "tour/Tour.h"

int main() {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    try {
        const char* const out = std::getenv("TANDREL_OUT");
        return tour::TTour(out ? out : "").Play() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tour: %s\n", error.what());
        return 1;
    }
}
