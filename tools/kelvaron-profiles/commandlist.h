#pragma once

#include "command.h"

#include <QStringList>

#include <memory>
#include <vector>

/// A list of commands, one of which is named on the command line.
class CommandList
{
public:
    void add(std::unique_ptr<Command> command);

    /// Runs the command named in `arguments` after the program, or reports an unknown one. `group`
    /// is the word of the command line that selects this list; empty if there is none.
    ExitCode run(const QStringList& arguments, const QString& group = {}) const;

    /// Returns one line per command.
    QString helpText() const;

private:
    std::vector<std::unique_ptr<Command>> commands;
};
