#pragma once

#include "rescue/replaceguard.h"

#include <QObject>
#include <QString>

class ProfileBackups;
class QWidget;

namespace HEXGeneratorParser
{
class HEXManager;
}

namespace UploadDownload
{
/// Moves the profile list between the editor and the charger, by way of Intel HEX files in the
/// working folder.
class UploadDownloadManager : public QObject
{
    Q_OBJECT

public:
    /// `manager` is borrowed. `parent` is the main window.
    UploadDownloadManager(HEXGeneratorParser::HEXManager* manager, QObject* parent);

    /// What is asked before the charger's profiles replace the list; nothing is asked without one.
    void setReplaceGuard(ReplaceGuard guard) { replaceGuard = std::move(guard); }

    /// Where the list is kept after it was written or read; nowhere without them. Borrowed.
    void setBackups(ProfileBackups* profileBackups) { backups = profileBackups; }

    /// Tells why a file could not be imported: `error` is what HEXManager::importProfiles() throws.
    static int showImportError(QWidget* parent, int error);

signals:
    /// The charger holds the list as it is: it has just been written, or read into an empty list.
    void listWritten();

    /// The list is to be emptied without a question, before the charger's profiles replace it.
    void deleteAllProfiles();

public slots:
    /// Writes the list to a file and opens the dialog that brings it to the charger.
    void on_writeButtonPressed();

    /// Opens the dialog that reads the charger's profiles into a file.
    void on_readButtonPressed();

    /// Brings what was read from the charger into the list, added to it or in its place.
    void importProfiles();

private:
    QWidget* dialogParent() const;

    HEXGeneratorParser::HEXManager* hexManager;
    ReplaceGuard replaceGuard;
    ProfileBackups* backups = nullptr;
    const QString downloadFileName = QStringLiteral("downloadedProfiles.hex");
    const QString uploadFileName = QStringLiteral("profilesToUpload.hex");
};
} // namespace UploadDownload
