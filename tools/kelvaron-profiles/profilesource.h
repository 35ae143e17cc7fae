#pragma once

#include "charger.h"

#include <QTemporaryDir>

#include <memory>

/// A source of profiles on the command line: a file, or a charger as "charger:PORT".
class ProfileSource
{
public:
    /// `options` are borrowed and outlive the object.
    ProfileSource(const QString& argument, const CommandOptions& options);

    /// Reads the charger, if it is one, into a temporary file. Reports a failure and returns false.
    bool fetch();

    /// Returns the path of the profiles; a temporary file is deleted with this object.
    QString path() const { return filePath; }

    /// Returns the name shown to the user.
    QString name() const { return shownName; }

private:
    QString shownName;
    QString filePath;
    const CommandOptions& options;
    std::unique_ptr<QTemporaryDir> folder; ///< holds the profiles read from a charger
};
