#pragma once

#include "exitcode.h"

#include <QString>

class QStringList;

/// One thing that the program can do, chosen by the first word of its command line.
class Command
{
public:
    Command() = default;
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    virtual QString name() const = 0;

    /// One line for the general help.
    virtual QString summary() const = 0;

    /// Does it. `arguments` is the whole command line: the program, this command's name, the rest.
    /// Failures are reported on standard error.
    virtual ExitCode run(const QStringList& arguments) const = 0;
};
