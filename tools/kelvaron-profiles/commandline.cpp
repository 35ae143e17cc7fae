#include "commandline.h"

#include "bundlecommand.h"
#include "checkcommand.h"
#include "console.h"
#include "convertcommand.h"
#include "diffcommand.h"
#include "readcommand.h"
#include "showcommand.h"
#include "verifycommand.h"
#include "writecommand.h"

#include <QCoreApplication>

CommandLine::CommandLine()
{
    commands.add(std::make_unique<CheckCommand>(QStringLiteral("check")));
    commands.add(std::make_unique<ConvertCommand>());
    commands.add(std::make_unique<ShowCommand>());
    commands.add(std::make_unique<DiffCommand>());
    commands.add(std::make_unique<ReadCommand>());
    commands.add(std::make_unique<WriteCommand>());
    commands.add(std::make_unique<VerifyCommand>());
    commands.add(std::make_unique<BundleCommand>());
}

ExitCode CommandLine::run(const QStringList& arguments) const
{
    const QString word = arguments.value(1);
    if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
        writeOutput(helpText());
        return ExitCode::Ok;
    }
    if (word == QLatin1String("--version") || word == QLatin1String("-v")) {
        writeOutput(QStringLiteral("kelvaron-profiles ") + QCoreApplication::applicationVersion());
        return ExitCode::Ok;
    }
    return commands.run(arguments);
}

QString CommandLine::helpText() const
{
    return QStringLiteral(
               "Usage: kelvaron-profiles COMMAND [OPTIONS] FILE...\n"
               "Inspects charging profiles and the bundles that describe them, and moves profiles\n"
               "between files and the charger.\n\n")
           + commands.helpText()
           + QStringLiteral(
               "\nOptions:\n"
               "  -h, --help     Shows this text, or a command's own after its name.\n"
               "  -v, --version  Shows the version of this program.\n\n"
               "Exit codes: 0 done, 1 problems or differences were found, 2 the command line is\n"
               "wrong, 3 a file or the charger cannot be read or written, 4 a fault of this\n"
               "program. The bundle commands end with 1 for a file that cannot be read or\n"
               "written.");
}
