#pragma once

#include <QByteArray>
#include <QObject>

namespace HEXGeneratorParser
{
/// Builds the profile image: an append-only buffer in the charger's byte and bit order.
///
/// The charger reads its memory in words of three data bytes; the image stores each with a fourth
/// byte, a padding byte that is always zero and that the buffer itself inserts:
///
///     | data | data | data | 0x00 | data | data | data | 0x00 | ...
///        0      1      2      3      0      1      2      3      word position
///
/// Bits fill a byte from the least significant one upward. A whole byte after an incomplete run of
/// bits is a fatal assertion.
class HEXBuffer : public QObject
{
    Q_OBJECT

public:
    /// Creates an empty buffer with room for `reserveSize` bytes.
    HEXBuffer(int reserveSize, QObject* parent);

    void appendByte(char byte);
    void appendBytes(const QByteArray& bytes);
    void appendBit(bool bit);

    /// Appends the first `count` bits of the bytes, least significant bit of each byte first.
    /// REQUIRES: at least `count` bits (fatal assertion).
    void appendBits(const QByteArray& bits, int count);

    /// Fills the last word with 0xFF; the next structure starts with a new word.
    void finishWritingStruct();

    /// Returns the sum of the bytes of the structure being written, padding bytes included.
    int sumBytesStruct() const;

    /// Returns the byte at an index. REQUIRES: an index inside the buffer (fatal assertion).
    unsigned char getByte(int index) const;

    /// Returns the number of bytes, padding bytes included.
    int size() const;

    /// Writes the image as an Intel HEX file at a word address of the charger, completely or not at
    /// all: on failure returns false and leaves an existing file unchanged.
    bool writeToFile(const QString& fileName, int startWordAddress) const;

    /// Returns what writeToFile() writes; null for an address that does not fit the format.
    QByteArray hexFile(int startWordAddress) const;

    /// Writes every byte to standard output.
    void print() const;

    /// Checks the buffer against known results, at every start; a wrong result is a fatal
    /// assertion.
    static void runTests();

private:
    void appendDataByte(char byte);

    QByteArray byteArray;
    int wordPosition = -1; ///< index of the last byte; -1 in an empty buffer
    int lastBitAdded = 7;  ///< last bit used in the last byte; 7: the byte is full
    int structStart = 0;   ///< index of the first byte of the structure being written
};
} // namespace HEXGeneratorParser
