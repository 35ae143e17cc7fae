#include "installation/installationmessages.h"

#include "installation/installation.h"
#include "messagedialogs.h"

void InstallationMessages::bundleNotRead(QWidget* parent, const Installation& installation)
{
    MessageDialogs::message(
        parent, QStringLiteral("Bundle Not Read"),
        QStringLiteral("The file %1 is %2, so it was not read and the bundle used before stays in "
                       "use. Please replace the file, or remove it from the folder %3, and restart "
                       "the program.")
            .arg(installation.bundleFileName(),
                 installation.isBundleTooLarge()
                     ? QStringLiteral("far too large for a Kelvaron Bundle")
                     : QStringLiteral("not a complete Kelvaron Bundle"),
                 Installation::folderName),
        Qt::PlainText);
}

void InstallationMessages::filesNotWritten(QWidget* parent, const Installation& installation)
{
    MessageDialogs::message(
        parent, QStringLiteral("Files Not Written"),
        QStringLiteral("The files %1 and %2 of the Kelvaron Bundle %3 could not be written, so the "
                       "older ones are used. They may not fit the charger. Please make room on the "
                       "disk, or make the folder %4 writable, and restart the program.")
            .arg(Installation::deviceFile, Installation::schemaFile, installation.bundleFileName(),
                 Installation::folderName),
        Qt::PlainText);
}

void InstallationMessages::otherEditor(QWidget* parent, const QString& backupFile)
{
    MessageDialogs::message(
        parent, QStringLiteral("Another Editor Is Open"),
        QStringLiteral(
            "Another Kelvaron Profile Editor is open in the same folder. The profiles of "
            "the two are separate: save them under different names. This editor makes "
            "its backups in files of its own, such as %1.")
            .arg(backupFile),
        Qt::PlainText);
}
