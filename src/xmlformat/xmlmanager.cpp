#include "xmlformat/xmlmanager.h"

#include "CBGenerator/generator.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/profilerows.h"
#include "xmlformat/profiledocument.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/writetoxml.h"

#include <QFileInfo>
#include <QListWidget>
#include <QMessageBox>

namespace XMLGeneratorParser
{
XMLManager::XMLManager(QWidget* dialogParent, QListWidget* list,
                       ImportProfiles::ImportProfilesMain* profileImporter,
                       HParser::Generator* settingsGenerator, QObject* parent)
    : QObject(parent), parentWidget(dialogParent), profileList(list), generator(settingsGenerator),
      importer(profileImporter),
      fileDialog(dialogParent, QStringLiteral("XML"), ProfileFileDialog::SuffixRule::ADD_SUFFIX)
{}

bool XMLManager::exportToXML(const QString& fileName) const
{
    return WriteToXML().write(fileName, ProfileRows::widgets(*profileList),
                              generator->getGlobalSettings());
}

QString XMLManager::document() const
{
    return ProfileDocument::text(ProfileRows::profiles(*profileList),
                                 generator->getGlobalSettings());
}

void XMLManager::importFromXML(const QString& fileName, ImportOccasion occasion)
{
    ReadFromXML reader;
    if (!reader.readProfiles(fileName)) {
        MessageDialogs::xmlImportReadError(parentWidget);
        return;
    }
    deliver(reader, QFileInfo(fileName).fileName(), occasion);
}

void XMLManager::deliver(const ReadFromXML& reader, const QString& fileName,
                         ImportOccasion occasion)
{
    if (reader.getGlobalSettings() != nullptr) {
        importer->importGlobalSettings(reader.getGlobalSettings());
    }
    importer->importProfiles(reader.getProfiles(), fileName, occasion);
    if (!reader.errorText().isEmpty()) {
        MessageDialogs::xmlFileBroken(parentWidget, reader.errorText(),
                                      reader.getProfiles().size());
    } else if (reader.getProfiles().isEmpty() && !reader.isProfileFile()) {
        MessageDialogs::xmlFileHoldsNoProfiles(parentWidget);
    }
}

void XMLManager::on_exportAsXMLButtonClicked()
{
    const QString fileName = fileDialog.askFileToSave();
    if (fileName.isEmpty()) {
        return;
    }
    const bool isWritten = exportToXML(fileName);
    if (isWritten) {
        emit listSaved();
        fileDialog.rememberName(fileName);
    }
    MessageDialogs::exportStatus(parentWidget, QStringLiteral("XML"), isWritten);
}

void XMLManager::on_importFromXMLButtonClicked()
{
    const QString fileName = fileDialog.askFileToLoad();
    if (!fileName.isEmpty()) {
        loadFile(fileName);
    }
}

void XMLManager::loadFile(const QString& fileName)
{
    updateLastUsedDirectory(fileName);
    const bool replaces = profileList->count() > 0
                          && MessageDialogs::askAppendProfiles(parentWidget) == QMessageBox::No;

    // Read before the list is emptied: an unusable file must not cost the user the list.
    ReadFromXML reader;
    if (!reader.readProfiles(fileName)) {
        MessageDialogs::xmlImportReadError(parentWidget);
        return;
    }
    if (replaces && canReplaceList(reader)) {
        if (replaceGuard && !replaceGuard()) {
            return;
        }
        emit deleteAllProfiles();
    }
    const bool wasEmpty = profileList->count() == 0;
    if (!reader.getProfiles().isEmpty() && reader.errorText().isEmpty()) {
        fileDialog.rememberName(fileName);
    }
    deliver(reader, QFileInfo(fileName).fileName(), ImportOccasion::USER_IMPORT);
    if (wasEmpty && profileList->count() > 0) {
        emit listSaved();
    }
}

bool XMLManager::canReplaceList(const ReadFromXML& reader) const
{
    const bool isEmptyList =
        reader.getProfiles().isEmpty() && reader.errorText().isEmpty() && reader.isProfileFile();
    return isEmptyList || importer->canImportAny(reader.getProfiles());
}

void XMLManager::updateLastUsedDirectory(const QString& fileName)
{
    fileDialog.rememberFolder(fileName);
}
} // namespace XMLGeneratorParser
