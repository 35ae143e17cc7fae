#include "commandline.h"

#include "checkcommand.h"
#include "console.h"
#include "extractcommand.h"
#include "listcommand.h"
#include "packcommand.h"
#include "standardoutput.h"

#include <QCoreApplication>
#include <QStringList>

CommandLine::CommandLine()
{
    commands.push_back(std::make_unique<PackCommand>());
    commands.push_back(std::make_unique<CheckCommand>());
    commands.push_back(std::make_unique<ListCommand>());
    commands.push_back(std::make_unique<ExtractCommand>());
}

ExitCode CommandLine::run(const QStringList& arguments) const
{
    const QString word = arguments.value(1);
    if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
        printLine(helpText());
        return ExitCode::Ok;
    }
    if (word == QLatin1String("--version") || word == QLatin1String("-v")) {
        printLine(QStringLiteral("kelvaron-bundle %1").arg(QCoreApplication::applicationVersion()));
        return ExitCode::Ok;
    }
    for (const std::unique_ptr<Command>& command : commands) {
        if (command->name() == word) {
            return command->run(arguments);
        }
    }
    printError(word.isEmpty() ? QStringLiteral("no command given; try --help")
                              : QStringLiteral("unknown command \"%1\"; try --help").arg(word));
    return ExitCode::Usage;
}

QString CommandLine::helpText() const
{
    QString text = QStringLiteral("Usage: kelvaron-bundle COMMAND [OPTIONS] [FILE]\n"
                                  "Makes and inspects bundles (*.kelvaron) of charger files.\n\n"
                                  "Commands:\n");
    for (const std::unique_ptr<Command>& command : commands) {
        text += QStringLiteral("  %1 %2\n").arg(command->name(), -8).arg(command->summary());
    }
    text += QStringLiteral("\nOptions:\n"
                           "  -h, --help     Shows this text, or a command's own after its name.\n"
                           "  -v, --version  Shows the version of this program.\n\n"
                           "Exit codes: 0 done, 1 the bundle is bad or a file could not be read or "
                           "written,\n2 the command line is wrong.");
    return text;
}
