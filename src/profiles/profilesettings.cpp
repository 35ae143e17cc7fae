#include "profiles/profilesettings.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalassertion.h"
#include "base/standardoutput.h"

ProfileSettings::ProfileSettings() = default;
ProfileSettings::~ProfileSettings() = default;

void ProfileSettings::setChemistry(const QString& chemistryName, HParser::Generator* generator)
{
    chemistry = chemistryName;
    ownedSettings = generator->getProfileSettings(chemistryName);
    settings = ownedSettings.get();
    KELVARON_ASSERT(settings != nullptr);
    settings->buildFormulaTrees();
    modifiableSetting =
        settings->getStructSettingByDescriptiveName(HParser::ProfileConventions::modifiableFlag);
    setModifiable(true);
}

void ProfileSettings::makeGlobalSettings(HParser::Generator* generator)
{
    settings = generator->getGlobalSettings();
    KELVARON_ASSERT(settings != nullptr);
    settings->buildFormulaTrees();
}

void ProfileSettings::setModifiable(bool modifiable)
{
    KELVARON_ASSERT(modifiableSetting != nullptr);
    modifiableSetting->setValue(modifiable);
}

bool ProfileSettings::getModifiable() const
{
    KELVARON_ASSERT(modifiableSetting != nullptr);
    return modifiableSetting->isOn();
}

QString ProfileSettings::getTitle() const
{
    KELVARON_ASSERT(settings != nullptr);
    return KELVARON_AT(settings->getStructSettings(), 0)->getValue();
}

QString ProfileSettings::getSubtitle() const
{
    KELVARON_ASSERT(settings != nullptr);
    return KELVARON_AT(settings->getStructSettings(), 1)->getValue();
}

void ProfileSettings::print() const
{
    printLine(QStringLiteral("Title : ") + getTitle());
    printLine(QStringLiteral("Subtitle : ") + getSubtitle());
}
