#include "readfile.h"

#include "failure.h"
#include "wholefile.h"

#include <QByteArray>
#include <QList>

namespace
{
/// The first line is an address record, so the first data is in the second line.
constexpr int firstDataLine = 1;
constexpr int firstDataByte = 4;

/// Flips the lowest bit of a byte in a line; `index` counts bytes, -1 is the checksum.
QByteArray withTurnedBit(const QByteArray& text, int index, bool keepsChecksum)
{
    QList<QByteArray> lines = text.split('\n');
    QByteArray record = QByteArray::fromHex(lines.at(firstDataLine).mid(1));
    const int at = index < 0 ? record.size() - 1 : index;
    const char before = record.at(at);
    record[at] = static_cast<char>(before ^ 1);
    if (keepsChecksum) {
        record[record.size() - 1] = static_cast<char>(record.back() + before - record.at(at));
    }
    lines[firstDataLine] = ':' + record.toHex().toUpper();
    return lines.join('\n');
}
} // namespace

void ReadFile::save(const QString& path, const QByteArray& text)
{
    if (!WholeFile::write(path, text)) {
        throw Failure{QStringLiteral("can not write output file %1").arg(path)};
    }
}

QByteArray ReadFile::withChangedByte(const QByteArray& text)
{
    return withTurnedBit(text, firstDataByte, true);
}

QByteArray ReadFile::withWrongChecksum(const QByteArray& text)
{
    return withTurnedBit(text, -1, false);
}

QByteArray ReadFile::cutOff(const QByteArray& text)
{
    const int half = text.size() / 2;
    const int lineStart = text.lastIndexOf('\n', half) + 1;
    return text.left(lineStart + 4);
}
