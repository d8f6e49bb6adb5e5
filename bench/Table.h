#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
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
    std::ranges::nth_element(values,
                             values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

using TTurn = std::pair<double, double>;  ///< The times of two actions, one after the other.

/// The turn with the median ratio. The weather of a machine that others use, too, changes all times
/// and hardly a ratio.
inline TTurn MedianOf(std::vector<TTurn> turns) {
    const auto middle = turns.begin() + static_cast<std::ptrdiff_t>(turns.size() / 2);
    std::ranges::nth_element(turns, middle, {},
                             [](const TTurn& turn) { return turn.first / turn.second; });
    return *middle;
}

/// Lets two actions take turns. Each is as often the first, so that weather that grows better or
/// worse favours none.
template <class Action, class Other>
TTurn MedianTurn(int count, Action action, Other other) {
    std::vector<TTurn> turns;
    for (int i = 0; i < count; ++i) {
        TTurn& turn = turns.emplace_back();
        if (i % 2 == 0)
            turn.first = Time(action);
        turn.second = Time(other);
        if (i % 2 != 0)
            turn.first = Time(action);
    }
    return MedianOf(std::move(turns));
}

/// Collects comparisons of two times, or two other quantities, and prints them as one table.
class TTable {
public:
    /// @param limit what `measured` may be at most, as a multiple of `baseline`; 0 for no limit.
    /// @param unit of both.
    void Add(std::string what, double measured, std::string than, double baseline, double limit,
             const char* unit = "ms") {
        Rows_.push_back({std::move(what), measured, std::move(than), baseline, limit, unit});
        std::fprintf(stderr, "measured: %s\n", Rows_.back().What.c_str());
    }
    /// Prints all rows; true when no limit is exceeded.
    bool Print() const {
        bool good = true;
        std::printf("%-45s %13s  %-44s %13s %7s %7s\n", "measured", "", "compared with", "",
                    "ratio", "limit");
        for (const TRow& row : Rows_) {
            const double ratio = row.Measured / row.Baseline;
            const bool exceeded = row.Limit > 0 && ratio > row.Limit;
            good = good && !exceeded;
            // Small quantities with more places.
            const int places = row.Baseline < 10 ? 2 : 1;
            std::printf("%-45s %10.*f %s  %-44s %10.*f %s %7.3f ", row.What.c_str(), places,
                        row.Measured, row.Unit, row.Than.c_str(), places, row.Baseline, row.Unit,
                        ratio);
            if (row.Limit > 0)
                std::printf("%7.3f%s\n", row.Limit, exceeded ? " !" : "");
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
        const char* Unit;
    };
    std::vector<TRow> Rows_;
};

/// The measurements, each adding its rows.
void MeasureRunner(TTable& table);
void MeasureCommands(TTable& table);
void MeasureWorkingCopy(TTable& table);
void MeasureLog(TTable& table);
void MeasureForms(TTable& table);
void MeasureTools(TTable& table);
void MeasureFlood(TTable& table);
void MeasureHost(TTable& table);
void MeasureViews(TTable& table);

}  // namespace bench
