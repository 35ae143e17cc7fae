#pragma once

class QByteArray;
class QString;

/// The Intel HEX file that a read leaves behind, and what may be wrong with it.
namespace ReadFile
{
/// Writes it, whole or not at all. Throws a Failure.
void save(const QString& path, const QByteArray& text);

/// REQUIRES for all: `text` comes from IntelHexWriter::fileText and holds at least one data byte.

/// One bit of the first data byte is changed, and the line's checksum with it.
QByteArray withChangedByte(const QByteArray& text);

/// The first data line's checksum is wrong by one bit.
QByteArray withWrongChecksum(const QByteArray& text);

/// The text ends about halfway, inside a line.
QByteArray cutOff(const QByteArray& text);
} // namespace ReadFile
