#include "HEXGeneratorParser/hexutility.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "fatalassertion.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>

namespace HEXGeneratorParser
{
namespace
{
constexpr int imageSize = 2048;
constexpr int dataBytesPerWord = 3;
constexpr int bytesPerWord = 4;
} // namespace

int HexUtility::calculateByteCount(const QString& dataType)
{
    static const QHash<QString, int> sizes = {
        {QStringLiteral("char"), 1},          {QStringLiteral("signed char"), 1},
        {QStringLiteral("unsigned char"), 1}, {QStringLiteral("short"), 2},
        {QStringLiteral("signed short"), 2},  {QStringLiteral("unsigned short"), 2},
        {QStringLiteral("int"), 2},           {QStringLiteral("signed int"), 2},
        {QStringLiteral("unsigned int"), 2},  {QStringLiteral("long"), 4},
        {QStringLiteral("signed long"), 4},   {QStringLiteral("unsigned long"), 4}};
    return sizes.value(dataType, 0);
}

int HexUtility::getChemistrySize(const HParser::StructSettings* settings)
{
    int numBitsOccupied = 0;
    int numBytes = 0;
    const QList<HParser::StructSetting*> members = settings->getOriginalOrderStructSettings();
    for (const HParser::StructSetting* setting : members) {
        if (setting->size != QLatin1String("auto")) {
            numBitsOccupied += setting->size.toInt();
        } else if (setting->isArray) {
            numBytes += setting->arraySize;
        } else {
            numBytes += calculateByteCount(setting->variableDataType);
        }
    }
    KELVARON_ASSERT_TEXT(numBitsOccupied % 8 == 0, "numBitsOccupied%8 == 0");
    const int dataBytes = numBitsOccupied / 8 + numBytes;
    return bytesPerWord * ((dataBytes + dataBytesPerWord - 1) / dataBytesPerWord);
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

bool HexUtility::machineIsLittleEndian()
{
    return Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
}
} // namespace HEXGeneratorParser
