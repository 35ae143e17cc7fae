#include "HEXGeneratorParser/hexbufferread.h"

#include "base/fatalassertion.h"

namespace HEXGeneratorParser
{
namespace
{
constexpr int bytesPerWord = 4;
constexpr int lastDataPosition = 2;
} // namespace

HexBufferRead::HexBufferRead(const unsigned char* imageBytes, QObject* parent, int imageSize)
    : QObject(parent), image(imageBytes), size(imageSize)
{}

unsigned char HexBufferRead::currentByte()
{
    if (atEnd()) {
        pastEnd = true;
        return 0;
    }
    return image[byteIndex];
}

void HexBufferRead::advance()
{
    if (!atEnd()) {
        byteIndex += byteIndex % bytesPerWord == lastDataPosition ? 2 : 1;
    }
}

unsigned char HexBufferRead::readByte()
{
    KELVARON_ASSERT(bitIndex == 0);
    const unsigned char byte = currentByte();
    advance();
    return byte;
}

QByteArray HexBufferRead::readBytes(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count && !pastEnd; ++i) {
        bytes.append(static_cast<char>(readByte()));
    }
    return bytes;
}

quint64 HexBufferRead::readData(const QString& dataType)
{
    return HexUtility::byteBufferToNum(readBytes(HexUtility::calculateByteCount(dataType)));
}

QString HexBufferRead::readString(int length)
{
    return HexUtility::byteBufferToText(readBytes(length));
}

bool HexBufferRead::readBit()
{
    const bool bit = (currentByte() >> bitIndex & 1) != 0;
    bitIndex = (bitIndex + 1) % 8;
    if (bitIndex == 0) {
        advance();
    }
    return bit;
}

QByteArray HexBufferRead::readBits(int count)
{
    QByteArray bits;
    for (int i = 0; i < count && !pastEnd; ++i) {
        if (i % 8 == 0) {
            bits.append('\0');
        }
        const int last = bits.size() - 1;
        bits[last] = static_cast<char>(bits.at(last) | static_cast<int>(readBit()) << (i % 8));
    }
    return bits;
}

int HexBufferRead::sumBytesStruct() const
{
    int sum = 0;
    for (int i = structStart; i < qMin(byteIndex, size); ++i) {
        sum += image[i];
    }
    return sum;
}

void HexBufferRead::finishReadingStruct()
{
    byteIndex = (byteIndex + bytesPerWord - 1) / bytesPerWord * bytesPerWord;
    structStart = byteIndex;
}
} // namespace HEXGeneratorParser
