#pragma once

#include "command.h"

class InspectedBundle;

/// Writes files of a bundle to disk.
class ExtractCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("extract"); }
    QString summary() const override
    {
        return QStringLiteral("Writes the files of a bundle to disk.");
    }
    ExitCode run(const QStringList& arguments) const override;

private:
    static ExitCode extractAll(const InspectedBundle& bundle, const QString& folder);
    static ExitCode extractOne(const InspectedBundle& bundle, int index, const QString& path);
};
