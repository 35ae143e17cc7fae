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
/// Moves the profile list between the editor and the charger, through Intel HEX files in the
/// working folder.
class UploadDownloadManager : public QObject
{
    Q_OBJECT

public:
    /// `manager` is borrowed. `parent` is the main window.
    UploadDownloadManager(HEXGeneratorParser::HEXManager* manager, QObject* parent);

    /// Sets the function called before the charger's profiles replace the list; without one the
    /// list is replaced.
    void setReplaceGuard(ReplaceGuard guard) { replaceGuard = std::move(guard); }

    /// Sets where copies of the list are kept after it was written or read; without them no copy is
    /// kept. Borrowed.
    void setBackups(ProfileBackups* profileBackups) { backups = profileBackups; }

signals:
    /// Emitted when the charger holds the list as it is: it has just been written, or read into an
    /// empty list.
    void listWritten();

    /// Emitted to empty the list without asking, before the charger's profiles replace it.
    void deleteAllProfiles();

public slots:
    /// Writes the list to a file and opens the dialog that writes the file to the charger.
    void on_writeButtonPressed();

    /// Opens the dialog that reads the charger's profiles into a file.
    void on_readButtonPressed();

    /// Adds the profiles read from the charger to the list, or replaces the list with them.
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
