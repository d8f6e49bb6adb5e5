#include <cstdio>
#include <exception>

#include "workday/Workday.h"

int main() {
    try {
        return workday::TWorkday().Play() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "workday: %s\n", error.what());
        return 1;
    }
}
