#include "packcommand.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "base/countedtext.h"
#include "bundlewriter.h"
#include "checkedfile.h"
#include "commandoptions.h"
#include "console.h"
#include "problemreport.h"
#include "textinput.h"
#include "versionstring.h"

#include <QFileInfo>
#include <QList>
#include <QPair>

namespace
{
QCommandLineOption option(const char* name, const char* description, const char* value)
{
    return QCommandLineOption(QLatin1String(name), QLatin1String(description),
                              QLatin1String(value));
}

/// "NAME=PATH", or "PATH", whose section is named after the file.
QPair<QString, QString> nameAndPath(const QString& argument)
{
    const int equals = argument.indexOf(QLatin1Char('='));
    if (equals < 0) {
        return {QFileInfo(argument).fileName(), argument};
    }
    return {argument.left(equals), argument.mid(equals + 1)};
}

bool isVersionKey(const QString& key)
{
    return key == KelvaronBundle::versionKey || key == KelvaronBundle::minimumVersionKey;
}

void addOptions(CommandOptions& options)
{
    options.addOption(QCommandLineOption({QStringLiteral("o"), QStringLiteral("output")},
                                         QStringLiteral("The bundle to write."),
                                         QStringLiteral("FILE")));
    options.addOption(option("device", "Section 0: the device description.", "FILE"));
    options.addOption(option("schema", "Section 1: the settings header.", "FILE"));
    options.addOption(option("file",
                             "A further section, in the order given. Without a NAME it is named "
                             "after the file. Repeatable.",
                             "[NAME=]PATH"));
    options.addOption(option("key",
                             "A key of the bundle, such as VERSION=1.0.0 or "
                             "MIN_SOFTWARE_VERSION_REQUIRED=0.9. Repeatable.",
                             "KEY=VALUE"));
    options.addOption(QCommandLineOption(
        QStringLiteral("force"),
        QStringLiteral(
            "Packs the settings header even if it has errors; they are still reported.")));
}
} // namespace

ExitCode PackCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        QStringLiteral("bundle pack"),
        QStringLiteral(
            "Makes a bundle from its files. Its last section, with the checksums of all others, is "
            "added automatically."));
    addOptions(options);
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    for (const char* required : {"output", "device", "schema"}) {
        const QStringList given = options.values(QLatin1String(required));
        if (given.size() > 1) {
            return options.usageError(
                QStringLiteral("--%1 is given twice").arg(QLatin1String(required)));
        }
        if (given.isEmpty() || given.first().isEmpty()) {
            return options.usageError(
                QStringLiteral("--%1 is missing").arg(QLatin1String(required)));
        }
    }

    BundleWriter writer;
    QString error;
    if (!addKeys(options, writer, error)) {
        return options.usageError(error);
    }
    QList<QPair<QString, QString>> inputs{
        {QStringLiteral("device.txt"), options.value(QStringLiteral("device"))},
        {QStringLiteral("kelvaron_chemistries.cb"), options.value(QStringLiteral("schema"))}};
    const QStringList further = options.values(QStringLiteral("file"));
    for (const QString& argument : further) {
        inputs.append(nameAndPath(argument));
        if (!BundleWriter::isSectionName(inputs.last().first)) {
            return options.usageError(
                QStringLiteral("\"%1\" does not contain a usable section name").arg(argument));
        }
    }

    for (const QPair<QString, QString>& input : qAsConst(inputs)) {
        if (!addFile(input.first, input.second, writer)) {
            return ExitCode::ProblemsFound;
        }
    }
    const int errors = reportErrors(options.value(QStringLiteral("schema")));
    if (errors > 0 && !options.isSet(QStringLiteral("force"))) {
        printError(
            options.value(QStringLiteral("schema")),
            QStringLiteral("%1 in the settings header, nothing was written; correct the "
                           "header, or pack it as it is with --force")
                .arg(countedText(errors, QStringLiteral("error"), QStringLiteral("errors"))));
        return ExitCode::ProblemsFound;
    }
    const QString output = options.value(QStringLiteral("output"));
    if (!writer.write(output)) {
        printError(output, QStringLiteral("cannot be written: ") + writer.error());
        return ExitCode::ProblemsFound;
    }
    return ExitCode::Ok;
}

bool PackCommand::addKeys(const CommandOptions& options, BundleWriter& writer, QString& error)
{
    const QStringList pairs = options.values(QStringLiteral("key"));
    for (const QString& pair : pairs) {
        const auto [key, value] =
            KelvaronBundle::parseKeyLine(pair).value_or(KelvaronBundle::KeyValue());
        if (key.isEmpty() || value.isEmpty()) {
            error = QStringLiteral("\"%1\" is not KEY=VALUE with letters, digits, \"_\" and \".\"")
                        .arg(pair);
        } else if (writer.hasKey(key)) {
            error = QStringLiteral("key %1 is given twice").arg(key);
        } else if (isVersionKey(key) && !VersionString::isDottedVersion(value)) {
            error =
                QStringLiteral("%1 \"%2\" is not a dotted version such as 1.2.0").arg(key, value);
        } else {
            writer.addKey(key, value);
            continue;
        }
        return false;
    }
    return true;
}

int PackCommand::reportErrors(const QString& schemaPath)
{
    Problems errors;
    for (const Problem& problem : CheckedFile(schemaPath).problems()) {
        if (problem.severity != Problem::Severity::Warning) {
            errors.append(problem);
        }
    }
    ProblemReport::printProblems(schemaPath, errors);
    return errors.size();
}

bool PackCommand::addFile(const QString& name, const QString& path, BundleWriter& writer)
{
    TextInput input;
    if (!input.read(path)) {
        printError(path, input.error());
        return false;
    }
    writer.addSection(name, input.text());
    return true;
}
