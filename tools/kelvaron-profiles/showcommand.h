#pragma once

#include "command.h"

/// Shows the profiles of a file with all their values.
class ShowCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("show"); }
    QString summary() const override
    {
        return QStringLiteral("Shows the profiles of an XML or HEX file and their values.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
