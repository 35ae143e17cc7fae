#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

/// What the program does, each time beside its floor: the least that any program would have to do
/// for it. Both are measured in one run, in turns, and told with their ratio.
class ComparisonTable : public benchmark::BenchmarkReporter
{
public:
    using Function = std::function<void(benchmark::State&)>;

    struct Row
    {
        std::string name;
        std::string floorName;
        Function ours;
        Function floor;
        double aim = 0;             ///< the ratio to stay below; 0: as low as it goes
        std::string counter = {};   ///< the counter to compare; empty: the time
        std::string unit = "ms";    ///< of what is compared: "ms", "us" or "MB"
        int iterations = 0;         ///< in each repetition; 0: as many as the time allows
        int repetitions = 0;        ///< 0: as the command line says
        bool isTimedByHand = false; ///< the functions set their iteration times
    };

    /// Fixes how many iterations each repetition of the rows added from here on has.
    void setIterations(int count) { fixedIterations = count; }

    /// Registers both halves of a row under the names "NAME" and "NAME (floor)".
    void add(Row row);

    /// Adds a row that compares another counter of a row that stands already.
    void addCounterOf(const std::string& measuredRow, const Row& row);

    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Writes the table to standard output: the medians of all repetitions.
    void print() const;

private:
    struct Samples
    {
        std::vector<double> times; // seconds
        std::map<std::string, std::vector<double>> counters;
    };
    struct PrintedRow
    {
        Row row;
        std::string measuredName;
    };

    double value(const std::string& measuredName, const Row& row) const;

    int fixedIterations = 0;
    std::vector<PrintedRow> rows;
    std::map<std::string, Samples> samples;
};
