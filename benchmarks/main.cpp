// Measures how fast the editor is, each row next to its floor in the same run. See docs/speed.md.
//
//   editor_benchmarks [--idle] [--iterations=N] [Google Benchmark's options]
//
//   --idle           measure idle minutes too
//   --iterations=N   number of iterations per repetition, for counting instructions
//
// Uses the demo installation next to it, with a display or with QT_QPA_PLATFORM=offscreen.

#include "comparisontable.h"
#include "look/contraststyle.h"
#include "mainwindow.h"
#include "rows.h"

#include <QApplication>

#include <vector>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0"); // paint at once, so that no waiting is measured
    const QApplication application(argc, argv);
    QApplication::setStyle(new ContrastStyle); // the application owns it

    std::vector<char*> arguments(argv, argv + argc);
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=9";
    char shortest[] = "--benchmark_min_time=0.1";
    arguments.insert(arguments.begin() + 1, {interleaved, repetitions, shortest});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    const QStringList options = application.arguments();
    const bool measuresIdle = options.contains(QStringLiteral("--idle"));
    const QString iterations = QStringLiteral("--iterations=");

    ComparisonTable table;
    for (const QString& option : options) {
        if (option.startsWith(iterations)) {
            table.setIterations(option.mid(iterations.size()).toInt());
        }
    }
    BenchmarkRows::addProcesses(table);
    MainWindow window;
    window.show();
    BenchmarkRows::addWindow(table, window);
    BenchmarkRows::addCore(table);
    if (measuresIdle) {
        BenchmarkRows::addIdle(table);
    }
    benchmark::RunSpecifiedBenchmarks(&table);
    benchmark::ClearRegisteredBenchmarks(); // they own widgets
    table.print();
    return EXIT_SUCCESS;
}
