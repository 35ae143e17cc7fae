#pragma once

#include "command.h"

/// Shows the content of a bundle, even of a damaged one.
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
