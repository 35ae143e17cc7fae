#include "xmlformat/xmlmanager.h"

#include "CBGenerator/generator.h"
#include "filedialogs/exportfilename.h"
#include "filedialogs/filedialogs.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/profilenamelistwidget.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/writetoxml.h"

#include <QFileInfo>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>

namespace XMLGeneratorParser
{
namespace
{
const QString fileFilter = QStringLiteral("XML files (*.xml);;Any files (*.*)");
}

XMLManager::XMLManager(QWidget* dialogParent, QListWidget* list,
                       ImportProfiles::ImportProfilesMain* profileImporter,
                       HParser::Generator* settingsGenerator, QObject* parent)
    : QObject(parent), parentWidget(dialogParent), profileList(list), generator(settingsGenerator),
      importer(profileImporter)
{}

bool XMLManager::exportToXML(const QString& fileName) const
{
    return WriteToXML().write(fileName, rows(), generator->getGlobalSettings());
}

QString XMLManager::document() const
{
    return WriteToXML::document(rows(), generator->getGlobalSettings());
}

QList<ProfileName*> XMLManager::rows() const
{
    QList<ProfileName*> found;
    for (int i = 0; i < profileList->count(); ++i) {
        found.append(static_cast<ProfileNameListWidget*>(profileList->item(i))->getProfileName());
    }
    return found;
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
    const QString fileName = askExportFileName();
    if (fileName.isEmpty()) {
        return;
    }
    const bool isWritten = exportToXML(fileName);
    if (isWritten) {
        emit listSaved();
        lastUsedName = QFileInfo(fileName).fileName();
    }
    MessageDialogs::message(
        parentWidget, QStringLiteral("Export to XML status"),
        isWritten ? QStringLiteral("The profiles have been successfully exported!")
                  : QStringLiteral(
                      "An error occured while exporting profiles to XML. Please try again."));
}

QString XMLManager::askExportFileName()
{
    const QPointer<XMLManager> self(this); // may be deleted with the window while a dialog is open
    QString offered = lastUsedName;
    for (;;) {
        const QString chosen = FileDialogs::saveFileName(
            parentWidget, QStringLiteral("Select XML File to Export Profiles"), lastUsedDirectory,
            fileFilter, offered);
        if (chosen.isEmpty()) {
            return {};
        }
        updateLastUsedDirectory(chosen);
        const QString completed =
            ExportFileName::complete(parentWidget, chosen, QStringLiteral("xml"));
        if (self == nullptr || !completed.isEmpty()) {
            return completed;
        }
        offered = QFileInfo(chosen).fileName(); // the user declined to replace an existing file
    }
}

void XMLManager::on_importFromXMLButtonClicked()
{
    const QString fileName = FileDialogs::openFileName(
        parentWidget, QStringLiteral("Select XML File to Import Profiles"), lastUsedDirectory,
        fileFilter);
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
        lastUsedName = QFileInfo(fileName).fileName();
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
    lastUsedDirectory = QFileInfo(fileName).absolutePath();
}
} // namespace XMLGeneratorParser
