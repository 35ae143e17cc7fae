#include "HEXGeneratorParser/hexmanager.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/storabletext.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "base/fatalassertion.h"
#include "filedialogs/filedialogs.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilesettings.h"

#include <QFileInfo>
#include <QListWidget>
#include <QMessageBox>

namespace HEXGeneratorParser
{
namespace
{
const QString fileFilter = QStringLiteral("HEX files (*.hex);;Any files (*.*)");

void showImportError(QWidget* parent, int error)
{
    switch (error) {
    case ReadFromHEX::READ_ERROR:
        MessageDialogs::hexImportReadError(parent);
        break;
    case ReadFromHEX::CHECKSUM_ERROR:
        MessageDialogs::hexImportChecksumError(parent);
        break;
    case ReadFromHEX::TYPE_ERROR:
        MessageDialogs::hexImportTypeError(parent);
        break;
    default:
        break;
    }
}
} // namespace

HEXManager::HEXManager(QWidget* dialogParent, QListWidget* list,
                       HParser::Generator* settingsGenerator,
                       ImportProfiles::ImportProfilesMain* profileImporter, QObject* parent)
    : QObject(parent), parentWidget(dialogParent), profileList(list), generator(settingsGenerator),
      importer(profileImporter), numProfilesAllowed(getNumProfilesAllowed())
{}

void HEXManager::setAllSettings(HParser::Generator* newGenerator)
{
    generator = newGenerator;
    numProfilesAllowed = getNumProfilesAllowed();
}

int HEXManager::getCurrentNumProfiles() const
{
    return profileList->count();
}

int HEXManager::getNumProfilesAllowed() const
{
    return HexUtility::numProfilesAllowed(generator);
}

bool HEXManager::exportProfiles(const QString& fileName)
{
    return WriteToHEX().write(fileName, structs(), generator->getGlobalSettings(),
                              generator->getProfileStartWordAddress());
}

QByteArray HEXManager::image() const
{
    return WriteToHEX().hexFile(structs(), generator->getProfileStartWordAddress());
}

QList<HParser::StructSettings*> HEXManager::structs() const
{
    QList<HParser::StructSettings*> structs;
    for (const ProfileSettings* profile : profiles()) {
        structs.append(profile->settings);
    }
    KELVARON_ASSERT_TEXT(structs.size() <= numProfilesAllowed,
                         "profiles.size() <= numProfilesAllowed");
    return structs;
}

QList<const ProfileSettings*> HEXManager::profiles() const
{
    QList<const ProfileSettings*> found;
    for (int i = 0; i < profileList->count(); ++i) {
        const auto* item = static_cast<ProfileNameListWidget*>(profileList->item(i));
        found.append(item->getProfileName()->getProfileSettings());
    }
    return found;
}

bool HEXManager::confirmTexts() const
{
    QStringList complaints;
    for (const ProfileSettings* profile : profiles()) {
        complaints.append(StorableText::complaints(*profile->settings, profile->getTitle()));
    }
    return complaints.isEmpty()
           || MessageDialogs::askUnstorableTexts(parentWidget, complaints) == QMessageBox::Yes;
}

void HEXManager::importProfiles(const QString& fileName)
{
    ReadFromHEX reader;
    if (!reader.read(fileName, generator->getProfileStartWordAddress())) {
        throw static_cast<int>(ReadFromHEX::READ_ERROR);
    }
    importer->importProfiles(reader.parseProfiles(generator), QFileInfo(fileName).fileName());
}

void HEXManager::on_exportAsHEXButtonClicked()
{
    const QString fileName = FileDialogs::saveFileName(
        parentWidget, QStringLiteral("Select HEX File to Export Profiles"), lastUsedDirectory,
        fileFilter);
    if (fileName.isEmpty()) {
        return;
    }
    updateLastUsedDirectory(fileName);
    if (getCurrentNumProfiles() > numProfilesAllowed) {
        showExportStatus(
            QStringLiteral("You currently have %1 profiles, but only %2 profiles can be exported "
                           "to a single HEX file. Please delete some profiles and try again")
                .arg(getCurrentNumProfiles())
                .arg(numProfilesAllowed));
        return;
    }
    if (!confirmTexts()) {
        return;
    }
    showExportStatus(
        exportProfiles(fileName)
            ? QStringLiteral("The profiles have been successfully exported!")
            : QStringLiteral(
                "An error occured while exporting profiles to HEX. Please try again."));
}

void HEXManager::showExportStatus(const QString& text)
{
    MessageDialogs::message(parentWidget, QStringLiteral("Export to HEX status"), text);
}

void HEXManager::on_importFromHEXButtonClicked()
{
    const QString fileName = FileDialogs::openFileName(
        parentWidget, QStringLiteral("Select HEX File to Import Profiles"), lastUsedDirectory,
        fileFilter);
    if (fileName.isEmpty()) {
        return;
    }
    updateLastUsedDirectory(fileName);
    if (profileList->count() > 0
        && MessageDialogs::askAppendProfiles(parentWidget) == QMessageBox::No) {
        if (replaceGuard && !replaceGuard()) {
            return;
        }
        emit deleteAllProfiles();
    }
    try {
        importProfiles(fileName);
    } catch (int error) {
        showImportError(parentWidget, error);
    }
}

void HEXManager::updateLastUsedDirectory(const QString& fileName)
{
    lastUsedDirectory = QFileInfo(fileName).absolutePath();
}
} // namespace HEXGeneratorParser
