#include "look/screenscaling.h"

#include <QScreen>

#include <cmath>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

void ScreenScaling::roundIfMeasured(std::vector<char*> arguments)
{
#ifdef Q_OS_LINUX // the other systems have a setting for it
    constexpr char rule[] = "QT_SCALE_FACTOR_ROUNDING_POLICY";
    constexpr double leastSetting = 0.1; // users choose coarser factors
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double factor = screen != nullptr ? screen->devicePixelRatio() : 1;
    const double rest = std::abs(factor - std::round(factor));
    if (rest > 0 && rest < leastSetting && !qEnvironmentVariableIsSet(rule)) {
        qputenv(rule, "Round");
        arguments.push_back(nullptr);
        execv("/proc/self/exe", arguments.data());
        qunsetenv(rule); // if this fails, the program continues unchanged
    }
#else
    Q_UNUSED(arguments)
#endif
}
