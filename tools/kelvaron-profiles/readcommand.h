#pragma once

#include "command.h"

/// Reads the charger's profiles into a file.
class ReadCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("read"); }
    QString summary() const override
    {
        return QStringLiteral("Reads the charger's profiles into an XML or HEX file.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
