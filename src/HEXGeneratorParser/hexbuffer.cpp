#include "HEXGeneratorParser/hexbuffer.h"

#include "HEXGeneratorParser/hexutility.h"
#include "IntelHexFile/hexfile.h"
#include "base/fatalassertion.h"
#include "base/standardoutput.h"
#include "base/stdiofile.h"
#include "base/textfile.h"

#include <array>
#include <functional>
#include <limits>
#include <vector>

namespace HEXGeneratorParser
{
namespace
{
constexpr int bytesPerWord = 4;
constexpr int lastDataPosition = 2;
constexpr int paddingPosition = 3;
constexpr int lastBit = 7;
constexpr char fill = '\xFF';
constexpr char padding = '\0';

constexpr int rowSize = 256;
constexpr int recordSize = 16;
constexpr long blankWord = static_cast<long>(0xFFFFFF00U);

/// Returns the image in the byte order of the file, filled up with blank words to the end of a row.
std::vector<unsigned char> fileImage(const QByteArray& image)
{
    static constexpr std::array<unsigned char, bytesPerWord> blank = {0xFF, 0xFF, 0xFF, 0x00};
    const auto used = static_cast<std::size_t>(image.size());
    std::vector<unsigned char> area(used / rowSize * rowSize + rowSize);
    for (std::size_t i = 0; i < area.size(); ++i) {
        area[i] = i < used ? static_cast<unsigned char>(image.at(static_cast<int>(i)))
                           : blank[i % bytesPerWord];
    }
    HexUtility::fixBytesAlignment(area.data(), static_cast<int>(area.size()));
    return area;
}

bool writeRecords(const QByteArray& image, int startWordAddress, FILE* file)
{
    if (startWordAddress < 0 || startWordAddress > std::numeric_limits<int>::max() / 2) {
        return false;
    }
    const std::vector<unsigned char> area = fileImage(image);
    const int failed = IntelHexFile::makenewhexfile(
        area.data(), static_cast<unsigned int>(image.size()), file, blankWord, bytesPerWord,
        rowSize, recordSize, 2L * startWordAddress);
    return failed == 0 && std::fputs(":00000001FF\n", file) >= 0 && std::fflush(file) == 0;
}
} // namespace

HEXBuffer::HEXBuffer(int reserveSize, QObject* parent) : QObject(parent)
{
    byteArray.reserve(reserveSize);
}

void HEXBuffer::appendByte(char byte)
{
    KELVARON_ASSERT_TEXT(lastBitAdded == lastBit, "lastBitAdded==7");
    appendDataByte(byte);
}

void HEXBuffer::appendDataByte(char byte)
{
    if (wordPosition == lastDataPosition) {
        byteArray.append(padding);
        wordPosition = paddingPosition;
    }
    byteArray.append(byte);
    wordPosition = (wordPosition + 1) % bytesPerWord;
}

void HEXBuffer::appendBytes(const QByteArray& bytes)
{
    for (const char byte : bytes) {
        appendByte(byte);
    }
}

void HEXBuffer::appendBit(bool bit)
{
    if (lastBitAdded == lastBit) {
        appendDataByte('\0');
    }
    lastBitAdded = (lastBitAdded + 1) % 8;
    const int mask = 1 << lastBitAdded;
    const int last = byteArray.size() - 1;
    const int value = byteArray.at(last);
    byteArray[last] = static_cast<char>(bit ? value | mask : value & ~mask);
}

void HEXBuffer::appendBits(const QByteArray& bits, int count)
{
    for (int i = 0; i < count; ++i) {
        const int byte = KELVARON_AT(bits, i / 8);
        appendBit((byte >> (i % 8) & 1) != 0);
    }
}

void HEXBuffer::finishWritingStruct()
{
    while (wordPosition < lastDataPosition) {
        byteArray.append(fill);
        ++wordPosition;
    }
    if (wordPosition != paddingPosition) {
        byteArray.append(padding);
    }
    wordPosition = paddingPosition;
    structStart = byteArray.size();
}

int HEXBuffer::sumBytesStruct() const
{
    int sum = 0;
    for (int i = structStart; i < byteArray.size(); ++i) {
        sum += getByte(i);
    }
    return sum;
}

unsigned char HEXBuffer::getByte(int index) const
{
    return static_cast<unsigned char>(KELVARON_AT(byteArray, index));
}

int HEXBuffer::size() const
{
    return byteArray.size();
}

bool HEXBuffer::writeToFile(const QString& fileName, int startWordAddress) const
{
    const QByteArray text = hexFile(startWordAddress);
    return !text.isNull() && TextFile::writeBytes(fileName, text);
}

QByteArray HEXBuffer::hexFile(int startWordAddress) const
{
    return StdioFile::written([this, startWordAddress](FILE* file) {
        return writeRecords(byteArray, startWordAddress, file);
    });
}

void HEXBuffer::print() const
{
    QString line;
    for (const char byte : byteArray) {
        line += QString::asprintf("0x%02x ",
                                  static_cast<unsigned int>(static_cast<unsigned char>(byte)));
    }
    printLine(line);
}

void HEXBuffer::runTests()
{
    const auto bytes = [](std::initializer_list<int> values) {
        QByteArray array;
        for (const int value : values) {
            array.append(static_cast<char>(value));
        }
        return array;
    };
    const auto contentOf = [](const std::function<void(HEXBuffer&)>& fillBuffer) {
        HEXBuffer buffer(0, nullptr);
        fillBuffer(buffer);
        return buffer.byteArray;
    };
    const QByteArray sevenBytes = contentOf([&](HEXBuffer& buffer) {
        buffer.appendBytes(bytes({120, 200, 10, 20, 30, 40, 50}));
    });
    KELVARON_ASSERT(sevenBytes == bytes({120, 200, 10, 0, 20, 30, 40, 0, 50}));

    const QByteArray byteThenArray = contentOf([&](HEXBuffer& buffer) {
        buffer.appendByte(50);
        buffer.appendBytes(bytes({10, 20, 70}));
    });
    KELVARON_ASSERT(byteThenArray == bytes({50, 10, 20, 0, 70}));

    const QByteArray fourBits = contentOf([](HEXBuffer& buffer) {
        for (const bool bit : {true, true, false, true}) {
            buffer.appendBit(bit);
        }
    });
    KELVARON_ASSERT(fourBits == bytes({0b00001011}));

    const QByteArray nineBits = contentOf([&](HEXBuffer& buffer) {
        buffer.appendBits(bytes({0xFF, 0x01}), 9);
    });
    KELVARON_ASSERT(nineBits == bytes({0xFF, 0x01}));

    const QByteArray byteAfterBits = contentOf([&](HEXBuffer& buffer) {
        buffer.appendBits(bytes({0xA5}), 8);
        buffer.appendByte(0x11);
    });
    KELVARON_ASSERT(byteAfterBits == bytes({0xA5, 0x11}));

    const QByteArray checksumAfterWord = contentOf([&](HEXBuffer& buffer) {
        buffer.appendBytes(bytes({1, 2, 3}));
        buffer.appendByte(
            static_cast<char>(HexUtility::getChecksumFromChecksumTotal(buffer.sumBytesStruct())));
        KELVARON_ASSERT(buffer.sumBytesStruct() == 0x100);
    });
    KELVARON_ASSERT(checksumAfterWord == bytes({1, 2, 3, 0, 0xFA}));

    const QByteArray closedEmpty = contentOf([](HEXBuffer& buffer) {
        buffer.finishWritingStruct();
        buffer.finishWritingStruct(); // must append nothing
    });
    KELVARON_ASSERT(closedEmpty == bytes({0xFF, 0xFF, 0xFF, 0x00}));

    const QByteArray closedAfterTwo = contentOf([&](HEXBuffer& buffer) {
        buffer.appendBytes(bytes({1, 2}));
        buffer.finishWritingStruct();
    });
    KELVARON_ASSERT(closedAfterTwo == bytes({1, 2, 0xFF, 0x00}));

    const QByteArray closedAfterThree = contentOf([&](HEXBuffer& buffer) {
        buffer.appendBytes(bytes({1, 2, 3}));
        buffer.finishWritingStruct();
    });
    KELVARON_ASSERT(closedAfterThree == bytes({1, 2, 3, 0x00}));

    const QByteArray twoStructs = contentOf([](HEXBuffer& buffer) {
        buffer.appendByte(0x10);
        buffer.finishWritingStruct();
        KELVARON_ASSERT(buffer.sumBytesStruct() == 0);
        buffer.appendByte(0x20);
        KELVARON_ASSERT(buffer.sumBytesStruct() == 0x20);
    });
    KELVARON_ASSERT(twoStructs == bytes({0x10, 0xFF, 0xFF, 0x00, 0x20}));
}
} // namespace HEXGeneratorParser
