#pragma once

#include <QByteArray>

/// Writes bytes as the text of an Intel HEX file: an address record for each 64 KiB, data records of
/// at most 16 bytes that end at multiples of 16, the end of file record.
namespace IntelHexWriter
{
/// Returns the text of a file. `address` is the address of the first byte.
QByteArray fileText(quint32 address, const QByteArray& bytes);

/// Returns one line with its checksum. `address` is within 64 KiB, `data` has at most 255 bytes.
QByteArray recordLine(int type, quint32 address, const QByteArray& data);
} // namespace IntelHexWriter
