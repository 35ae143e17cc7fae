#include "keyvaluefile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

std::optional<QList<KeyValueFile::Entry>> KeyValueFile::read(const QString& path,
                                                             ExitCode codeOfFailure)
{
    constexpr qint64 largest = 100000;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray bytes = file.read(largest + 1);
    const QString name = QFileInfo(path).fileName();
    if (bytes.size() > largest) {
        throw Failure{QStringLiteral("%1 is too large").arg(name), codeOfFailure};
    }
    const QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    QList<Entry> entries;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        if (equals < 1) {
            throw Failure{QStringLiteral("%1: line %2 is not \"key = value\"").arg(name).arg(i + 1),
                          codeOfFailure};
        }
        entries.append({i + 1, line.left(equals).trimmed(), line.mid(equals + 1).trimmed()});
    }
    return entries;
}
