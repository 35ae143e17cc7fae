#pragma once

#include "memoryword.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// Reads an Intel HEX file and rejects any error:
///
///     :LLAAAATT data CC     count, address, type, data, checksum, in hexadecimal digits
///
/// The bytes of a line add up to a multiple of 256. Types are 00 data, 01 end of file, 02 and 04
/// the upper part of the addresses that follow; 03 and 05 (start addresses) are checked and
/// ignored. Every line holds one record and the last one is the end of file.
class IntelHexReader
{
public:
    /// Addresses of bytes must be below `byteCount`, a multiple of 4.
    explicit IntelHexReader(int byteCount);

    /// Returns the words of a file in the order of their addresses. Throws a Failure if the file is
    /// missing ("failed to find input file"), a line is malformed, a byte is out of range or given
    /// twice, or a word is not three data bytes and a zero byte.
    QVector<MemoryWord> read(const QString& path);

private:
    void readLine(const QByteArray& line);
    void readRecord(const QByteArray& record);
    void readData(quint32 address, const QByteArray& data);
    QVector<MemoryWord> words() const;

    QByteArray bytes;
    QVector<bool> isGiven;
    quint32 base = 0;
    bool hasEnded = false;
};
