#pragma once

#include "command.h"

#include <QStringList>

#include <memory>
#include <vector>

/// Commands of which the command line names one.
class CommandList
{
public:
    void add(std::unique_ptr<Command> command);

    /// Runs the command that `arguments` names behind the program, and reports an unknown one.
    /// `group` is the word of the command line that leads here; empty for none.
    ExitCode run(const QStringList& arguments, const QString& group = {}) const;

    /// A line for each command.
    QString helpText() const;

private:
    std::vector<std::unique_ptr<Command>> commands;
};
