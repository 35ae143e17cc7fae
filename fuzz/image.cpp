// The charger's profile image under the demo's schema. An input is a byte of options and up to 2048
// bytes of image, the rest erased.

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "IntelHexFile/hexfile.h"
#include "base/xmlutility.h"
#include "profileimport/parsedprofile.h"
#include "support/fuzztarget.h"

#include <algorithm>
#include <vector>

using HEXGeneratorParser::HexUtility;
using HEXGeneratorParser::ReadFromHEX;
using HEXGeneratorParser::WriteToHEX;
using HParser::Generator;
using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
constexpr int repairsChecksums =
    1; // an option: otherwise hardly any structure would be read completely
const QString checksumName = QStringLiteral("checksum");

/// Returns the position of data byte `index` of a structure: every fourth byte of the image is
/// padding.
int imageOffset(int index)
{
    return index / 3 * 4 + index % 3;
}

/// Returns the number of data bytes of a structure before its checksum.
int bytesBeforeChecksum(const StructSettings& layout)
{
    int bits = 0;
    const QList<StructSetting*> members = layout.getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        if (setting->descriptiveName == checksumName) {
            break;
        }
        bits += setting->size != QLatin1String("auto") ? setting->size.toInt()
                : setting->isArray                     ? 8 * setting->arraySize
                                   : 8 * HexUtility::calculateByteCount(setting->variableDataType);
    }
    return bits / 8;
}

void repairChecksums(QByteArray& image)
{
    static ReadFromHEX reader; // determines the types once
    int start = 0;
    while (start < image.size()) {
        const StructSettings* layout = reader.getProfileFromType(
            &FuzzTarget::demoSchema(), static_cast<unsigned char>(image.at(start)));
        const int length = layout != nullptr ? HexUtility::getChemistrySize(layout) : 0;
        if (length == 0 || start + length > image.size()) {
            return;
        }
        const int checksum = start + imageOffset(bytesBeforeChecksum(*layout));
        int sum = 0;
        for (int i = start; i < checksum; ++i) {
            sum += static_cast<unsigned char>(image.at(i));
        }
        image[checksum] = static_cast<char>(HexUtility::getChecksumFromChecksumTotal(sum));
        start += length;
    }
}

QByteArray imageOf(const std::uint8_t* data, std::size_t size)
{
    QByteArray image = FuzzTarget::bytesOf(data + 1, size - 1).left(HexUtility::imageSize);
    image.append(QByteArray(HexUtility::imageSize - image.size(), '\xFF'));
    if ((data[0] & repairsChecksums) != 0) {
        repairChecksums(image);
    }
    return image;
}

QString hexFileOf(QByteArray image)
{
    auto* bytes = reinterpret_cast<unsigned char*>(image.data());
    HexUtility::fixBytesAlignment(bytes, image.size());
    const QString path = FuzzTarget::scratchFile(QStringLiteral("image.hex"), {});
    FILE* file = std::fopen(path.toLocal8Bit().constData(), "w");
    FUZZ_EXPECT(file != nullptr);
    FUZZ_EXPECT(
        IntelHexFile::makenewhexfile(bytes, HexUtility::imageSize, file, 0, 4, 64, 16,
                                     2L * FuzzTarget::demoSchema().getProfileStartWordAddress())
        == 0);
    std::fputs(":00000001FF\n", file);
    std::fclose(file);
    return path;
}

QString valueOf(const ParsedProfile& parsed, const StructSetting& setting)
{
    const auto text = [](bool flag) {
        return flag ? QStringLiteral("true") : QStringLiteral("false");
    };
    if (setting.descriptiveName == QLatin1String("active")) {
        return text(parsed.getActiveStatus());
    }
    if (setting.descriptiveName == QLatin1String("default")) {
        return text(parsed.getDefaultStatus());
    }
    if (setting.descriptiveName == QLatin1String("modifiable")) {
        return text(parsed.getModifiableStatus());
    }
    return parsed.getProperties().value(
        XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(setting.descriptiveName));
}

/// Returns the profile with the values read; nothing for a profile that an import leaves out or
/// whose texts the image cannot hold: beyond ASCII, or without room for the terminating zero.
std::unique_ptr<StructSettings> profileOf(const ParsedProfile& parsed)
{
    std::unique_ptr<StructSettings> profile = FuzzTarget::demoSchema().getProfileSettings(
        parsed.getProperties().value(QStringLiteral("chemistry")));
    if (profile == nullptr) {
        return nullptr;
    }
    profile->buildFormulaTrees();
    const QList<StructSetting*> members = profile->getOriginalOrderStructSettings();
    for (StructSetting* setting : members) {
        const QString value = valueOf(parsed, *setting);
        const bool isText = setting->settingType == StructSetting::STRING
                            || setting->settingType == StructSetting::LIST;
        if (isText
            && (value.toUtf8().size() != value.size() || value.size() >= setting->arraySize)) {
            return nullptr;
        }
        if (setting->descriptiveName != QLatin1String("type")) {
            setting->storeValueFromText(value);
        }
    }
    return profile;
}

void checkSame(const ParsedProfile& one, const ParsedProfile& other)
{
    QMap<QString, QString> expected = one.getProperties();
    QMap<QString, QString> found = other.getProperties();
    expected.remove(checksumName); // it also covers the bytes after a text's zero
    found.remove(checksumName);
    FUZZ_EXPECT(found == expected);
    FUZZ_EXPECT(one.getActiveStatus() == other.getActiveStatus());
    FUZZ_EXPECT(one.getDefaultStatus() == other.getDefaultStatus());
    FUZZ_EXPECT(one.getModifiableStatus() == other.getModifiableStatus());
}

void checkSameWhenWrittenAgain(const QList<ParsedProfile*>& profiles)
{
    std::vector<std::unique_ptr<StructSettings>> owned;
    QList<StructSettings*> writable;
    QList<const ParsedProfile*> written;
    for (const ParsedProfile* parsed : profiles) {
        if (std::unique_ptr<StructSettings> profile = profileOf(*parsed)) {
            writable.append(profile.get());
            written.append(parsed);
            owned.push_back(std::move(profile));
        }
    }
    if (writable.isEmpty()) {
        return; // a file without profiles has no image, not an erased one
    }
    Generator& schema = FuzzTarget::demoSchema();
    const QString path = FuzzTarget::scratchPath(QStringLiteral("again.hex"));
    FUZZ_EXPECT(WriteToHEX().write(path, writable, schema.getGlobalSettings(),
                                   schema.getProfileStartWordAddress()));
    ReadFromHEX reader;
    FUZZ_EXPECT(reader.read(path, schema.getProfileStartWordAddress()));
    const int count = writable.size();
    if (count > HexUtility::numProfilesAllowed(&schema)) {
        return; // after this many the image has no end mark
    }
    const QList<ParsedProfile*> again = reader.parseProfiles(&schema);
    FUZZ_EXPECT(again.size() == count);
    for (int i = 0; i < count; ++i) {
        checkSame(*written.at(i), *again.at(i));
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArray image = imageOf(data, size);
    Generator& schema = FuzzTarget::demoSchema();
    ReadFromHEX reader;
    FUZZ_EXPECT(reader.read(hexFileOf(image), schema.getProfileStartWordAddress()));
    FUZZ_EXPECT(std::equal(
        image.cbegin(), image.cend(), reader.getBinaryData(),
        [](char one, unsigned char other) { return static_cast<unsigned char>(one) == other; }));
    QList<ParsedProfile*> profiles;
    try {
        profiles = reader.parseProfiles(&schema);
    } catch (int error) {
        FUZZ_EXPECT(error == ReadFromHEX::CHECKSUM_ERROR || error == ReadFromHEX::TYPE_ERROR);
        return 0;
    }
    checkSameWhenWrittenAgain(profiles);
    return 0;
}
