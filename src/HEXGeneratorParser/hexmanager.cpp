#include "HEXGeneratorParser/hexmanager.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/storabletext.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "HEXGeneratorParser/writetohex.h"
#include "base/fatalassertion.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/profilerows.h"
#include "profiles/profilesettings.h"

#include <QFileInfo>
#include <QListWidget>
#include <QMessageBox>

namespace HEXGeneratorParser
{
HEXManager::HEXManager(QWidget* dialogParent, QListWidget* list,
                       HParser::Generator* settingsGenerator,
                       ImportProfiles::ImportProfilesMain* profileImporter, QObject* parent)
    : QObject(parent), parentWidget(dialogParent), profileList(list), generator(settingsGenerator),
      importer(profileImporter), numProfilesAllowed(getNumProfilesAllowed()),
      fileDialog(dialogParent, QStringLiteral("HEX"), ProfileFileDialog::SuffixRule::KEEP_NAME)
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
    for (const ProfileSettings* profile : ProfileRows::profiles(*profileList)) {
        structs.append(profile->settings);
    }
    KELVARON_ASSERT_TEXT(structs.size() <= numProfilesAllowed,
                         "profiles.size() <= numProfilesAllowed");
    return structs;
}

bool HEXManager::confirmTexts() const
{
    QStringList complaints;
    for (const ProfileSettings* profile : ProfileRows::profiles(*profileList)) {
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

int HEXManager::showImportError(QWidget* parent, int error)
{
    switch (error) {
    case ReadFromHEX::CHECKSUM_ERROR:
        return MessageDialogs::hexImportChecksumError(parent);
    case ReadFromHEX::TYPE_ERROR:
        return MessageDialogs::hexImportTypeError(parent);
    default:
        return MessageDialogs::hexImportReadError(parent);
    }
}

void HEXManager::on_exportAsHEXButtonClicked()
{
    const QString fileName = fileDialog.askFileToSave();
    if (fileName.isEmpty()) {
        return;
    }
    if (getCurrentNumProfiles() > numProfilesAllowed) {
        MessageDialogs::message(
            parentWidget, QStringLiteral("Export to HEX status"),
            QStringLiteral("You currently have %1 profiles, but only %2 profiles can be exported "
                           "to a single HEX file. Please delete some profiles and try again")
                .arg(getCurrentNumProfiles())
                .arg(numProfilesAllowed));
        return;
    }
    if (!confirmTexts()) {
        return;
    }
    MessageDialogs::exportStatus(parentWidget, QStringLiteral("HEX"), exportProfiles(fileName));
}

void HEXManager::on_importFromHEXButtonClicked()
{
    const QString fileName = fileDialog.askFileToLoad();
    if (fileName.isEmpty()) {
        return;
    }
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
    fileDialog.rememberFolder(fileName);
}
} // namespace HEXGeneratorParser
