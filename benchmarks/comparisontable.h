#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

/// Compares what the program does with its floor: the least that any program would have to do for
/// the same result. Both are measured in one run, alternately, and reported with their ratio.
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
        double aim = 0;             ///< the ratio to stay below; 0: as low as possible
        std::string counter = {};   ///< counter to compare; empty: the time
        std::string unit = "ms";    ///< unit of the compared values: "ms", "us" or "MB"
        int iterations = 0;         ///< per repetition; 0: as many as the time allows
        int repetitions = 0;        ///< 0: set by the command line
        bool isTimedByHand = false; ///< the functions measure their own iteration times
    };

    /// Sets the number of iterations per repetition for the rows added afterwards.
    void setIterations(int count) { fixedIterations = count; }

    /// Registers both halves of a row under the names "NAME" and "NAME (floor)".
    void add(Row row);

    /// Adds a row that compares another counter of an existing row.
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
