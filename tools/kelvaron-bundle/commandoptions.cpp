#include "commandoptions.h"

#include "console.h"
#include "standardoutput.h"

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

void CommandOptions::addFileArgument(const QString& name, const QString& description)
{
    parser.addPositionalArgument(name, description);
    ++fileCount;
}

std::optional<ExitCode> CommandOptions::parse(const QStringList& arguments)
{
    const bool understood = parser.parse(arguments);
    if (parser.isSet(QStringLiteral("help"))) {
        printLine(
            parser.helpText().trimmed().replace(QStringLiteral("[options] %1").arg(commandName),
                                                QStringLiteral("%1 [options]").arg(commandName)));
        return ExitCode::Ok;
    }
    if (!understood) {
        return usageError(parser.errorText());
    }
    const int files = parser.positionalArguments().size() - 1;
    if (files < fileCount) {
        return usageError(QStringLiteral("no file given"));
    }
    if (files > fileCount) {
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
