#pragma once

#include "HEXGeneratorParser/hexutility.h"

#include <QByteArray>
#include <QObject>
#include <QString>

namespace HEXGeneratorParser
{
/// A read cursor over a profile image that steps over the padding byte of every word (see
/// HEXBuffer for the layout).
///
/// It never leaves the image: what would lie behind its end reads as zero, and isPastEnd() tells.
class HexBufferRead : public QObject
{
    Q_OBJECT

public:
    /// `imageBytes` is not owned and outlives the cursor.
    HexBufferRead(const unsigned char* imageBytes, QObject* parent,
                  int imageSize = HexUtility::imageSize);

    /// The next byte. REQUIRES: no incomplete run of bits before it (fatal assertion).
    unsigned char readByte();

    /// The next value of a C type of the charger, without a sign; 0 for an unknown type, which
    /// reads nothing.
    quint64 readData(const QString& dataType);

    /// The text up to the first zero in the next `length` bytes, in UTF-8.
    QString readString(int length);

    bool readBit();

    /// The next bits, eight to a byte, least significant first.
    QByteArray readBits(int count);

    /// The sum of the structure's bytes read so far, padding bytes included.
    int sumBytesStruct() const;

    /// Goes on at the next whole word, where the next structure starts.
    void finishReadingStruct();

    /// True when the image has no further byte.
    bool atEnd() const { return byteIndex >= size; }

    /// True when something that was read did not lie in the image, or not whole.
    bool isPastEnd() const { return pastEnd; }

private:
    unsigned char currentByte();
    void advance();
    QByteArray readBytes(int count);

    const unsigned char* image;
    int byteIndex = 0;
    int bitIndex = 0; ///< of the next bit in the current byte
    int structStart = 0;
    int size;
    bool pastEnd = false;
};
} // namespace HEXGeneratorParser
