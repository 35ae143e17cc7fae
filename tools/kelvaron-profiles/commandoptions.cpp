#include "commandoptions.h"

#include "console.h"

CommandOptions::CommandOptions(const QString& name, const QString& description) : commandName(name)
{
    parser.setApplicationDescription(description);
    parser.addPositionalArgument(name, QStringLiteral("This command."), name);
    parser.addOption(QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")},
                                        QStringLiteral("Shows this text.")));
}

void CommandOptions::addOption(const QCommandLineOption& option)
{
    parser.addOption(option);
}

void CommandOptions::addFileArgument(const QString& name, const QString& description, Repeat repeat)
{
    isRepeatable = repeat == Repeat::Any;
    parser.addPositionalArgument(name, description,
                                 isRepeatable ? name + QStringLiteral("...") : name);
    ++fileCount;
}

void CommandOptions::addJsonOption()
{
    parser.addOption(
        QCommandLineOption(QStringLiteral("json"), QStringLiteral("Writes the result as JSON.")));
}

void CommandOptions::addHtmlOption()
{
    parser.addOption(QCommandLineOption(
        QStringLiteral("html"),
        QStringLiteral("Writes the result as one page for a browser or a printer.")));
    hasHtml = true;
}

std::optional<ExitCode> CommandOptions::parse(const QStringList& arguments)
{
    const bool understood = parser.parse(arguments);
    if (parser.isSet(QStringLiteral("help"))) {
        writeOutput(
            parser.helpText().trimmed().replace(QStringLiteral("[options] %1").arg(commandName),
                                                QStringLiteral("%1 [options]").arg(commandName)));
        return ExitCode::Ok;
    }
    if (!understood) {
        return usageError(parser.errorText());
    }
    if (hasHtml && isHtml() && isJson()) {
        return usageError(QStringLiteral("--html and --json cannot be used together"));
    }
    const int count = files().size();
    if (count < fileCount) {
        return usageError(count == 0 ? QStringLiteral("no file given")
                                     : QStringLiteral("%1 files are needed").arg(fileCount));
    }
    if (count > fileCount && !isRepeatable) {
        return usageError(QStringLiteral("unexpected argument \"%1\"")
                              .arg(parser.positionalArguments().at(fileCount + 1)));
    }
    return std::nullopt;
}

ExitCode CommandOptions::usageError(const QString& message) const
{
    printError(QStringLiteral("%1: %2; try %1 --help").arg(commandName, message));
    return ExitCode::Usage;
}
