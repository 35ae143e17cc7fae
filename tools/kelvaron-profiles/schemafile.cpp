#include "schemafile.h"

#include "KelvaronBundle/bundlechooser.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "checkedfile.h"
#include "commandoptions.h"
#include "console.h"
#include "problemreport.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

namespace
{
QString installationFolder()
{
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QStringLiteral("KelvaronProfileEditorFiles"));
}

/// The newest bundle of the editor; empty when there is none that can be chosen.
QString newestBundle()
{
    const QDir folder(installationFolder());
    const QStringList names = folder.entryList({QStringLiteral("*.kelvaron")}, QDir::Files);
    for (const QString& name : names) {
        if (!KelvaronBundle::hasSoundKeyBlock(folder.filePath(name))) {
            return {};
        }
    }
    const auto choice = BundleChooser::mostRecent(folder.path());
    return choice ? folder.filePath(choice->fileName) : QString();
}
} // namespace

void SchemaFile::addOptions(CommandOptions& options)
{
    options.addOption(QCommandLineOption(
        QStringLiteral("bundle"),
        QStringLiteral(
            "The bundle whose settings header describes the profiles; without this and "
            "--header the newest one in KelvaronProfileEditorFiles beside this program."),
        QStringLiteral("FILE")));
    options.addOption(QCommandLineOption(QStringLiteral("header"),
                                         QStringLiteral("The settings header itself."),
                                         QStringLiteral("FILE")));
}

std::optional<ExitCode> SchemaFile::load(const CommandOptions& options)
{
    const bool isBundle = options.isSet(QStringLiteral("bundle"));
    if (options.isSet(QStringLiteral("header"))) {
        return isBundle
                   ? options.usageError(QStringLiteral("--bundle and --header exclude each other"))
                   : loadHeader(options.value(QStringLiteral("header")));
    }
    const QString path = isBundle ? options.value(QStringLiteral("bundle")) : newestBundle();
    if (path.isEmpty()) {
        return options.usageError(QStringLiteral("--bundle or --header is missing"));
    }
    return loadBundle(path);
}

std::optional<ExitCode> SchemaFile::loadBundle(const QString& path)
{
    if (const std::optional<ExitCode> code = refuse(path)) {
        return code;
    }
    KelvaronBundle bundle(path);
    if (!bundle.parseBundle()) {
        printMessages(path, {QStringLiteral("warning: its checksums do not match")});
    }
    QTemporaryDir folder;
    const QString header = folder.filePath(QStringLiteral("kelvaron_chemistries.cb"));
    if (bundle.getNumFiles() <= KelvaronBundle::SCHEMA_HEADER) {
        printError(path, QStringLiteral("is no bundle: it has no settings header"));
        return ExitCode::ProblemsFound;
    }
    if (!folder.isValid() || !bundle.saveFile(KelvaronBundle::SCHEMA_HEADER, header)) {
        printError(header, QStringLiteral("cannot be written"));
        return ExitCode::NotReadable;
    }
    generate(header);
    return std::nullopt;
}

std::optional<ExitCode> SchemaFile::loadHeader(const QString& path)
{
    if (const std::optional<ExitCode> code = refuse(path)) {
        return code;
    }
    generate(path);
    return std::nullopt;
}

void SchemaFile::generate(const QString& path)
{
    schema.setHFileLocation(path);
    schema.generate();
}

/// Reports what the editor would end for: nothing here could go on with it either.
std::optional<ExitCode> SchemaFile::refuse(const QString& path)
{
    const CheckedFile file(path);
    if (!file.isRead()) {
        return ExitCode::NotReadable;
    }
    Problems fatal;
    for (const Problem& problem : file.problems()) {
        if (problem.severity == Problem::Severity::Fatal) {
            fatal.append(problem);
        }
    }
    if (fatal.isEmpty()) {
        return std::nullopt;
    }
    ProblemReport::printProblems(path, fatal);
    printError(path, QStringLiteral("cannot be used"));
    return ExitCode::ProblemsFound;
}
