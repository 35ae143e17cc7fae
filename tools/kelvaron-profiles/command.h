#pragma once

#include "exitcode.h"

#include <QString>

class QStringList;

/// A command of the program, selected by the first word of the command line.
class Command
{
public:
    Command() = default;
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    virtual QString name() const = 0;

    /// Returns one line for the general help.
    virtual QString summary() const = 0;

    /// Runs the command. `arguments` is the whole command line: the program, this command's name,
    /// the rest. Failures are reported on standard error.
    virtual ExitCode run(const QStringList& arguments) const = 0;
};
