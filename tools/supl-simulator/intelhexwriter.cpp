#include "intelhexwriter.h"

#include <algorithm>

namespace
{
char lowByte(quint32 number)
{
    return static_cast<char>(number & 0xFF);
}

QByteArray bytePair(quint32 number)
{
    return QByteArray(1, lowByte(number >> 8)) + lowByte(number);
}
} // namespace

QByteArray IntelHexWriter::recordLine(int type, quint32 address, const QByteArray& data)
{
    QByteArray record(1, static_cast<char>(data.size()));
    record += bytePair(address) + static_cast<char>(type) + data;
    quint32 sum = 0;
    for (const char byte : qAsConst(record)) {
        sum += static_cast<quint8>(byte);
    }
    record += lowByte(0U - sum);
    return ':' + record.toHex().toUpper() + '\n';
}

QByteArray IntelHexWriter::fileText(quint32 address, const QByteArray& bytes)
{
    QByteArray text;
    qint64 upper = -1;
    for (int i = 0; i < bytes.size();) {
        const quint32 at = address + static_cast<quint32>(i);
        if (upper != at >> 16) {
            upper = at >> 16;
            text += recordLine(4, 0, bytePair(at >> 16));
        }
        const int count = std::min(16 - static_cast<int>(at % 16), bytes.size() - i);
        text += recordLine(0, at & 0xFFFF, bytes.mid(i, count));
        i += count;
    }
    return text + recordLine(1, 0, QByteArray());
}
