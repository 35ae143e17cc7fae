#pragma once

#include "command.h"

/// Tells whether the editor can use a bundle: checksums, version and settings header.
class CheckCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("check"); }
    QString summary() const override
    {
        return QStringLiteral("Checks a bundle before it is handed out.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
