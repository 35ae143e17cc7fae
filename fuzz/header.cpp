// The schema header: whatever it says, loading it ends well or with a fatal assertion, and a schema
// that was loaded never stops the program later.

#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"
#include "support/fuzztarget.h"

#include <cmath>
#include <limits>

using HEXGeneratorParser::HexUtility;
using HEXGeneratorParser::ReadFromHEX;
using HEXGeneratorParser::WriteToHEX;
using HParser::Generator;
using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
void edit(StructSetting& setting)
{
    setting.enableAdvancedMode(true);
    switch (setting.settingType) {
    case StructSetting::NUM:
        for (const double value :
             {0.0, -1e300, 1e300, 1.5, std::numeric_limits<double>::quiet_NaN()}) {
            setting.setValue(value);
            FUZZ_EXPECT(std::isfinite(setting.number()));
        }
        break;
    case StructSetting::BOOL:
        setting.setValue(true);
        FUZZ_EXPECT(setting.isOn());
        break;
    case StructSetting::STRING:
    case StructSetting::LIST:
        setting.setValue(QString::fromUtf8("Ein l\xc3\xa4ngerer Text \xf0\x9f\x94\x8b"));
        break;
    case StructSetting::UNKNOWN:
        break;
    }
    setting.updateValue();
    for (const char* text : {"true", "-1e400", "nan", "2147483648", "", "x"}) {
        setting.storeValueFromText(QString::fromLatin1(text));
        setting.getValue();
    }
    setting.enableAdvancedMode(false);
    setting.updateValue();
}

void readImage(const Generator& generator, const QString& path)
{
    FuzzTarget::runsToItsEnd([&] {
        ReadFromHEX reader;
        if (!reader.read(path, generator.getProfileStartWordAddress())) {
            return;
        }
        try {
            reader.parseProfiles(&generator);
        } catch (int error) {
            FUZZ_EXPECT(error == ReadFromHEX::CHECKSUM_ERROR || error == ReadFromHEX::TYPE_ERROR);
        }
    });
}

void useProfile(Generator& generator, const StructSettings& chemistry)
{
    ProfileSettings profile;
    profile.setChemistry(chemistry.getDescriptiveName(), &generator);
    const QList<StructSetting*> visible = profile.settings->getStructSettings();
    for (StructSetting* setting : visible) {
        edit(*setting);
    }
    profile.getTitle();
    profile.getSubtitle();
    // What the charger cannot hold is told when it is packed.
    const QString path = FuzzTarget::scratchPath(QStringLiteral("image.hex"));
    const bool isPacked = FuzzTarget::runsToItsEnd([&] {
        WriteToHEX().write(path, {profile.settings}, generator.getGlobalSettings(),
                           generator.getProfileStartWordAddress());
    });
    if (isPacked) {
        readImage(generator, path);
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Generator generator(nullptr);
    generator.setHFileLocation(
        FuzzTarget::scratchFile(QStringLiteral("schema.cb"), FuzzTarget::bytesOf(data, size)));
    const bool isLoaded = FuzzTarget::runsToItsEnd([&generator] {
        generator.generate();
        HParser::SchemaCheck::run(generator);
        HexUtility::numProfilesAllowed(&generator);
    });
    if (!isLoaded) {
        return 0;
    }
    generator.printAllSettings();
    ProfileSettings global;
    global.makeGlobalSettings(&generator);
    const QList<StructSetting*> globalSettings = global.settings->getStructSettings();
    for (StructSetting* setting : globalSettings) {
        edit(*setting);
    }
    const QList<StructSettings*> chemistries = generator.getChemistrySettings();
    for (const StructSettings* chemistry : chemistries) {
        useProfile(generator, *chemistry);
    }
    return 0;
}
