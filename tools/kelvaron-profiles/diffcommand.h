#pragma once

#include "command.h"

/// Compares two files of profiles.
class DiffCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("diff"); }
    QString summary() const override
    {
        return QStringLiteral("Compares two files of profiles, setting by setting.");
    }
    ExitCode run(const QStringList& arguments) const override;
};
