#pragma once

#include <Qt>

class QString;
class QStringList;
class QWidget;
class VersionString;

/// The application's standard messages, a function each.
///
/// Every function shows a modal message box over `parent` and returns its result, the button
/// pressed, unless it says otherwise.
class MessageDialogs
{
public:
    MessageDialogs() = delete;

    static int helpKelvaronProfileEditor(QWidget* parent);
    static int aboutKelvaronProfileEditor(QWidget* parent);

    /// Yes or No, No the default.
    static int askDeleteAllProfiles(QWidget* parent);

    /// QMessageBox::Yes to add the profiles, QMessageBox::No (also when closed) to replace the list.
    static int askAppendProfiles(QWidget* parent);

    static int kelvaronFirmwareToolCorrupt(QWidget* parent);
    static int mainFolderNotFound(QWidget* parent);
    static int cbFileMissing(QWidget* parent);
    static int suplMissing(QWidget* parent);
    static int deviceTxtMissing(QWidget* parent);
    static int firmwareToolMissing(QWidget* parent);
    static int corruptCBFile(QWidget* parent);
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

    /// The profiles, as they are to be named, that did not come into the list because the schema does
    /// not hold their chemistries, and the file that still has them (may be empty).
    static int profilesLeftOut(QWidget* parent, const QStringList& profiles,
                               const QString& fileName);

    /// Before profiles go into an image: which of their texts it cannot hold, a line each. Yes to go
    /// on all the same.
    static int askUnstorableTexts(QWidget* parent, const QStringList& texts);

    /// After an import: what does not match the schema, a line each.
    static int importChanges(QWidget* parent, const QString& changes);

    /// After a newer bundle was taken into use: what of the list does not match its schema, a line
    /// each, and the file that holds the list as it was before.
    static int reloadChanges(QWidget* parent, const QString& changes, const QString& fileName);

    /// After an import from a file that breaks off: what was wrong and how many profiles were read
    /// before it.
    static int xmlFileBroken(QWidget* parent, const QString& error, int profilesRead);

    /// After an import from an XML file that is no profile file.
    static int xmlFileHoldsNoProfiles(QWidget* parent);

    /// Before the profile list is backed up for a new bundle and the backup fails.
    static int backupFailed(QWidget* parent);

    /// Before the list is replaced and saving it to `backupFile` first has failed: Yes replaces it
    /// all the same. Yes or No, No the default.
    static int askReplaceWithoutBackup(QWidget* parent, const QString& backupFile);

    /// Nothing was done because another program has the serial port; see PortLock::holder().
    static int portInUse(QWidget* parent, const QString& portName, const QString& holder);

    /// The program has to end because of a fatal assertion. `installedFile` may be empty;
    /// `rescueFile` names where the profiles were saved, empty when there was nothing to save.
    static int fatalError(QWidget* parent, const QString& installedFile, const QString& details,
                          const QString& rescueFile);

    /// A message with an OK button. Texts with names from files or users are shown as plain text.
    static int message(QWidget* parent, const QString& title, const QString& text,
                       Qt::TextFormat format = Qt::AutoText);

    /// A question with Yes and No, No the default.
    static int question(QWidget* parent, const QString& title, const QString& text,
                        Qt::TextFormat format = Qt::AutoText);
};
