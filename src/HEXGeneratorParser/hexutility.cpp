#include "HEXGeneratorParser/hexutility.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/structlayout.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalassertion.h"
#include "base/textfile.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>
#include <limits>
#include <utility>

namespace HEXGeneratorParser
{
namespace
{
constexpr int dataBytesPerWord = 3;
constexpr int bytesPerWord = 4;
} // namespace

int HexUtility::calculateByteCount(const QString& dataType)
{
    return HParser::StructLayout::byteCount(dataType);
}

int HexUtility::getChemistrySize(const HParser::StructSettings* settings)
{
    const std::optional<qint64> dataBytes = HParser::StructLayout::dataBytes(*settings);
    KELVARON_ASSERT_TEXT(dataBytes.has_value(), "numBitsOccupied%8 == 0");
    const qint64 size = bytesPerWord * ((*dataBytes + dataBytesPerWord - 1) / dataBytesPerWord);
    return static_cast<int>(std::min<qint64>(size, std::numeric_limits<int>::max()));
}

int HexUtility::numProfilesAllowed(const HParser::Generator* generator)
{
    int largest = getChemistrySize(generator->getGlobalSettings());
    const QList<HParser::StructSettings*> chemistries = generator->getChemistrySettings();
    for (const HParser::StructSettings* chemistry : chemistries) {
        largest = std::max(largest, getChemistrySize(chemistry));
    }
    KELVARON_ASSERT(largest > 0);
    return imageSize / largest - 1;
}

int HexUtility::getChecksumFromChecksumTotal(int checksumTotal)
{
    KELVARON_ASSERT(checksumTotal >= 0);
    return (256 - checksumTotal % 256) % 256;
}

void HexUtility::fixBytesAlignment(unsigned char* buffer, int size)
{
    KELVARON_ASSERT_TEXT(size % bytesPerWord == 0, "size%4 == 0");
    for (int word = 0; word < size; word += bytesPerWord) {
        std::swap(buffer[word], buffer[word + 2]);
    }
}

quint64 HexUtility::byteBufferToNum(const QByteArray& bytes)
{
    quint64 number = 0;
    for (int i = std::min(bytes.size(), 8) - 1; i >= 0; --i) {
        number = number << 8 | static_cast<unsigned char>(bytes.at(i));
    }
    return number;
}

bool HexUtility::byteBufferToBool(const QByteArray& bytes)
{
    return !bytes.isEmpty() && bytes.at(0) != 0;
}

QString HexUtility::byteBufferToText(const QByteArray& bytes)
{
    const uint length = qstrnlen(bytes.constData(), static_cast<uint>(bytes.size()));
    return TextFile::decoded(bytes.left(static_cast<int>(length)));
}

double HexUtility::applyDisplayFormula(qint64 raw, const HParser::StructSetting* setting)
{
    return static_cast<double>(raw) * setting->scaleFactor->toString().toDouble();
}

bool HexUtility::machineIsLittleEndian()
{
    return Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
}

void HexUtility::runTests()
{
    const auto sizeOf = [](const char* type) {
        return calculateByteCount(QString::fromLatin1(type));
    };
    for (const char* type : {"char", "signed char", "unsigned char"}) {
        KELVARON_ASSERT(sizeOf(type) == 1);
    }
    for (const char* type :
         {"short", "signed short", "unsigned short", "int", "signed int", "unsigned int"}) {
        KELVARON_ASSERT(sizeOf(type) == 2);
    }
    for (const char* type : {"long", "signed long", "unsigned long"}) {
        KELVARON_ASSERT(sizeOf(type) == 4);
    }
    KELVARON_ASSERT(sizeOf("Unsigned Char") == 0);
    KELVARON_ASSERT(sizeOf("") == 0);

    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x10203040) == 0xC0);
    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x11223300) == 0x00);
    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x112233FF) == 0x01);
    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x11223301) == 0xFF);
    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x11223312) == 0xEE);
    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x11223359) == 0xA7);
    KELVARON_ASSERT(getChecksumFromChecksumTotal(0x112233D8) == 0x28);

    QByteArray words("\x03\x05\xB0\x00\x05\x43\xFF\x00", 8);
    fixBytesAlignment(reinterpret_cast<unsigned char*>(words.data()), words.size());
    KELVARON_ASSERT(words == QByteArray("\xB0\x05\x03\x00\xFF\x43\x05\x00", 8));

    KELVARON_ASSERT(byteBufferToNum(QByteArray("\xFF\xFF")) == 65535);
    KELVARON_ASSERT(byteBufferToNum({}) == 0);
    KELVARON_ASSERT(byteBufferToBool(QByteArray(1, '\2')));
    KELVARON_ASSERT(!byteBufferToBool(QByteArray(1, '\0')));
}
} // namespace HEXGeneratorParser
