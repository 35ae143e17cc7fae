#include "schemafile.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "checkedfile.h"
#include "commandoptions.h"
#include "console.h"
#include "editorfolder.h"
#include "problemreport.h"

#include <QTemporaryDir>

void SchemaFile::addOptions(CommandOptions& options)
{
    options.addOption(QCommandLineOption(
        QStringLiteral("bundle"),
        QStringLiteral(
            "The bundle whose settings header describes the profiles; by default, also without "
            "--header, the newest one in the editor's folder."),
        QStringLiteral("FILE")));
    options.addOption(QCommandLineOption(QStringLiteral("header"),
                                         QStringLiteral("The settings header itself."),
                                         QStringLiteral("FILE")));
    EditorFolder::addOption(options);
}

std::optional<ExitCode> SchemaFile::load(const CommandOptions& options)
{
    const bool isBundle = options.isSet(QStringLiteral("bundle"));
    if (options.isSet(QStringLiteral("header"))) {
        return isBundle ? options.usageError(
                   QStringLiteral("--bundle and --header cannot be used together"))
                        : loadHeader(options.value(QStringLiteral("header")));
    }
    const QString path =
        isBundle ? options.value(QStringLiteral("bundle")) : EditorFolder(options).newestSchema();
    if (path.isEmpty()) {
        return options.usageError(QStringLiteral("--bundle or --header is missing"));
    }
    return isBundle || path.endsWith(QLatin1String(".kelvaron")) ? loadBundle(path)
                                                                 : loadHeader(path);
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
        printError(path, QStringLiteral("is not a bundle: it has no settings header"));
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

/// Reports the errors that would end the editor; no command could continue with them either.
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
