#include "editorfolder.h"

#include "KelvaronBundle/bundlechooser.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "commandoptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

void EditorFolder::addOption(CommandOptions& options)
{
    options.addOption(QCommandLineOption(
        QStringLiteral("folder"),
        QStringLiteral("The editor's folder with its bundles and the uploader; by default "
                       "KelvaronProfileEditorFiles next to this program."),
        QStringLiteral("FOLDER")));
}

EditorFolder::EditorFolder(const CommandOptions& options)
    : folder(options.isSet(QStringLiteral("folder"))
                 ? QDir().absoluteFilePath(options.value(QStringLiteral("folder")))
                 : QDir(QCoreApplication::applicationDirPath())
                       .filePath(QStringLiteral("KelvaronProfileEditorFiles")))
{}

QString EditorFolder::newestSchema() const
{
    const QString bundle = newestBundle();
    const QString header = QDir(folder).filePath(QStringLiteral("kelvaron_chemistries.cb"));
    return bundle.isEmpty() && QFileInfo(header).isFile() ? header : bundle;
}

QString EditorFolder::newestBundle() const
{
    const QDir dir(folder);
    const QStringList names = dir.entryList({QStringLiteral("*.kelvaron")}, QDir::Files);
    for (const QString& name : names) {
        if (!KelvaronBundle::hasSoundKeyBlock(dir.filePath(name))) {
            return {};
        }
    }
    const auto choice = BundleChooser::mostRecent(dir.path());
    return choice ? dir.filePath(choice->fileName) : QString();
}
