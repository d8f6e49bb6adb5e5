#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "bench/Table.h"

// All measurements in one table, or those that the arguments name. A limit that is exceeded is
// marked and makes the exit code 1.
int main(int argc, char** argv) {
    struct {
        const char* Name;
        void (*Measure)(bench::TTable& table);
    } const measurements[] = {
        {"runner", bench::MeasureRunner},
        {"commands", bench::MeasureCommands},
        {"working-copy", bench::MeasureWorkingCopy},
        {"log", bench::MeasureLog},
        {"forms", bench::MeasureForms},
        {"tools", bench::MeasureTools},
        {"flood", bench::MeasureFlood},
        {"host", bench::MeasureHost},
        {"views", bench::MeasureViews},
    };
    const std::vector<std::string> wanted(argv + 1, argv + argc);
    try {
        bench::TTable table;
        for (const auto& [name, measure] : measurements)
            if (wanted.empty() || std::ranges::count(wanted, name) > 0)
                measure(table);
        return table.Print() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 2;
    }
}
