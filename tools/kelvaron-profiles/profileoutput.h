#pragma once

#include "profilefile.h"

#include <optional>

class CommandOptions;

/// Writes files of profiles.
namespace ProfileOutput
{
/// Adds the option --to.
void addOption(CommandOptions& options);

/// The format that --to names, else the one of the path. Nothing, reported, when that is neither.
std::optional<ProfileFile::Format> format(const CommandOptions& options, const QString& path);

/// Why the profiles cannot go into an image at all, a message each: there are more than it takes, or the
/// charger cannot hold their texts.
QStringList obstacles(const ProfileFile& input, const HParser::Generator& schema);

/// Write the profiles, whole or not at all; false when the file cannot be written. A HEX file takes
/// profiles without obstacles() alone.
bool writeHex(const QString& path, const ProfileFile& input, const HParser::Generator& schema);
bool writeXml(const QString& path, const ProfileFile& input, const HParser::Generator& schema);

/// The settings of a struct with its default values.
std::unique_ptr<HParser::StructSettings> withDefaults(const HParser::StructSettings& structure);
} // namespace ProfileOutput
