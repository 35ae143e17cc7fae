#pragma once

#include <QByteArray>

/// Writes bytes as the text of an Intel HEX file: an address record for each 64 KiB, data records of
/// at most 16 bytes that end at multiples of 16, the end of file record.
namespace IntelHexWriter
{
/// `address` is that of the first byte.
QByteArray fileText(quint32 address, const QByteArray& bytes);

/// One line with its checksum. `address` counts within 64 KiB, `data` has at most 255 bytes.
QByteArray recordLine(int type, quint32 address, const QByteArray& data);
} // namespace IntelHexWriter
