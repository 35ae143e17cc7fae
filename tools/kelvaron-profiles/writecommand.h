#pragma once

#include "command.h"

/// Writes a file's profiles to the charger.
class WriteCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("write"); }
    QString summary() const override
    {
        return QStringLiteral("Writes the profiles of a file to the charger.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
