#pragma once

#include "command.h"

/// Shows what a bundle holds, whether it is in order or not.
class ListCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("list"); }
    QString summary() const override
    {
        return QStringLiteral("Shows the keys and sections of a bundle.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
