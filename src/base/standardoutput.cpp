#include "base/standardoutput.h"

#include "base/linecapture.h"

#include <QByteArray>
#include <QString>

#include <cstdio>

void printLine(const QString& line)
{
    if (LineCapture::take(line)) {
        return;
    }
    QByteArray bytes = line.toUtf8();
    bytes.append('\n');
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}
