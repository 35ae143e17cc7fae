#include "comparisontable.h"
#include "measuredprocess.h"
#include "rows.h"

#include <QCoreApplication>
#include <QDir>
#include <QSerialPortInfo>

#include <ctime>

namespace
{
std::string program(const char* name)
{
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QString::fromLatin1(name))
        .toStdString();
}

ComparisonTable::Function start(const char* name)
{
    return [path = program(name)](benchmark::State& state) {
        double peak = 0;
        for (auto iteration : state) {
            static_cast<void>(iteration);
            MeasuredProcess process(path, true);
            if (!process.waitForPaint()) {
                state.SkipWithError("the program ended before its first paint");
                break;
            }
            state.SetIterationTime(process.secondsToPaint());
            peak = process.megabytes();
        }
        state.counters["peak"] = peak;
    };
}

double ownProcessorSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

void sleepSeconds(int seconds)
{
    timespec duration = {seconds, 0};
    nanosleep(&duration, nullptr);
}

constexpr int settlingSeconds = 5; // until fonts, icons and the first checks for ports are done
constexpr int idleSeconds = 60;

ComparisonTable::Function idle(const char* name, int portLists)
{
    return [path = program(name), portLists](benchmark::State& state) {
        for (auto iteration : state) {
            static_cast<void>(iteration);
            MeasuredProcess process(path, false);
            if (!process.waitForPaint()) {
                state.SkipWithError("the program ended before its first paint");
                break;
            }
            sleepSeconds(settlingSeconds);
            const double before = process.processorSeconds();
            sleepSeconds(idleSeconds);
            double taken = process.processorSeconds() - before;
            const double own = ownProcessorSeconds();
            for (int i = 0; i < portLists; ++i) {
                benchmark::DoNotOptimize(QSerialPortInfo::availablePorts());
            }
            taken += ownProcessorSeconds() - own;
            state.SetIterationTime(taken);
        }
    };
}
} // namespace

void BenchmarkRows::addProcesses(ComparisonTable& table)
{
    ComparisonTable::Row row;
    row.name = "start to first paint";
    row.floorName = "an empty QMainWindow of the same size";
    row.ours = start("started_editor");
    row.floor = start("empty_window");
    row.aim = 1.2;
    row.iterations = 1;
    row.isTimedByHand = true;
    table.add(row);

    ComparisonTable::Row memory = row;
    memory.name = "peak memory at the first paint";
    memory.aim = 1.15;
    memory.counter = "peak";
    memory.unit = "MB";
    table.addCounterOf(row.name, memory);
}

void BenchmarkRows::addIdle(ComparisonTable& table)
{
    ComparisonTable::Row row;
    row.name = "processor time of an idle minute";
    row.floorName = "an idle empty QMainWindow and 60 port lists";
    row.ours = idle("started_editor", 0);
    row.floor = idle("empty_window", 60);
    row.aim = 1.1;
    row.iterations = 1;
    row.repetitions = 1;
    row.isTimedByHand = true;
    table.add(row);
}
