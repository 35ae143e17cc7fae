#pragma once

#include "command.h"

/// Converts XML files of profiles to HEX files and back.
class ConvertCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("convert"); }
    QString summary() const override
    {
        return QStringLiteral("Turns an XML file of profiles into a HEX file, and back.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
