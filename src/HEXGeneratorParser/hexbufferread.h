#pragma once

#include "HEXGeneratorParser/hexutility.h"

#include <QByteArray>
#include <QObject>
#include <QString>

namespace HEXGeneratorParser
{
/// A read cursor over a profile image that skips the padding byte of every word (see HEXBuffer for
/// the layout).
///
/// It never leaves the image: anything past the end reads as zero, and isPastEnd() then returns
/// true.
class HexBufferRead : public QObject
{
    Q_OBJECT

public:
    /// `imageBytes` is not owned and outlives the cursor.
    HexBufferRead(const unsigned char* imageBytes, QObject* parent,
                  int imageSize = HexUtility::imageSize);

    /// Returns the next byte. REQUIRES: no incomplete run of bits before it (fatal assertion).
    unsigned char readByte();

    /// Returns the next value of a C type of the charger as an unsigned number; for an unknown type
    /// returns 0 and reads nothing.
    quint64 readData(const QString& dataType);

    /// Returns the text up to the first zero in the next `length` bytes, in UTF-8.
    QString readString(int length);

    bool readBit();

    /// Returns the next bits, eight per byte, least significant first.
    QByteArray readBits(int count);

    /// Returns the sum of the structure's bytes read so far, padding bytes included.
    int sumBytesStruct() const;

    /// Moves on to the next word, where the next structure starts.
    void finishReadingStruct();

    /// Returns true if the image has no more bytes.
    bool atEnd() const { return byteIndex >= size; }

    /// Returns true if anything was read that is not completely within the image.
    bool isPastEnd() const { return pastEnd; }

private:
    unsigned char currentByte();
    void advance();
    QByteArray readBytes(int count);

    const unsigned char* image;
    int byteIndex = 0;
    int bitIndex = 0; ///< index of the next bit in the current byte
    int structStart = 0;
    int size;
    bool pastEnd = false;
};
} // namespace HEXGeneratorParser
