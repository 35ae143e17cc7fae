#pragma once

#include "charger.h"

#include <QTemporaryDir>

#include <memory>

/// Profiles that the command line names: a file, or those of a charger as "charger:PORT".
class ProfileSource
{
public:
    /// `options` are borrowed and outlive the object.
    ProfileSource(const QString& argument, const CommandOptions& options);

    /// Reads the charger, if it is one, into a temporary file. False when that fails, which is reported.
    bool fetch();

    /// Where the profiles are; a temporary file goes with this object.
    QString path() const { return filePath; }

    /// What the user knows them by.
    QString name() const { return shownName; }

private:
    QString shownName;
    QString filePath;
    const CommandOptions& options;
    std::unique_ptr<QTemporaryDir> folder; ///< of what was read from a charger
};
