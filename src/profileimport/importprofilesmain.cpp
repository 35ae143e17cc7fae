#include "profileimport/importprofilesmain.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "messagedialogs.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"
#include "quotedtext.h"
#include "xmlformat/xmlutility.h"

#include <QMessageBox>

#include <algorithm>
#include <memory>

using HParser::StructSetting;
using HParser::StructSettings;

namespace ImportProfiles
{
namespace
{
QString chemistryOf(const ParsedProfile& parsed)
{
    return parsed.getProperties().value(QStringLiteral("chemistry"));
}

/// How a message names a profile: its title, where it has one, and its chemistry.
QString shownName(const ParsedProfile& parsed)
{
    const QString title = parsed.getProperties().value(QStringLiteral("title"));
    const QString chemistry = quotedText(chemistryOf(parsed));
    return title.isEmpty() ? chemistry
                           : QStringLiteral("%1 (chemistry %2)").arg(quotedText(title), chemistry);
}
} // namespace

ImportProfilesMain::ImportProfilesMain(QWidget* dialogParent, HParser::Generator* settingsGenerator,
                                       QObject* parent)
    : QObject(parent), parentWidget(dialogParent), generator(settingsGenerator)
{}

void ImportProfilesMain::importProfiles(const QList<ParsedProfile*>& parsedProfiles,
                                        const QString& fileName)
{
    QStringList leftOut;
    emit importStarted();
    for (const ParsedProfile* parsed : parsedProfiles) {
        if (isKnown(parsed)) {
            importProfile(*parsed);
        } else {
            leftOut.append(shownName(*parsed));
        }
    }
    emit importFinished();
    if (!leftOut.isEmpty()) {
        MessageDialogs::profilesLeftOut(parentWidget, leftOut, fileName);
    }
    tellChanges();
}

void ImportProfilesMain::tellChanges()
{
    if (!report.isEmpty()) {
        const QString text = report.text();
        report.clear();
        MessageDialogs::importChanges(parentWidget, text);
    }
}

bool ImportProfilesMain::isKnown(const ParsedProfile* parsed) const
{
    return generator->hasChemistry(chemistryOf(*parsed));
}

bool ImportProfilesMain::canImportAny(const QList<ParsedProfile*>& parsedProfiles) const
{
    return std::any_of(parsedProfiles.cbegin(), parsedProfiles.cend(),
                       [this](const ParsedProfile* parsed) { return isKnown(parsed); });
}

void ImportProfilesMain::importProfile(const ParsedProfile& parsed)
{
    auto profile = std::make_unique<ProfileSettings>();
    profile->setChemistry(chemistryOf(parsed), generator);
    profile->setModifiable(parsed.getModifiableStatus());
    storeValues(parsed, profile->settings);
    report.examine(quotedText(profile->getTitle()), parsed.getProperties(), *profile->settings);
    emit profileReadyForImport(profile.release(), parsed.getActiveStatus(),
                               parsed.getDefaultStatus());
}

void ImportProfilesMain::storeValues(const ParsedProfile& parsed, StructSettings* settings)
{
    const QMap<QString, QString> properties = parsed.getProperties();
    const QList<StructSetting*> visible = settings->getStructSettings();
    for (StructSetting* setting : visible) {
        setting->storeValueFromText(
            getValueFromMapAndDescriptiveName(properties, setting->descriptiveName));
    }
    settings->setAdvancedSettingsEdited(getAdvancedSettingsEdited(settings));
}

QString ImportProfilesMain::getValueFromMapAndDescriptiveName(
    const QMap<QString, QString>& properties, const QString& descriptiveName)
{
    return properties.value(
        XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(descriptiveName));
}

bool ImportProfilesMain::getAdvancedSettingsEdited(const StructSettings* settings)
{
    const QList<StructSetting*> visible = settings->getStructSettings();
    return std::any_of(visible.cbegin(), visible.cend(), [](const StructSetting* setting) {
        return !setting->isBasic && differsFromDefault(*setting);
    });
}

bool ImportProfilesMain::differsFromDefault(const StructSetting& setting)
{
    switch (setting.settingType) {
    case StructSetting::NUM: {
        const double value = std::get<HParser::Formula*>(setting.defaultValue)->toDouble();
        const double standard = setting.setInBoundsAndDecPlaces(value);
        // Shifted by one, since a relative comparison with 0 is never fuzzy.
        return !qFuzzyCompare(setting.number() + 1, standard + 1);
    }
    case StructSetting::BOOL:
        return setting.isOn() != std::get<bool>(setting.defaultValue);
    case StructSetting::STRING:
    case StructSetting::LIST:
        return setting.getValue() != std::get<QString>(setting.defaultValue);
    case StructSetting::UNKNOWN:
        break;
    }
    return false;
}

bool ImportProfilesMain::getGlobalSettingsSameAsCurrentOnes(const ParsedProfile* parsed) const
{
    const QMap<QString, QString> properties = parsed->getProperties();
    const QList<StructSetting*> current = generator->getGlobalSettings()->getStructSettings();
    return std::all_of(current.cbegin(), current.cend(), [&](const StructSetting* setting) {
        return setting->getValue()
               == getValueFromMapAndDescriptiveName(properties, setting->descriptiveName);
    });
}

void ImportProfilesMain::importGlobalSettings(const ParsedProfile* parsed)
{
    if (getGlobalSettingsSameAsCurrentOnes(parsed)) {
        return;
    }
    const int answer = MessageDialogs::question(
        parentWidget, QStringLiteral("Import Global Settings?"),
        QStringLiteral("The global settings in the file you chose are different than the ones you "
                       "currently have. Do you want to overwrite the existing settings?"));
    if (answer == QMessageBox::Yes) {
        HParser::StructSettings* globalSettings = generator->getGlobalSettings();
        storeValues(*parsed, globalSettings);
        report.examine(globalSettings->getDescriptiveName(), parsed->getProperties(),
                       *globalSettings);
    }
}
} // namespace ImportProfiles
