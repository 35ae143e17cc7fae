#pragma once

#include "support/waiting.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

/// Waits like waitFor(), but without its pauses, so that the output of a child process is read as
/// fast as in the running program.
template <typename Condition>
bool waitThroughFlood(Condition condition)
{
    QTimer wakeUp;
    wakeUp.start(10);
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < patience) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return condition();
}
