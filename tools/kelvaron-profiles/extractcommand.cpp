#include "extractcommand.h"

#include "base/textfile.h"
#include "bundlewriter.h"
#include "commandoptions.h"
#include "console.h"
#include "inspectedbundle.h"
#include "problemreport.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace
{
/// Returns the file name for a section: its own name, if that is a valid file name.
QString fileName(const InspectedBundle& bundle, int index)
{
    const QString sectionName = bundle.sectionName(index);
    return BundleWriter::isSectionName(sectionName) ? sectionName
                                                    : QStringLiteral("section%1.txt").arg(index);
}

void addOptions(CommandOptions& options)
{
    options.addOption(QCommandLineOption(QStringLiteral("index"),
                                         QStringLiteral("Only the section of this number, from 0."),
                                         QStringLiteral("N")));
    options.addOption(QCommandLineOption(
        QStringLiteral("all"), QStringLiteral("Every section (the default without --index).")));
    options.addOption(QCommandLineOption(
        {QStringLiteral("o"), QStringLiteral("output")},
        QStringLiteral(
            "The folder to write to, created if missing; with --index it may also be the file to "
            "write. By default the current folder."),
        QStringLiteral("FOLDER|FILE")));
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("The bundle."));
}
} // namespace

ExitCode ExtractCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        QStringLiteral("bundle extract"),
        QStringLiteral(
            "Writes files of a bundle to disk. A section whose checksum does not match is written, "
            "too, but counts as a failure."));
    addOptions(options);
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const bool isOne = options.isSet(QStringLiteral("index"));
    if (isOne && options.isSet(QStringLiteral("all"))) {
        return options.usageError(QStringLiteral("--index and --all cannot be used together"));
    }
    bool isNumber = true;
    const int index = isOne ? options.value(QStringLiteral("index")).toInt(&isNumber) : 0;
    if (!isNumber || index < 0) {
        return options.usageError(QStringLiteral("\"%1\" is not a section number")
                                      .arg(options.value(QStringLiteral("index"))));
    }

    const QString path = options.file();
    InspectedBundle bundle(path);
    if (!bundle.readSections()) {
        printError(path, bundle.error());
        return ExitCode::ProblemsFound;
    }
    if (index >= bundle.sectionCount()) {
        printError(path, QStringLiteral("has no section %1; the last one is %2")
                             .arg(index)
                             .arg(bundle.sectionCount() - 1));
        return ExitCode::ProblemsFound;
    }
    const QString output = options.isSet(QStringLiteral("output"))
                               ? options.value(QStringLiteral("output"))
                               : QStringLiteral(".");
    if (!isOne) {
        const ExitCode extracted = extractAll(bundle, output);
        const Problems problems = bundle.sectionProblems();
        ProblemReport::printProblems(path, problems);
        return problems.isEmpty() ? extracted : ExitCode::ProblemsFound;
    }
    const ExitCode extracted = extractOne(
        bundle, index,
        QFileInfo(output).isDir() ? QDir(output).filePath(fileName(bundle, index)) : output);
    if (!bundle.isIntact(index)) {
        printError(
            path,
            QStringLiteral("%1 does not match its checksum").arg(bundle.describeSection(index)));
        return ExitCode::ProblemsFound;
    }
    return extracted;
}

ExitCode ExtractCommand::extractAll(const InspectedBundle& bundle, const QString& folder)
{
    if (!QDir().mkpath(folder)) {
        printError(folder, QStringLiteral("cannot be created"));
        return ExitCode::ProblemsFound;
    }
    QSet<QString> taken;
    for (int i = 0; i < bundle.sectionCount(); ++i) {
        QString name = fileName(bundle, i);
        if (taken.contains(name.toLower())) {
            name = QStringLiteral("section%1-%2").arg(QString::number(i), name);
        }
        taken.insert(name.toLower());
        if (extractOne(bundle, i, QDir(folder).filePath(name)) != ExitCode::Ok) {
            return ExitCode::ProblemsFound;
        }
    }
    return ExitCode::Ok;
}

ExitCode ExtractCommand::extractOne(const InspectedBundle& bundle, int index, const QString& path)
{
    if (!TextFile::write(path, bundle.sectionText(index))) {
        printError(path, QStringLiteral("cannot be written"));
        return ExitCode::ProblemsFound;
    }
    return ExitCode::Ok;
}
