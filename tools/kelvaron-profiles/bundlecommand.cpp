#include "bundlecommand.h"

#include "checkcommand.h"
#include "console.h"
#include "extractcommand.h"
#include "listcommand.h"
#include "packcommand.h"

BundleCommand::BundleCommand()
{
    commands.add(std::make_unique<PackCommand>());
    commands.add(std::make_unique<CheckCommand>(QStringLiteral("bundle check")));
    commands.add(std::make_unique<ListCommand>());
    commands.add(std::make_unique<ExtractCommand>());
}

ExitCode BundleCommand::run(const QStringList& arguments) const
{
    QStringList rest = arguments;
    rest.removeAt(1);
    const QString word = rest.value(1);
    if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
        writeOutput(QStringLiteral("Usage: kelvaron-profiles bundle COMMAND [OPTIONS] [FILE]\n"
                                   "Makes and inspects bundles (*.kelvaron) of charger files.\n\n")
                    + commands.helpText()
                    + QStringLiteral("\nThe help of a command: "
                                     "kelvaron-profiles bundle COMMAND --help"));
        return ExitCode::Ok;
    }
    // Scripts for making bundles expect one code for every failure other than a wrong command line.
    const ExitCode code = commands.run(rest, name());
    return code == ExitCode::NotReadable ? ExitCode::ProblemsFound : code;
}
