#include "commandlist.h"

#include "console.h"

void CommandList::add(std::unique_ptr<Command> command)
{
    commands.push_back(std::move(command));
}

ExitCode CommandList::run(const QStringList& arguments, const QString& group) const
{
    const QString word = arguments.value(1);
    for (const std::unique_ptr<Command>& command : commands) {
        if (command->name() == word) {
            return command->run(arguments);
        }
    }
    const QString problem = word.isEmpty() ? QStringLiteral("no command given")
                                           : QStringLiteral("unknown command \"%1\"").arg(word);
    printError(group.isEmpty() ? QStringLiteral("%1; try --help").arg(problem)
                               : QStringLiteral("%1: %2; try %1 --help").arg(group, problem));
    return ExitCode::Usage;
}

QString CommandList::helpText() const
{
    QString text = QStringLiteral("Commands:\n");
    for (const std::unique_ptr<Command>& command : commands) {
        text += QStringLiteral("  %1 %2\n").arg(command->name(), -8).arg(command->summary());
    }
    return text;
}
