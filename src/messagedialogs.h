#pragma once

#include <Qt>

class QString;
class QStringList;
class QWidget;
class VersionString;

/// The application's standard messages, one function each.
///
/// Every function shows a modal message box over `parent` and returns its result, the button
/// pressed, unless it says otherwise.
///
/// The text of a message belongs here if several classes show it, or if it is about a file that was
/// read or written. A class that refuses a command, or asks before it carries one out, contains that
/// text itself and shows it with message() or question(). The messages about the editor's folder are
/// in InstallationMessages, those of the firmware tool in FirmwareErrors and FirmwareMessageDialogs.
class MessageDialogs
{
public:
    MessageDialogs() = delete;

    static int helpKelvaronProfileEditor(QWidget* parent);
    static int aboutKelvaronProfileEditor(QWidget* parent);

    /// Returns Yes or No; No is the default.
    static int askDeleteAllProfiles(QWidget* parent);

    /// Returns QMessageBox::Yes to add the profiles, QMessageBox::No (also when closed) to replace
    /// the list.
    static int askAppendProfiles(QWidget* parent);

    // Kept: part of the interface; nothing shows them in this version.
    static int kelvaronFirmwareToolCorrupt(QWidget* parent);
    static int firmwareToolMissing(QWidget* parent);
    static int corruptCBFile(QWidget* parent);

    static int mainFolderNotFound(QWidget* parent);
    static int cbFileMissing(QWidget* parent);
    static int suplMissing(QWidget* parent);
    static int deviceTxtMissing(QWidget* parent);
    static int hexImportReadError(QWidget* parent);
    static int hexImportChecksumError(QWidget* parent);
    static int hexImportTypeError(QWidget* parent);
    static int xmlImportReadError(QWidget* parent);
    static int editModeProfilesDeletion(QWidget* parent);
    static int noBundlesFound(QWidget* parent);
    static int firmwareDownloadNotNeeded(QWidget* parent);
    static int firmwareCheckerError(QWidget* parent);
    static int firmwareDownloaded(QWidget* parent);
    static int currentSoftwareTooOld(QWidget* parent, const VersionString& bundleVersion,
                                     const VersionString& requiredVersion);

    /// Lists the profiles that were left out because the schema does not have their chemistries,
    /// and names the file that still has them (may be empty).
    static int profilesLeftOut(QWidget* parent, const QStringList& profiles,
                               const QString& fileName);

    /// Before profiles are written to an image: lists the texts that the image cannot hold, one
    /// line each. Returns Yes to continue anyway.
    static int askUnstorableTexts(QWidget* parent, const QStringList& texts);

    /// After an import: lists what does not match the schema, one line each.
    static int importChanges(QWidget* parent, const QString& changes);

    /// After a newer bundle was loaded: lists what in the list does not match its schema, one line
    /// each, and names the file with the previous list.
    static int reloadChanges(QWidget* parent, const QString& changes, const QString& fileName);

    /// After an import from an incomplete file: reports the error and how many profiles were read
    /// before it.
    static int xmlFileBroken(QWidget* parent, const QString& error, int profilesRead);

    /// After profiles were written into a file of this format, "XML" or "HEX", or could not be.
    static int exportStatus(QWidget* parent, const QString& format, bool isWritten);

    /// After an import from an XML file that is not a profile file.
    static int xmlFileHoldsNoProfiles(QWidget* parent);

    /// Before the profile list is backed up for a new bundle and the backup fails.
    static int backupFailed(QWidget* parent);

    /// Before the list is replaced, when saving it to `backupFile` has failed. Returns Yes to
    /// replace it anyway, or No, the default.
    static int askReplaceWithoutBackup(QWidget* parent, const QString& backupFile);

    /// Reports that nothing was done because another program has the serial port; see
    /// PortLock::holder().
    static int portInUse(QWidget* parent, const QString& portName, const QString& holder);

    /// Reports that the program has to end because of a fatal assertion. `installedFile` may be
    /// empty; `rescueFile` is where the profiles were saved, empty if there was nothing to save.
    static int fatalError(QWidget* parent, const QString& installedFile, const QString& details,
                          const QString& rescueFile);

    /// Shows a message with an OK button. Texts with names from files or users are shown as plain
    /// text.
    static int message(QWidget* parent, const QString& title, const QString& text,
                       Qt::TextFormat format = Qt::AutoText);

    /// Asks a question with Yes and No; No is the default.
    static int question(QWidget* parent, const QString& title, const QString& text,
                        Qt::TextFormat format = Qt::AutoText);
};
