#include "textfile.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>

std::optional<QString> TextFile::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile) {
        return std::nullopt;
    }
    QString text = QString::fromUtf8(file.readAll());
    text.remove(QLatin1Char('\r'));
    return text;
}

QStringList TextFile::splitLines(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

bool TextFile::write(const QString& path, const QString& text)
{
    return writeBytes(path, text.toUtf8());
}

bool TextFile::writeBytes(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    // commit() does not notice when what it still has to flush finds the disk full.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        file.cancelWriting();
    }
    return file.commit();
}
