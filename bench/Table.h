#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace bench {

/// Milliseconds since some moment, with the precision of the performance counter.
inline double Milliseconds() {
    LARGE_INTEGER count, frequency;
    ::QueryPerformanceCounter(&count);
    ::QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// The time that the action takes, in milliseconds.
template <class Action>
double Time(Action action) {
    const double start = Milliseconds();
    action();
    return Milliseconds() - start;
}

inline double Median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

/// Collects comparisons of two times and prints them as one table.
class TTable {
public:
    /// @param limit what `measured` may be at most, as a multiple of `baseline`; 0 for no limit.
    void Add(std::string what, double measured, std::string than, double baseline, double limit) {
        Rows_.push_back({std::move(what), measured, std::move(than), baseline, limit});
        std::fprintf(stderr, "measured: %s\n", Rows_.back().What.c_str());
    }
    /// Prints all rows; true when no limit is exceeded.
    bool Print() const {
        bool good = true;
        std::printf("%-44s %10s  %-44s %10s %7s %7s\n", "measured", "ms", "compared with", "ms",
                    "ratio", "limit");
        for (const TRow& row : Rows_) {
            const double ratio = row.Measured / row.Baseline;
            const bool exceeded = row.Limit > 0 && ratio > row.Limit;
            good = good && !exceeded;
            std::printf("%-44s %10.1f  %-44s %10.1f %7.2f ", row.What.c_str(), row.Measured,
                        row.Than.c_str(), row.Baseline, ratio);
            if (row.Limit > 0)
                std::printf("%7.2f%s\n", row.Limit, exceeded ? " !" : "");
            else
                std::printf("%7s\n", "-");
        }
        return good;
    }

private:
    struct TRow {
        std::string What;
        double Measured;
        std::string Than;
        double Baseline, Limit;
    };
    std::vector<TRow> Rows_;
};

/// The measurements, each adding its rows.
void MeasureRunner(TTable& table);
void MeasureCommands(TTable& table);

}  // namespace bench
