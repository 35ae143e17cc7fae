#pragma once

#include "commandlist.h"

/// The command line of the program: finds the command and runs it.
class CommandLine
{
public:
    CommandLine();

    /// `arguments` begins with the program's own name.
    ExitCode run(const QStringList& arguments) const;

private:
    QString helpText() const;

    CommandList commands;
};
