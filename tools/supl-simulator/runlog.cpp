#include "runlog.h"

#include <QFile>
#include <QStringList>

namespace
{
void append(const QString& path, const QString& line)
{
    QFile file(path);
    if (file.open(QIODevice::Append)) {
        file.write(line.toUtf8() + '\n');
    }
}
} // namespace

void RunLog::begin(const QString& path, const QStringList& arguments)
{
    append(path, QLatin1Char('"') + arguments.join(QStringLiteral("\" \"")) + QLatin1Char('"'));
}

void RunLog::end(const QString& path, int exitCode)
{
    append(path, QStringLiteral("exit code %1").arg(exitCode));
}
