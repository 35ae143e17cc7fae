#pragma once

#include "exitcode.h"

#include <QTemporaryDir>

#include <optional>

class ProfileFile;

namespace HParser
{
class Generator;
}

/// The HEX file of a file's profiles as the charger is to hold them, in a temporary folder that goes with
/// this object.
class ChargerImage
{
public:
    /// Reads the file and makes the HEX file. Returns the exit code when that cannot be done, which is
    /// reported then: the file cannot be read, something of it would be left out, there are more profiles
    /// than the charger takes, or texts that it cannot hold.
    std::optional<ExitCode> make(ProfileFile& input, const HParser::Generator& schema);

    QString path() const { return folder.filePath(QStringLiteral("profiles.hex")); }

private:
    QTemporaryDir folder;
};
