#pragma once

#include "command.h"

/// Compares the charger's profiles with a file.
class VerifyCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("verify"); }
    QString summary() const override
    {
        return QStringLiteral("Reads the charger back and compares it with a file.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
