#include "messagedialogs.h"

#include "applicationglobalmap.h"
#include "base/buildconstants.h"
#include "base/countedtext.h"
#include "look/fittedmessagebox.h"
#include "serialports/portlock.h"
#include "versionstring.h"

#include <QDir>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QUrl>

namespace
{
QString latin1(const char* text)
{
    return QString::fromLatin1(text);
}

const char xmlImportStatus[] = "Import from XML status";

/// Returns the lines that fit into a box on the screen.
QString shortened(const QStringList& lines)
{
    constexpr int mostShown = 25;
    QString text = lines.mid(0, mostShown).join(QLatin1Char('\n'));
    if (lines.size() > mostShown) {
        text += QStringLiteral("\nand %1 more").arg(lines.size() - mostShown);
    }
    return text;
}

FittedMessageBox* textBox(QWidget* parent, const QString& title, const QString& text,
                          Qt::TextFormat format)
{
    auto* box = new FittedMessageBox(parent);
    box->setWindowTitle(title);
    box->setTextFormat(format);
    box->setText(text);
    return box;
}

/// Shows a box and deletes it. It is on the heap because its parent may be deleted, and the box
/// with it, while it is open.
int run(FittedMessageBox* box)
{
    const QPointer<FittedMessageBox> guard(box);
    const int result = box->exec();
    delete guard;
    return result;
}

int plainMessage(QWidget* parent, const char* title, const char* text)
{
    return MessageDialogs::message(parent, latin1(title), latin1(text));
}

/// `fault` is a sentence; the way out is the same for each.
int installationMessage(QWidget* parent, const char* fault)
{
    return MessageDialogs::message(parent, QStringLiteral("Installation Error"),
                                   latin1(fault)
                                       + QStringLiteral(" Please try reinstalling the program."));
}

int hexImportMessage(QWidget* parent, const char* reason)
{
    return MessageDialogs::message(
        parent, QStringLiteral("Import from HEX status"),
        QStringLiteral("An error occured while importing profiles from HEX. Please try again.")
            + latin1(reason));
}

QString helpText()
{
    return QStringLiteral(
        "<font size=\"5\"><b>Kelvaron Profile Editor Basic Usage:</b></font>"
        "<font size=\"3\"><ol>"
        "<li>Connect the USB end of the USB-&gt;TTL programming cable to your computer, and "
        "TRS end (1/8\" audio plug) to the programming adapter cable of the Kelvaron</li><br>"
        "<li>Put the Kelvaron in bootloader mode. With V0.9 or later firmware, this is done "
        "by pressing and holding both buttons to enter the setup menu, then going to "
        "advanced setup-&gt; Connect to PC. Alternately, it can be accomplished by leaving "
        "the Kelvaron powered off for 30 seconds, and then pressing and holding the lower "
        "button when AC power is applied. In bootloader mode, the OLED display screen will "
        "be completely blank. If you see the screen displaying information, then the "
        "Kelvaron is not in bootloader and cannot be reprogrammed</li><br>"
        "<li>With the Kelvaron on and in bootloader mode, you can then read and write "
        "profiles to the device by selecting the \"read from kelvaron\" and \"write to "
        "kelvaron\" buttons</li><br>"
        "<li>You will be prompted to select the COM port in a pop-up window. Usually the "
        "default is correct, but if in doubt, unplug and replug the USB cable from your "
        "computer to see which COM Port item disappears and then reappears from the "
        "list</li>"
        "</ol></font>");
}

QString aboutText()
{
    return QStringLiteral("<center><b>Kelvaron Profile Editor</b><br>Build: %1<br><br>"
                          "Kelvaron Bundle Version: v%2<br><br>"
                          "<p>Made by the Kelvaron Profile Editor authors.<br>"
                          "<a href=\"%3\">%4</a></p></center>")
        .arg(latin1(BuildConstants::buildText),
             ApplicationGlobalMap::getString(ApplicationGlobalMap::bundleVersion).toHtmlEscaped(),
             latin1(BuildConstants::productPage),
             // With a large font, the whole address would be broken after its slashes.
             QUrl(latin1(BuildConstants::productPage)).host());
}
} // namespace

int MessageDialogs::message(QWidget* parent, const QString& title, const QString& text,
                            Qt::TextFormat format)
{
    return run(textBox(parent, title, text, format));
}

int MessageDialogs::question(QWidget* parent, const QString& title, const QString& text,
                             Qt::TextFormat format)
{
    FittedMessageBox* box = textBox(parent, title, text, format);
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::No);
    return run(box);
}

int MessageDialogs::helpKelvaronProfileEditor(QWidget* parent)
{
    return message(parent, QStringLiteral("Basic Usage"), helpText());
}

int MessageDialogs::aboutKelvaronProfileEditor(QWidget* parent)
{
    return message(parent, QStringLiteral("About Kelvaron Profile Editor"), aboutText());
}

int MessageDialogs::askDeleteAllProfiles(QWidget* parent)
{
    return question(parent, QStringLiteral("Delete all profiles?"),
                    QStringLiteral("All profiles will be deleted. This operation cannot be undone. "
                                   "Continue?"));
}

int MessageDialogs::askAppendProfiles(QWidget* parent)
{
    FittedMessageBox box(parent);
    box.setWindowTitle(QStringLiteral("Add Profiles to List?"));
    box.setText(QStringLiteral("Do you want to add the imported profiles to the current list of "
                               "profiles, or replace them?<br>"));
    const QPushButton* addButton =
        box.addButton(QStringLiteral("&Add Profiles"), QMessageBox::AcceptRole);
    box.addButton(QStringLiteral("&Replace Profiles"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == addButton ? QMessageBox::Yes : QMessageBox::No;
}

int MessageDialogs::kelvaronFirmwareToolCorrupt(QWidget* parent)
{
    return plainMessage(parent, "Could not start Kelvaron Firmware Tool",
                        "Kelvaron Firmware Tool could not be started. Please try again. If the "
                        "problem persists, try reinstalling the program");
}

int MessageDialogs::mainFolderNotFound(QWidget* parent)
{
    return installationMessage(parent, "The folder KelvaronProfileEditorFiles could not be found.");
}

int MessageDialogs::cbFileMissing(QWidget* parent)
{
    return installationMessage(parent, "The file kelvaron_chemistries.cb could not be found.");
}

int MessageDialogs::suplMissing(QWidget* parent)
{
    return installationMessage(parent, "The executable supl.exe could not be found.");
}

int MessageDialogs::deviceTxtMissing(QWidget* parent)
{
    return installationMessage(parent, "The file device.txt could not be found.");
}

int MessageDialogs::firmwareToolMissing(QWidget* parent)
{
    return installationMessage(parent,
                               "The executable KelvaronFirmwareTool.exe could not be found.");
}

int MessageDialogs::corruptCBFile(QWidget* parent)
{
    return installationMessage(parent,
                               "The file kelvaron_chemistries.cb is corrupt or has been altered.");
}

int MessageDialogs::hexImportReadError(QWidget* parent)
{
    return hexImportMessage(parent, "");
}

int MessageDialogs::hexImportChecksumError(QWidget* parent)
{
    return hexImportMessage(parent, " (Checksum)");
}

int MessageDialogs::hexImportTypeError(QWidget* parent)
{
    return hexImportMessage(parent, " (Invalid Type Field)");
}

int MessageDialogs::xmlImportReadError(QWidget* parent)
{
    return plainMessage(parent, xmlImportStatus,
                        "Failed to read the XML file specified. Please try again.");
}

int MessageDialogs::exportStatus(QWidget* parent, const QString& format, bool isWritten)
{
    return message(parent, QStringLiteral("Export to %1 status").arg(format),
                   isWritten ? QStringLiteral("The profiles have been successfully exported!")
                             : QStringLiteral("An error occured while exporting profiles to %1. "
                                              "Please try again.")
                                   .arg(format));
}

int MessageDialogs::editModeProfilesDeletion(QWidget* parent)
{
    return plainMessage(parent, "Cannot Delete Profiles",
                        "Please save or cancel the changes before deleting profiles.");
}

int MessageDialogs::noBundlesFound(QWidget* parent)
{
    return installationMessage(parent, "No Kelvaron Bundles were found.");
}

int MessageDialogs::firmwareDownloadNotNeeded(QWidget* parent)
{
    return plainMessage(parent, "Already up-to-date",
                        "The Kelvaron Bundle being used right now is already up-to-date.");
}

int MessageDialogs::firmwareCheckerError(QWidget* parent)
{
    return plainMessage(parent, "Error!",
                        "An error occured while checking for firmware updates. Please make sure "
                        "you are connected to the internet, and try again.");
}

int MessageDialogs::firmwareDownloaded(QWidget* parent)
{
    return plainMessage(parent, "Latest Firmware Downloaded",
                        "The latest firmware has been downloaded.<br>Please go to File > Update "
                        "Kelvaron Firmware... to flash it.");
}

int MessageDialogs::currentSoftwareTooOld(QWidget* parent, const VersionString& bundleVersion,
                                          const VersionString& requiredVersion)
{
    return message(parent, QStringLiteral("Software Update Required"),
                   QStringLiteral("Kelvaron Bundle version %1 requires Kelvaron Profile Editor "
                                  "version %2 or higher. You can download it at %3")
                       .arg(bundleVersion.toString(), requiredVersion.toString(),
                            latin1(BuildConstants::editorDownloadPage)));
}

int MessageDialogs::profilesLeftOut(QWidget* parent, const QStringList& profiles,
                                    const QString& fileName)
{
    const bool isOne = profiles.size() == 1;
    const QString count = countedText(profiles.size(), QStringLiteral("profile was"),
                                      QStringLiteral("profiles were"));
    QString text =
        QStringLiteral("%1 left out, because the Kelvaron Bundle in use does not know %2:"
                       "\n\n%3")
            .arg(count,
                 isOne ? QStringLiteral("its chemistry") : QStringLiteral("their chemistries"),
                 shortened(profiles));
    if (!fileName.isEmpty()) {
        text += (isOne ? QStringLiteral("\n\nIt is still in the file %1. Load that file when a "
                                        "bundle that knows it is in use.")
                       : QStringLiteral("\n\nThey are still in the file %1. Load that file when a "
                                        "bundle that knows them is in use."))
                    .arg(fileName);
    }
    return message(parent, QStringLiteral("Profiles Left Out"), text, Qt::PlainText);
}

int MessageDialogs::askUnstorableTexts(QWidget* parent, const QStringList& texts)
{
    const QString subject =
        texts.size() == 1 ? QStringLiteral("This text has") : QStringLiteral("These texts have");
    return question(parent, QStringLiteral("Texts Do Not Fit"),
                    QStringLiteral("The Kelvaron can only store plain English letters, digits and "
                                   "punctuation (ASCII). With other characters its profiles may "
                                   "become unreadable. %1 such characters:\n\n%2\n\nNothing has "
                                   "been written yet. Do you want to continue anyway?")
                        .arg(subject, shortened(texts)),
                    Qt::PlainText);
}

int MessageDialogs::importChanges(QWidget* parent, const QString& changes)
{
    return message(parent, QStringLiteral("Imported With Changes"),
                   QStringLiteral("What was imported does not match the settings of the Kelvaron "
                                  "Bundle in use:\n\n%1\n\nPlease check this before you write to "
                                  "the Kelvaron.")
                       .arg(changes),
                   Qt::PlainText);
}

int MessageDialogs::reloadChanges(QWidget* parent, const QString& changes, const QString& fileName)
{
    return message(parent, QStringLiteral("Reloaded With Changes"),
                   QStringLiteral("A newer Kelvaron Bundle is in use. The list does not match its "
                                  "settings:\n\n%1\n\nPlease check this before you write to the "
                                  "Kelvaron. The previous list is in the file %2.")
                       .arg(changes, fileName),
                   Qt::PlainText);
}

int MessageDialogs::xmlFileBroken(QWidget* parent, const QString& error, int profilesRead)
{
    const QString outcome =
        profilesRead == 0
            ? QStringLiteral(
                "No profile was read, and the list is unchanged. Please choose another file.")
            : QStringLiteral(
                  "%1 read before the error. Please check the list, or load another copy of "
                  "the file.")
                  .arg(countedText(profilesRead, QStringLiteral("profile was"),
                                   QStringLiteral("profiles were")));
    return message(
        parent, latin1(xmlImportStatus),
        QStringLiteral("The XML file could not be read completely: %1.\n\n%2").arg(error, outcome),
        Qt::PlainText);
}

int MessageDialogs::xmlFileHoldsNoProfiles(QWidget* parent)
{
    return plainMessage(
        parent, xmlImportStatus,
        "The XML file contains no profiles. The list is unchanged. Please choose another file.");
}

int MessageDialogs::backupFailed(QWidget* parent)
{
    return plainMessage(parent, "Bundle Not Reloaded",
                        "The profiles could not be backed up, so the bundle in use was kept. "
                        "Please save the profiles to a file and restart the program.");
}

int MessageDialogs::askReplaceWithoutBackup(QWidget* parent, const QString& backupFile)
{
    return question(
        parent, QStringLiteral("Replace Without Backup?"),
        QStringLiteral(
            "The current profiles could not be saved to the file %1 before they are replaced. If "
            "you continue, they will be lost. Do you want to replace them anyway?")
            .arg(backupFile),
        Qt::PlainText);
}

int MessageDialogs::portInUse(QWidget* parent, const QString& portName, const QString& holder)
{
    return message(
        parent, QStringLiteral("Port In Use"),
        QStringLiteral(
            "The port %1 is in use by %2. Nothing was read from the charger or written to "
            "it.\n\nPlease wait until that program has ended, then try again. If it is "
            "not running any more, remove the file %3.")
            .arg(portName, holder, QDir::toNativeSeparators(PortLock::path(portName))),
        Qt::PlainText);
}

int MessageDialogs::fatalError(QWidget* parent, const QString& installedFile,
                               const QString& details, const QString& rescueFile)
{
    QString text =
        installedFile.isEmpty()
            ? QStringLiteral("An internal error has occurred and the program has to close.")
            : QStringLiteral(
                  "The installed file %1 is damaged and the program has to close. Please replace "
                  "the file or reinstall the program.")
                  .arg(installedFile);
    if (!rescueFile.isEmpty()) {
        text += QStringLiteral("\n\nYour profiles were saved to %1.").arg(rescueFile);
    }
    FittedMessageBox* box =
        textBox(parent, QStringLiteral("Kelvaron Profile Editor"), text, Qt::PlainText);
    box->setIcon(QMessageBox::Critical);
    box->setInformativeText(details);
    return run(box);
}
