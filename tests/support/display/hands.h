#pragma once

#include "support/printing.h"
#include "support/waiting.h"

#include <QProcess>
#include <QWidget>

/// The keyboard and pointer of the X server, operated by the xdotool program.
namespace Hands
{
/// Runs xdotool with these arguments to its end, with the event loop running.
inline void doIt(const QStringList& arguments)
{
    QProcess xdotool;
    xdotool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    xdotool.start("xdotool", arguments);
    ASSERT_TRUE(waitFor([&] { return xdotool.state() == QProcess::NotRunning; }));
    ASSERT_EQ(xdotool.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(xdotool.exitCode(), 0);
}

/// Presses and releases a key, like "alt+Down", so many times, with no time between.
inline void press(const QString& key, int times = 1)
{
    QStringList arguments = {"key", "--delay", "0"};
    for (int i = 0; i < times; ++i) {
        arguments.append(key);
    }
    doIt(arguments);
}

/// Holds a key until the condition holds; returns whether it does.
template <typename Condition>
bool holdUntil(const QString& key, Condition condition)
{
    doIt({"keydown", key});
    const bool holds = waitFor(condition);
    doIt({"keyup", key});
    return holds;
}

/// Moves the pointer to a point of a widget. The X server knows better than Qt where the window is:
/// Qt's idea of the frame around it is sometimes late.
inline void pointAt(const QWidget* widget, const QPoint& point)
{
    const QWidget* window = widget->window();
    const QPoint place = widget->mapTo(window, point) * widget->devicePixelRatioF();
    doIt({"mousemove", "--window", QString::number(window->winId()), QString::number(place.x()),
          QString::number(place.y())});
}
} // namespace Hands
