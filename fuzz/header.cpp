// The schema header: whatever it contains, loading it succeeds or ends with a fatal assertion, and
// a loaded schema never ends the program later. A usable header is loaded, and its profiles are packed
// and read; in any other the review finds something fatal.
//
// Widgets are slow: only every fourth size of an input has its settings shown in grids.

#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "base/textfile.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"
#include "schemareview/headerreview.h"
#include "settingsui/settingsgridlayout.h"
#include "settingsui/settingslineedit.h"
#include "support/fuzzgui.h"
#include "support/fuzztarget.h"

#include <QCheckBox>
#include <QStringList>
#include <QWidget>

#include <algorithm>
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
constexpr std::size_t gridsEvery = 4;

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

/// Returns the values that an edit may change, in order.
QStringList valuesOf(const StructSettings& settings)
{
    QStringList values;
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        const bool isFlagOfList = setting->descriptiveName == QLatin1String("active")
                                  || setting->descriptiveName == QLatin1String("default");
        if (settings.getGlobal() || !isFlagOfList) {
            values.append(setting->getValue());
        }
    }
    return values;
}

void useEveryEditor(const QWidget& pane, const QString& text)
{
    const QList<QCheckBox*> boxes = pane.findChildren<QCheckBox*>();
    for (QCheckBox* box : boxes) {
        box->click();
    }
    const QList<SettingsLineEdit*> editors = pane.findChildren<SettingsLineEdit*>();
    for (SettingsLineEdit* editor : editors) {
        editor->setText(text);
        editor->on_editingFinished();
    }
}

/// Makes one edit that is saved and one that is cancelled.
void editInGrid(StructSettings& settings)
{
    constexpr int mostRows = 40;
    if (settings.getStructSettings().size() > mostRows) {
        return;
    }
    const FuzzGui::DialogAnswers answers;
    QWidget pane;
    auto* grid = new SettingsGridLayout(&settings, &pane);
    pane.setLayout(grid);
    grid->startEditing();
    useEveryEditor(pane, QStringLiteral("12.5"));
    grid->saveSettings();
    const QStringList saved = valuesOf(settings);
    grid->startEditing();
    useEveryEditor(pane, QStringLiteral("-1e9"));
    grid->cancelSettings();
    FUZZ_EXPECT(valuesOf(settings) == saved);
}

/// Returns whether the review finds the header unusable for the editor.
bool isRefused(const QString& text)
{
    const Problems problems = HParser::HeaderReview::problems(text);
    return std::any_of(problems.begin(), problems.end(), [](const Problem& problem) {
        return problem.severity == Problem::Severity::Fatal;
    });
}

bool readImage(const Generator& generator, const QString& path)
{
    return FuzzTarget::runsToItsEnd([&] {
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

void useProfile(Generator& generator, const StructSettings& chemistry, bool showsGrids,
                bool mustBePacked)
{
    ProfileSettings profile;
    profile.setChemistry(chemistry.getDescriptiveName(), &generator);
    const QList<StructSetting*> visible = profile.settings->getStructSettings();
    for (StructSetting* setting : visible) {
        edit(*setting);
    }
    if (showsGrids) {
        editInGrid(*profile.settings);
    }
    profile.getTitle();
    profile.getSubtitle();
    // Packing reports what the charger cannot hold.
    const QString path = FuzzTarget::scratchPath(QStringLiteral("image.hex"));
    const bool isPacked = FuzzTarget::runsToItsEnd([&] {
        WriteToHEX().write(path, {profile.settings}, generator.getGlobalSettings(),
                           generator.getProfileStartWordAddress());
    });
    FUZZ_EXPECT(isPacked || !mustBePacked);
    if (isPacked) {
        const bool isRead = readImage(generator, path);
        FUZZ_EXPECT(isRead || !mustBePacked);
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzGui::startApplication();
    Generator generator(nullptr);
    generator.setHFileLocation(
        FuzzTarget::scratchFile(QStringLiteral("schema.cb"), FuzzTarget::bytesOf(data, size)));
    const bool isLoaded = FuzzTarget::runsToItsEnd([&generator] {
        generator.generate();
        HParser::SchemaCheck::run(generator);
        HexUtility::numProfilesAllowed(&generator);
    });
    const QString text = TextFile::read(generator.getHFileLocation()).value_or(QString());
    const bool isUsable = HParser::SchemaCheck::isUsable(text);
    FUZZ_EXPECT(isLoaded || !isUsable);
    FUZZ_EXPECT(isUsable || isRefused(text));
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
    const bool showsGrids = size % gridsEvery == 0;
    if (showsGrids) {
        editInGrid(*global.settings);
    }
    const QList<StructSettings*> chemistries = generator.getChemistrySettings();
    for (const StructSettings* chemistry : chemistries) {
        useProfile(generator, *chemistry, showsGrids,
                   isUsable && HexUtility::numProfilesAllowed(&generator) > 0);
    }
    return 0;
}
