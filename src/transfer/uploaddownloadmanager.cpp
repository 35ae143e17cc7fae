#include "transfer/uploaddownloadmanager.h"

#include "HEXGeneratorParser/hexmanager.h"
#include "messagedialogs.h"
#include "rescue/profilebackups.h"
#include "transfer/uploaddownloaddialog.h"

#include <QMessageBox>
#include <QWidget>

#include <utility>

namespace UploadDownload
{
UploadDownloadManager::UploadDownloadManager(HEXGeneratorParser::HEXManager* manager,
                                             QObject* parent)
    : QObject(parent), hexManager(manager)
{}

void UploadDownloadManager::on_writeButtonPressed()
{
    const int numProfiles = hexManager->getCurrentNumProfiles();
    const int numAllowed = hexManager->getNumProfilesAllowed();
    if (numProfiles > numAllowed) {
        MessageDialogs::message(
            dialogParent(), QStringLiteral("Upload profiles status"),
            QStringLiteral("You currently have %1 profiles, but only %2 profiles can be exported "
                           "to the Kelvaron. Please delete some profiles and try again")
                .arg(numProfiles)
                .arg(numAllowed));
        return;
    }
    if (!hexManager->confirmTexts()) {
        return;
    }
    if (!hexManager->exportProfiles(uploadFileName)) {
        MessageDialogs::message(
            dialogParent(), QStringLiteral("Error while uploading!"),
            QStringLiteral("An error occured while exporting profiles to HEX. Please try again."));
        return;
    }
    auto* dialog = new UploadDownloadDialog(true, dialogParent()); // deletes itself when closed
    dialog->setFileLocation(uploadFileName);
    dialog->setImage(hexManager->image());
    connect(dialog, &UploadDownloadDialog::finished, this, &UploadDownloadManager::listWritten);
    if (backups != nullptr) {
        // The list may have changed before a transfer ends whose dialog was closed. Its text is
        // released then, because the worker lives as long as the window.
        dialog->setOnWritten(backups, [this, list = backups->current()]() mutable {
            backups->keep(ProfileBackups::Occasion::WRITTEN, std::exchange(list, {}));
        });
    }
}

void UploadDownloadManager::on_readButtonPressed()
{
    auto* dialog = new UploadDownloadDialog(false, dialogParent()); // deletes itself when closed
    dialog->setFileLocation(downloadFileName);
    connect(dialog, &UploadDownloadDialog::finished, this, &UploadDownloadManager::importProfiles);
}

void UploadDownloadManager::importProfiles()
{
    if (hexManager->getCurrentNumProfiles() > 0
        && MessageDialogs::askAppendProfiles(dialogParent()) == QMessageBox::No) {
        if (replaceGuard && !replaceGuard()) {
            return;
        }
        emit deleteAllProfiles();
    }
    const bool wasEmpty = hexManager->getCurrentNumProfiles() == 0;
    try {
        hexManager->importProfiles(downloadFileName);
        if (wasEmpty) {
            emit listWritten();
        }
    } catch (int error) {
        HEXGeneratorParser::HEXManager::showImportError(dialogParent(), error);
        return;
    }
    if (backups != nullptr) {
        backups->keep(ProfileBackups::Occasion::READ);
    }
}

QWidget* UploadDownloadManager::dialogParent() const
{
    return qobject_cast<QWidget*>(parent());
}
} // namespace UploadDownload
