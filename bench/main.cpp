#include <cstdio>
#include <exception>

#include "bench/Table.h"

// All measurements in one table. A limit that is exceeded is marked and makes the exit code 1.
int main() {
    try {
        bench::TTable table;
        bench::MeasureRunner(table);
        bench::MeasureCommands(table);
        return table.Print() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 2;
    }
}
