#pragma once

#include "command.h"

/// Finds every problem of bundles and settings headers.
class CheckCommand : public Command
{
public:
    /// `fullName` is the command's name on the command line: "check" or "bundle check".
    explicit CheckCommand(const QString& fullName) : commandName(fullName) {}

    QString name() const override { return QStringLiteral("check"); }
    QString summary() const override
    {
        return QStringLiteral("Finds every problem of bundles and settings headers.");
    }
    ExitCode run(const QStringList& arguments) const override;

private:
    QString commandName;
};
