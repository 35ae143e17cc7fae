#include "HEXGeneratorParser/readfromhex.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexbufferread.h"
#include "HEXGeneratorParser/hexutility.h"
#include "IntelHexFile/hexfile.h"
#include "base/fatalassertion.h"
#include "base/standardoutput.h"
#include "base/stdiofile.h"
#include "base/textfile.h"
#include "base/valuetext.h"
#include "base/xmlutility.h"
#include "profileimport/parsedprofile.h"

#include <QFileInfo>

#include <memory>
#include <optional>

using HParser::Generator;
namespace ProfileConventions = HParser::ProfileConventions;
using HParser::StructSetting;
using HParser::StructSettings;

namespace HEXGeneratorParser
{
namespace
{
constexpr int erasedType = 255;

bool loadFlash(FILE* file, std::vector<unsigned char>& flash)
{
    // The EEPROM range is empty: every byte goes into the flash area.
    std::vector<unsigned char> eeprom(IntelHexFile::eepromAreaSize);
    unsigned char eepromFound = 0;
    unsigned long eepromMaxIndex = 0;
    return IntelHexFile::loadhexfile(flash.data(), eeprom.data(), file, &eepromFound,
                                     &eepromMaxIndex, 0, 0)
           != 0;
}

QString rawText(quint64 raw, const StructSetting& setting)
{
    return numberText(HexUtility::applyDisplayFormula(static_cast<qint64>(raw), &setting));
}

QString readBytesValue(HexBufferRead& buffer, const StructSetting& setting)
{
    switch (setting.settingType) {
    case StructSetting::NUM:
        return rawText(buffer.readData(setting.variableDataType), setting);
    case StructSetting::BOOL:
        return flagText(buffer.readData(setting.variableDataType) != 0);
    case StructSetting::STRING:
    case StructSetting::LIST:
        return buffer.readString(setting.arraySize);
    case StructSetting::UNKNOWN:
        break;
    }
    return {};
}

QString readBitsValue(HexBufferRead& buffer, const StructSetting& setting)
{
    const QByteArray bits = buffer.readBits(setting.size.toInt());
    switch (setting.settingType) {
    case StructSetting::NUM:
        return rawText(HexUtility::byteBufferToNum(bits), setting);
    case StructSetting::BOOL:
        return flagText(HexUtility::byteBufferToBool(bits));
    case StructSetting::STRING:
    case StructSetting::LIST:
        return HexUtility::byteBufferToText(bits);
    case StructSetting::UNKNOWN:
        break;
    }
    return {};
}

QString readValue(HexBufferRead& buffer, const StructSetting& setting)
{
    return setting.size == QLatin1String("auto") ? readBytesValue(buffer, setting)
                                                 : readBitsValue(buffer, setting);
}

/// Stores a flag in the profile; returns false if the setting is not one of its flags.
bool storeFlag(ParsedProfile& profile, const QString& name, const QString& value)
{
    const bool flag = value == QLatin1String("true");
    if (name == ProfileConventions::activeFlag) {
        profile.setActiveStatus(flag);
    } else if (name == ProfileConventions::defaultFlag) {
        profile.setDefaultStatus(flag);
    } else if (name == ProfileConventions::modifiableFlag) {
        profile.setModifiableStatus(flag);
    } else {
        return false;
    }
    return true;
}

void checkChecksum(int expected, const QMap<QString, QString>& properties)
{
    const int found = properties.value(ProfileConventions::checksum).toInt();
    if (expected != found) {
        printLine(QStringLiteral("ERROR!!! Checksums dont match! Expected : %1, Found : %2")
                      .arg(expected)
                      .arg(found));
        throw static_cast<int>(ReadFromHEX::CHECKSUM_ERROR);
    }
}
} // namespace

bool ReadFromHEX::read(const QString& fileName, int startWordAddress)
{
    image = nullptr;
    constexpr qint64 lastImageStart =
        static_cast<qint64>(IntelHexFile::flashAreaSize) - 1 - HexUtility::imageSize;
    const qint64 imageStart = 2 * static_cast<qint64>(startWordAddress);
    if (imageStart < 0 || imageStart > lastImageStart) {
        printLine(QStringLiteral("The image at word address %1 is outside the flash memory")
                      .arg(startWordAddress));
        return false;
    }
    const StdioFile::Pointer file = StdioFile::openForReading(fileName);
    if (!file || QFileInfo(fileName).size() > TextFile::largestFile) {
        return false;
    }
    flash.assign(IntelHexFile::flashAreaSize, 0);
    const bool isLoaded = loadFlash(file.get(), flash);
    image = flash.data() + imageStart;
    HexUtility::fixBytesAlignment(image, HexUtility::imageSize);
    return isLoaded;
}

QList<ParsedProfile*> ReadFromHEX::parseProfiles(const Generator* generator)
{
    KELVARON_ASSERT(image != nullptr);
    const QString byteType = QStringLiteral("unsigned char");
    HexBufferRead buffer(image, nullptr);
    QList<ParsedProfile*> profiles;
    while (!buffer.atEnd()) {
        const int type = static_cast<int>(buffer.readData(byteType));
        if (type == erasedType) {
            break;
        }
        const StructSettings* layout = getProfileFromType(generator, type);
        if (layout == nullptr) {
            printLine(QStringLiteral("Error! Invalid type"));
            throw static_cast<int>(TYPE_ERROR);
        }
        ParsedProfile* profile = parseProfile(buffer, *layout);
        if (profile == nullptr) {
            printLine(QStringLiteral("The last structure is cut off by the end of the image and is "
                                     "left out"));
            break;
        }
        profiles.append(profile);
        buffer.finishReadingStruct();
    }
    return profiles;
}

/// Returns nullptr if the structure is not completely within the image.
ParsedProfile* ReadFromHEX::parseProfile(HexBufferRead& buffer, const StructSettings& layout)
{
    auto profile = std::make_unique<ParsedProfile>();
    QMap<QString, QString> properties;
    std::optional<int> expectedChecksum;
    const QList<StructSetting*> members = layout.getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        const QString name = setting->descriptiveName;
        if (name == ProfileConventions::type) {
            continue;
        }
        if (name == ProfileConventions::checksum) {
            expectedChecksum = HexUtility::getChecksumFromChecksumTotal(buffer.sumBytesStruct());
        }
        const QString value = readValue(buffer, *setting);
        if (!storeFlag(*profile, name, value)) {
            properties.insert(XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(name),
                              value);
        }
    }
    if (buffer.isPastEnd()) {
        return nullptr;
    }
    properties.insert(ProfileConventions::chemistry, layout.getDescriptiveName());
    if (expectedChecksum) {
        checkChecksum(*expectedChecksum, properties);
    }
    profile->setProperties(properties);
    profile->setParent(this);
    return profile.release();
}

StructSettings* ReadFromHEX::getProfileFromType(const Generator* generator, int type)
{
    if (typeOf(generator->getGlobalSettings()) == type) {
        return generator->getGlobalSettings();
    }
    const QList<StructSettings*> chemistries = generator->getChemistrySettings();
    for (StructSettings* chemistry : chemistries) {
        if (typeOf(chemistry) == type) {
            return chemistry;
        }
    }
    return nullptr;
}

/// Returns the value of the layout's first setting; -1, which is not a valid type, for a layout
/// without settings.
int ReadFromHEX::typeOf(const StructSettings* layout)
{
    const auto known = types.constFind(layout);
    if (known != types.constEnd()) {
        return *known;
    }
    // A chemistry is a template without values; only a copy has them.
    const std::unique_ptr<StructSettings> copy = layout->deepCopy();
    copy->buildFormulaTrees();
    const QList<StructSetting*> members = copy->getOriginalOrderStructSettings();
    const int type = members.isEmpty() ? -1 : members.first()->getValue().toInt();
    types.insert(layout, type);
    return type;
}
} // namespace HEXGeneratorParser
