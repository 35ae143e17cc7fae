#pragma once

#include "commandlist.h"

/// Makes and inspects bundles: a group of commands of its own.
class BundleCommand : public Command
{
public:
    BundleCommand();

    QString name() const override { return QStringLiteral("bundle"); }
    QString summary() const override
    {
        return QStringLiteral("Makes, checks, lists and extracts bundles (*.kelvaron).");
    }
    ExitCode run(const QStringList& arguments) const override;

private:
    CommandList commands;
};
