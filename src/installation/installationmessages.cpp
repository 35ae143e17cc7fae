#include "installation/installationmessages.h"

#include "installation/installation.h"
#include "messagedialogs.h"

void InstallationMessages::bundleNotRead(QWidget* parent, const Installation& installation)
{
    MessageDialogs::message(
        parent, QStringLiteral("Bundle Not Read"),
        QStringLiteral("The file %1 is %2, so it was not read and the previous bundle is still "
                       "used. Please replace the file, or remove it from the folder %3, and "
                       "restart the program.")
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
                       "older ones are used. They may not match the charger. Please free some "
                       "space on the disk, or make the folder %4 writable, and restart the "
                       "program.")
            .arg(Installation::deviceFile, Installation::schemaFile, installation.bundleFileName(),
                 Installation::folderName),
        Qt::PlainText);
}

void InstallationMessages::otherEditor(QWidget* parent, const QString& backupFile)
{
    MessageDialogs::message(
        parent, QStringLiteral("Another Editor Is Open"),
        QStringLiteral(
            "Another Kelvaron Profile Editor is open in the same folder. The two editors have "
            "separate lists: save them under different names. This editor saves its backups in its "
            "own "
            "files, such as %1.")
            .arg(backupFile),
        Qt::PlainText);
}
