#include "HEXGeneratorParser/writetohex.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexbuffer.h"
#include "HEXGeneratorParser/hexutility.h"
#include "base/fatalassertion.h"
#include "base/fatalcontext.h"
#include "base/rounding.h"

#include <QRegularExpression>

#include <memory>

using HParser::StructSetting;
using HParser::StructSettings;

namespace HEXGeneratorParser
{
namespace
{
/// Names the setting that is being written.
class SettingContext : public FatalContext
{
public:
    SettingContext(const StructSettings& structure, const StructSetting& writtenSetting)
        : settings(structure), setting(writtenSetting)
    {}

protected:
    QString describe() const override
    {
        const QString name =
            setting.descriptiveName.isEmpty() ? setting.variableName : setting.descriptiveName;
        return QStringLiteral("Writing setting \"%1\" of \"%2\"")
            .arg(name, settings.getDescriptiveName());
    }

private:
    const StructSettings& settings;
    const StructSetting& setting;
};

bool isBitWidth(const QString& size)
{
    static const QRegularExpression digits(QStringLiteral("\\A\\d+\\z"));
    return size.contains(digits);
}

void checkNumbers()
{
    const auto number = [](const char* type, double value, double scaleFactor) {
        return WriteToHEX::getBinaryRep(QString::fromLatin1(type), value, scaleFactor);
    };
    KELVARON_ASSERT(number("unsigned char", 23, 1) == QByteArray(1, '\x17'));
    KELVARON_ASSERT(number("unsigned char", 200, 1) == QByteArray(1, '\xC8'));
    KELVARON_ASSERT(number("unsigned char", 300, 1) == QByteArray(1, '\x2C'));
    KELVARON_ASSERT(number("long", 16909060, 1) == QByteArray("\x04\x03\x02\x01"));
    KELVARON_ASSERT(number("int", 145.6, 0.1) == QByteArray("\xB0\x05"));
    KELVARON_ASSERT(number("int", 14.56, 0.01) == QByteArray("\xB0\x05"));
    KELVARON_ASSERT(number("int", -1, 1) == QByteArray("\xFF\xFF"));
    KELVARON_ASSERT(number("int", -2.5, 1) == QByteArray("\xFE\xFF"));
    KELVARON_ASSERT(number("int", -2.6, 1) == QByteArray("\xFD\xFF"));
}

void checkFlagsAndTexts()
{
    KELVARON_ASSERT(WriteToHEX::getBinaryRep(true) == QByteArray(1, '\1'));
    KELVARON_ASSERT(WriteToHEX::getBinaryRep(false) == QByteArray(1, '\0'));

    const auto text = [](const char* characters, int arrayLength) {
        return WriteToHEX::getBinaryRep(QString::fromUtf8(characters), arrayLength);
    };
    KELVARON_ASSERT(text("hello", 6) == QByteArray("hello\0", 6));
    KELVARON_ASSERT(text("hi", 2) == QByteArray("h\0", 2));
    KELVARON_ASSERT(text("hi", 4) == QByteArray("hi\0\0", 4));
    KELVARON_ASSERT(text("", 4) == QByteArray("\0\0\0\0", 4));
    KELVARON_ASSERT(text("hello", 0) == QByteArray("hello"));
    KELVARON_ASSERT(text("\xC3\xA4", 4) == QByteArray("\xC3\xA4\0\0\0", 5));
}

void checkWorkedStructure()
{
    StructSettings structure(nullptr);
    QList<StructSetting*> members;
    for (const char* line :
         {"unsigned char type; // num, auto, 0, 255, x1, 0, \"type\", \"\", G, 3, -1, basic",
          "char x; // bool, 1, \"X\", G, 1, -1, basic",
          "char y; // bool, 1, \"Y\", G, 0, -1, basic",
          "char z; // bool, 1, \"Z\", G, 1, -1, basic",
          "char rest; // num, 5, 0, 31, x1, 0, \"Rest\", \"\", G, 0, -1, basic",
          "int volts; // num, auto, 0, 20, x0.01, 2, \"Volts\", \"V\", G, 14.56, -1, basic",
          "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", G, 0, -1, basic"}) {
        members.append(new StructSetting(QString::fromLatin1(line), &structure));
    }
    structure.setOriginalOrderStructSettings(members);
    structure.buildFormulaTrees();

    HEXBuffer buffer(0, nullptr);
    WriteToHEX().serializeProfile(&buffer, &structure);
    QByteArray image;
    for (int i = 0; i < buffer.size(); ++i) {
        image.append(static_cast<char>(buffer.getByte(i)));
    }
    KELVARON_ASSERT(image == QByteArray("\x03\x05\xB0\x00\x05\x43\xFF\x00", 8));
}
} // namespace

bool WriteToHEX::write(const QString& fileName, const QList<StructSettings*>& profiles,
                       const StructSettings*, int startWordAddress) const
{
    HEXBuffer hexBuffer(HexUtility::imageSize, nullptr);
    serialize(&hexBuffer, profiles);
    return hexBuffer.writeToFile(fileName, startWordAddress);
}

QByteArray WriteToHEX::hexFile(const QList<StructSettings*>& profiles, int startWordAddress) const
{
    HEXBuffer hexBuffer(HexUtility::imageSize, nullptr);
    serialize(&hexBuffer, profiles);
    return hexBuffer.hexFile(startWordAddress);
}

void WriteToHEX::serialize(HEXBuffer* buffer, const QList<StructSettings*>& profiles) const
{
    for (const StructSettings* profile : profiles) {
        serializeProfile(buffer, profile);
    }
    KELVARON_ASSERT_TEXT(buffer->size() <= HexUtility::imageSize, "hexBuffer.size() <= 2048");
}

void WriteToHEX::serializeProfile(HEXBuffer* buffer, const StructSettings* settings) const
{
    const QList<StructSetting*> members = settings->getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        const SettingContext context(*settings, *setting);
        if (setting->descriptiveName == HParser::ProfileConventions::checksum) {
            buffer->appendByte(static_cast<char>(
                HexUtility::getChecksumFromChecksumTotal(buffer->sumBytesStruct())));
        } else {
            place(buffer, *setting);
        }
    }
    buffer->finishWritingStruct();
}

void WriteToHEX::place(HEXBuffer* buffer, const StructSetting& setting)
{
    const QByteArray bytes = encode(setting);
    if (setting.size == QLatin1String("auto")) {
        buffer->appendBytes(bytes);
        return;
    }
    KELVARON_ASSERT_TEXT(isBitWidth(setting.size), R"(setting->size.contains(QRegExp("^\\d+$")))");
    bool isNumber = false;
    const int width = setting.size.toInt(&isNumber);
    KELVARON_ASSERT_TEXT(isNumber && width <= 8 * bytes.size(), "width <= 8 * bytes.size()");
    buffer->appendBits(bytes, width);
}

QByteArray WriteToHEX::encode(const StructSetting& setting)
{
    switch (setting.settingType) {
    case StructSetting::NUM:
        return getBinaryRep(setting.variableDataType, setting.getValue().toDouble(),
                            setting.scaleFactor->toDouble());
    case StructSetting::BOOL:
        return getBinaryRep(setting.isOn());
    case StructSetting::STRING:
    case StructSetting::LIST:
        // Limited, so that an array larger than the image is reported before memory runs out.
        return getBinaryRep(setting.getValue(), qMin(setting.arraySize, HexUtility::imageSize + 1));
    case StructSetting::UNKNOWN:
        break;
    }
    return {};
}

QByteArray WriteToHEX::getBinaryRep(const QString& dataType, double value, double scaleFactor)
{
    const int numBytes = HexUtility::calculateByteCount(dataType);
    KELVARON_ASSERT(numBytes > 0);
    const auto raw = static_cast<quint32>(roundHalfUp(value * (1 / scaleFactor)));
    QByteArray bytes;
    for (int i = 0; i < numBytes; ++i) {
        bytes.append(static_cast<char>(raw >> (8 * i) & 0xFF));
    }
    return bytes;
}

QByteArray WriteToHEX::getBinaryRep(bool flag)
{
    return QByteArray(1, flag ? '\1' : '\0');
}

QByteArray WriteToHEX::getBinaryRep(const QString& text, int arrayLength)
{
    const QString cut = text.left(arrayLength - 1); // -1 takes the whole text
    return cut.toUtf8() + QByteArray(qMax(0, arrayLength - cut.size()), '\0');
}

void WriteToHEX::runTests()
{
    checkNumbers();
    checkFlagsAndTexts();
    checkWorkedStructure();
}
} // namespace HEXGeneratorParser
