#include "comparisontable.h"

#include <algorithm>
#include <cstdio>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_TOGGLE_COLLECT
#endif

namespace
{
const std::string floorSuffix = " (floor)";

double median(std::vector<double> values)
{
    if (values.empty()) {
        return 0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void registerHalf(const std::string& name, const ComparisonTable::Function& function,
                  const ComparisonTable::Row& row)
{
    benchmark::internal::Benchmark* half =
        benchmark::RegisterBenchmark(name.c_str(), [function](benchmark::State& state) {
            CALLGRIND_TOGGLE_COLLECT; // only the measured code is counted
            function(state);
            CALLGRIND_TOGGLE_COLLECT;
        });
    half->Unit(benchmark::kMillisecond);
    if (row.iterations > 0) {
        half->Iterations(row.iterations);
    }
    if (row.repetitions > 0) {
        half->Repetitions(row.repetitions);
    }
    if (row.isTimedByHand) {
        half->UseManualTime();
    } else {
        half->UseRealTime();
    }
}

double perSecond(const std::string& unit)
{
    return unit == "us" ? 1e6 : 1e3;
}
} // namespace

void ComparisonTable::add(Row row)
{
    if (fixedIterations > 0) {
        row.iterations = fixedIterations;
    }
    registerHalf(row.name, row.ours, row);
    registerHalf(row.name + floorSuffix, row.floor, row);
    rows.push_back({row, row.name});
}

void ComparisonTable::addCounterOf(const std::string& measuredRow, const Row& row)
{
    rows.push_back({row, measuredRow});
}

void ComparisonTable::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration) {
            continue;
        }
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(),
                         run.error_message.c_str());
            continue;
        }
        Samples& found = samples[run.run_name.function_name];
        found.times.push_back(run.real_accumulated_time / static_cast<double>(run.iterations));
        for (const auto& [name, counter] : run.counters) {
            found.counters[name].push_back(counter.value);
        }
    }
}

double ComparisonTable::value(const std::string& measuredName, const Row& row) const
{
    const auto found = samples.find(measuredName);
    if (found == samples.end()) {
        return 0;
    }
    if (row.counter.empty()) {
        return median(found->second.times) * perSecond(row.unit);
    }
    const auto counter = found->second.counters.find(row.counter);
    return counter == found->second.counters.end() ? 0 : median(counter->second);
}

void ComparisonTable::print() const
{
    std::printf("| What | Floor | Floor took | It took | Ratio | Aim |\n");
    std::printf("|---|---|---:|---:|---:|---:|\n");
    for (const auto& [row, measuredName] : rows) {
        const double ours = value(measuredName, row);
        const double floor = value(measuredName + floorSuffix, row);
        if (ours <= 0 || floor <= 0) {
            continue; // excluded by the filter
        }
        std::printf("| %s | %s | %.3g %s | %.3g %s | %.2f | ", row.name.c_str(),
                    row.floorName.c_str(), floor, row.unit.c_str(), ours, row.unit.c_str(),
                    ours / floor);
        if (row.aim > 0) {
            std::printf("%.2f |\n", row.aim);
        } else {
            std::printf("low |\n");
        }
    }
    std::fflush(stdout);
}
