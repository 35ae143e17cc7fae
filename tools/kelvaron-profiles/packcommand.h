#pragma once

#include "command.h"

class BundleWriter;
class CommandOptions;

/// Makes a bundle from its files.
class PackCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("pack"); }
    QString summary() const override { return QStringLiteral("Makes a bundle from its files."); }
    ExitCode run(const QStringList& arguments) const override;

private:
    static bool addKeys(const CommandOptions& options, BundleWriter& writer, QString& error);
    static int reportErrors(const QString& schemaPath);
    static bool addFile(const QString& name, const QString& path, BundleWriter& writer);
};
