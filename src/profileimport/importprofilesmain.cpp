#include "profileimport/importprofilesmain.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsettings.h"
#include "base/quotedtext.h"
#include "messagedialogs.h"
#include "profileimport/importedvalues.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"

#include <QMessageBox>

#include <algorithm>
#include <memory>

using HParser::StructSettings;

namespace ImportProfiles
{
namespace
{
/// Returns the name of a profile in messages: its title, if any, and its chemistry.
QString shownName(const ParsedProfile& parsed)
{
    const QString title = parsed.getProperties().value(QStringLiteral("title"));
    const QString chemistry = quotedText(ImportedValues::chemistryOf(parsed));
    return title.isEmpty() ? chemistry
                           : QStringLiteral("%1 (chemistry %2)").arg(quotedText(title), chemistry);
}
} // namespace

ImportProfilesMain::ImportProfilesMain(QWidget* dialogParent, HParser::Generator* settingsGenerator,
                                       QObject* parent)
    : QObject(parent), parentWidget(dialogParent), generator(settingsGenerator)
{}

void ImportProfilesMain::importProfiles(const QList<ParsedProfile*>& parsedProfiles,
                                        const QString& fileName, ImportOccasion occasion)
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
    reportChanges(fileName, occasion);
}

void ImportProfilesMain::reportChanges(const QString& fileName, ImportOccasion occasion)
{
    if (report.isEmpty()) {
        return;
    }
    const QString text = report.text();
    report.clear();
    if (occasion == ImportOccasion::BUNDLE_RELOAD) {
        MessageDialogs::reloadChanges(parentWidget, text, fileName);
    } else {
        MessageDialogs::importChanges(parentWidget, text);
    }
}

bool ImportProfilesMain::isKnown(const ParsedProfile* parsed) const
{
    return generator->hasChemistry(ImportedValues::chemistryOf(*parsed));
}

bool ImportProfilesMain::canImportAny(const QList<ParsedProfile*>& parsedProfiles) const
{
    return std::any_of(parsedProfiles.cbegin(), parsedProfiles.cend(),
                       [this](const ParsedProfile* parsed) { return isKnown(parsed); });
}

void ImportProfilesMain::importProfile(const ParsedProfile& parsed)
{
    std::unique_ptr<ProfileSettings> profile = ImportedValues::makeProfile(parsed, generator);
    report.examine(quotedText(profile->getTitle()), parsed.getProperties(), *profile->settings);
    emit profileReadyForImport(profile.release(), parsed.getActiveStatus(),
                               parsed.getDefaultStatus());
}

QString ImportProfilesMain::getValueFromMapAndDescriptiveName(
    const QMap<QString, QString>& properties, const QString& descriptiveName)
{
    return ImportedValues::valueFor(properties, descriptiveName);
}

bool ImportProfilesMain::getAdvancedSettingsEdited(const StructSettings* settings)
{
    return ImportedValues::hasEditedAdvancedSettings(*settings);
}

bool ImportProfilesMain::getGlobalSettingsSameAsCurrentOnes(const ParsedProfile* parsed) const
{
    return ImportedValues::equal(*parsed, *generator->getGlobalSettings());
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
        ImportedValues::store(*parsed, globalSettings);
        report.examine(globalSettings->getDescriptiveName(), parsed->getProperties(),
                       *globalSettings);
    }
}
} // namespace ImportProfiles
