// Measures what a check for serial ports costs when nothing has changed, compared with what it
// replaces: enumerating the ports.

#include "serialports/qextserialenumerator.h"

#include <QElapsedTimer>
#include <QSerialPortInfo>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace
{
template <typename Function>
void measure(const char* name, Function function)
{
    constexpr int runs = 500;
    std::vector<double> times; // milliseconds
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        function();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    std::printf("%-26s median %.3f ms, 99%% %.3f ms, longest %.3f ms\n", name, times[runs / 2],
                times[runs * 99 / 100], times.back());
}
} // namespace

int main()
{
    QextSerialEnumerator::getPorts();
    QThread::sleep(3); // until the first list counts as stable
    QextSerialEnumerator::getPorts();
    measure("full enumeration:", [] { QSerialPortInfo::availablePorts(); });
    measure("look, nothing changed:", [] { QextSerialEnumerator::getPorts(); });
    return EXIT_SUCCESS;
}
