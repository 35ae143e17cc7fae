#pragma once

#include "exitcode.h"

#include <QTemporaryDir>

#include <optional>

class ProfileFile;

namespace HParser
{
class Generator;
}

/// A HEX file with the profiles of a file for the charger, in a temporary folder that is deleted
/// with this object.
class ChargerImage
{
public:
    /// Reads the file and creates the HEX file. Reports a failure and returns its exit code: the
    /// file cannot be read, something in it would be left out, there are more profiles than the
    /// charger takes, or texts that it cannot hold.
    std::optional<ExitCode> make(ProfileFile& input, const HParser::Generator& schema);

    QString path() const { return folder.filePath(QStringLiteral("profiles.hex")); }

private:
    QTemporaryDir folder;
};
