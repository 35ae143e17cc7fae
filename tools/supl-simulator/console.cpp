#include "console.h"

#include <QString>
#include <QThread>

#include <cstdio>

void Console::line(const QString& text, int normalPause) const
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
    wait(normalPause);
}

void Console::marker(const QString& text) const
{
    wait(markerPause);
    line(text, markerPause);
}

void Console::wait(int normalPause) const
{
    const int pause = pace.pause(normalPause);
    if (pause > 0) { // even a pause of 0 would yield the processor
        QThread::msleep(static_cast<unsigned long>(pause));
    }
}
