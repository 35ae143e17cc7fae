#pragma once

class QByteArray;
class QString;

/// The Intel HEX file that a read creates, and its simulated faults.
namespace ReadFile
{
/// Writes the file, completely or not at all. Throws a Failure.
void save(const QString& path, const QByteArray& text);

/// REQUIRES for the following functions: `text` was made by IntelHexWriter::fileText and has at
/// least one data byte.

/// Returns the text with one bit of the first data byte changed, and the line's checksum adjusted.
QByteArray withChangedByte(const QByteArray& text);

/// Returns the text with one wrong bit in the checksum of the first data line.
QByteArray withWrongChecksum(const QByteArray& text);

/// Returns about half of the text; it ends inside a line.
QByteArray cutOff(const QByteArray& text);
} // namespace ReadFile
