#include "intelhexreader.h"

#include "failure.h"

#include <QFile>
#include <QFileInfo>
#include <QList>

#include <algorithm>

namespace
{
void require(bool isMet, const char* complaint)
{
    if (!isMet) {
        throw Failure{QString::fromLatin1(complaint)};
    }
}

int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    throw Failure{QStringLiteral("not a hexadecimal digit")};
}

QByteArray bytesFromDigits(const QByteArray& digits)
{
    require(digits.size() % 2 == 0, "half a byte");
    QByteArray result;
    for (int i = 0; i < digits.size(); i += 2) {
        result.append(
            static_cast<char>(digitValue(digits.at(i)) << 4 | digitValue(digits.at(i + 1))));
    }
    return result;
}

quint32 byteAt(const QByteArray& bytes, int index)
{
    return static_cast<quint8>(bytes.at(index));
}

quint32 pairAt(const QByteArray& bytes, int index)
{
    return byteAt(bytes, index) << 8 | byteAt(bytes, index + 1);
}
} // namespace

IntelHexReader::IntelHexReader(int byteCount) : bytes(byteCount, '\0'), isGiven(byteCount, false) {}

QVector<MemoryWord> IntelHexReader::read(const QString& path)
{
    constexpr qint64 largest = 8 * 1024 * 1024;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        throw Failure{QStringLiteral("failed to find input file %1").arg(path)};
    }
    const QByteArray text = file.read(largest + 1);
    QList<QByteArray> lines = text.split('\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    int number = 0;
    try {
        require(text.size() <= largest, "the file is too large");
        for (const QByteArray& line : qAsConst(lines)) {
            ++number;
            readLine(line.endsWith('\r') ? line.chopped(1) : line);
        }
        require(hasEnded, "the end of file record is missing");
    } catch (const Failure& failure) {
        throw Failure{QStringLiteral("bad hex file %1: line %2: %3")
                          .arg(path)
                          .arg(number)
                          .arg(failure.message)};
    }
    return words();
}

void IntelHexReader::readLine(const QByteArray& line)
{
    require(!hasEnded, "something follows the end of file record");
    require(line.startsWith(':'), "does not begin with a colon");
    const QByteArray record = bytesFromDigits(line.mid(1));
    require(record.size() >= 5, "too short for a record");
    require(record.size() == static_cast<int>(byteAt(record, 0)) + 5,
            "the byte count does not fit the line");
    quint32 sum = 0;
    for (int i = 0; i < record.size(); ++i) {
        sum += byteAt(record, i);
    }
    require(sum % 256 == 0, "wrong checksum");
    readRecord(record);
}

void IntelHexReader::readRecord(const QByteArray& record)
{
    const quint32 address = pairAt(record, 1);
    const QByteArray data = record.mid(4, record.size() - 5);
    switch (byteAt(record, 3)) {
    case 0:
        readData(address, data);
        return;
    case 1:
        require(data.isEmpty(), "an end of file record with data");
        hasEnded = true;
        return;
    case 2:
    case 4:
        require(data.size() == 2 && address == 0, "a malformed address record");
        base = pairAt(data, 0) << (byteAt(record, 3) == 2 ? 4 : 16);
        return;
    case 3:
    case 5:
        require(data.size() == 4 && address == 0, "a malformed start address record");
        return;
    default:
        throw Failure{QStringLiteral("unknown record type")};
    }
}

void IntelHexReader::readData(quint32 address, const QByteArray& data)
{
    require(!data.isEmpty(), "a data record without data");
    require(address + static_cast<quint32>(data.size()) <= 0x10000,
            "a record that crosses a limit of 64 KiB");
    for (int i = 0; i < data.size(); ++i) {
        const quint32 index = base + address + static_cast<quint32>(i);
        require(index < static_cast<quint32>(bytes.size()), "an address beyond the flash");
        require(!isGiven.at(static_cast<int>(index)), "a byte that another line has already given");
        isGiven[static_cast<int>(index)] = true;
        bytes[static_cast<int>(index)] = data.at(i);
    }
}

QVector<MemoryWord> IntelHexReader::words() const
{
    QVector<MemoryWord> result;
    for (int i = 0; i < bytes.size(); i += 4) {
        const auto given = std::count(isGiven.begin() + i, isGiven.begin() + i + 4, true);
        if (given == 0) {
            continue;
        }
        const quint32 address = static_cast<quint32>(i) / 2;
        if (given != 4 || bytes.at(i + 3) != 0) {
            throw Failure{
                QStringLiteral("bad hex file: the word at %1 is not three bytes and a zero byte")
                    .arg(addressText(address))};
        }
        result.append(
            {address, byteAt(bytes, i) | byteAt(bytes, i + 1) << 8 | byteAt(bytes, i + 2) << 16});
    }
    return result;
}
