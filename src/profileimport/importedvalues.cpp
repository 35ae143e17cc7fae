#include "profileimport/importedvalues.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/xmlutility.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"

#include <algorithm>

using HParser::StructSetting;
using HParser::StructSettings;

namespace ImportProfiles
{
std::unique_ptr<ProfileSettings> ImportedValues::makeProfile(const ParsedProfile& parsed,
                                                             HParser::Generator* generator)
{
    auto profile = std::make_unique<ProfileSettings>();
    profile->setChemistry(chemistryOf(parsed), generator);
    profile->setModifiable(parsed.getModifiableStatus());
    store(parsed, profile->settings);
    return profile;
}

QString ImportedValues::chemistryOf(const ParsedProfile& parsed)
{
    return parsed.getProperties().value(HParser::ProfileConventions::chemistry);
}

void ImportedValues::store(const ParsedProfile& parsed, StructSettings* settings)
{
    const QMap<QString, QString> properties = parsed.getProperties();
    const QList<StructSetting*> visible = settings->getStructSettings();
    for (StructSetting* setting : visible) {
        setting->storeValueFromText(valueFor(properties, setting->descriptiveName));
    }
    settings->setAdvancedSettingsEdited(hasEditedAdvancedSettings(*settings));
}

QString ImportedValues::valueFor(const QMap<QString, QString>& properties,
                                 const QString& descriptiveName)
{
    return properties.value(
        XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(descriptiveName));
}

bool ImportedValues::hasEditedAdvancedSettings(const StructSettings& settings)
{
    const QList<StructSetting*> visible = settings.getStructSettings();
    return std::any_of(visible.cbegin(), visible.cend(), [](const StructSetting* setting) {
        return !setting->isBasic && differsFromDefault(*setting);
    });
}

bool ImportedValues::equal(const ParsedProfile& parsed, const StructSettings& settings)
{
    const QMap<QString, QString> properties = parsed.getProperties();
    const QList<StructSetting*> visible = settings.getStructSettings();
    return std::all_of(visible.cbegin(), visible.cend(), [&](const StructSetting* setting) {
        return setting->getValue() == valueFor(properties, setting->descriptiveName);
    });
}

bool ImportedValues::differsFromDefault(const StructSetting& setting)
{
    switch (setting.settingType) {
    case StructSetting::NUM: {
        const double value = std::get<HParser::Formula*>(setting.defaultValue)->toDouble();
        const double standard = setting.setInBoundsAndDecPlaces(value);
        // Both are shifted by 1: the relative comparison with 0 would be exact.
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
} // namespace ImportProfiles
