#pragma once

#include "profilefile.h"

#include <optional>

class CommandOptions;

/// Writes files of profiles.
namespace ProfileOutput
{
/// Adds the option --to.
void addOption(CommandOptions& options);

/// Returns the format given by --to or else by the path's suffix; if there is neither, reports this
/// and returns nothing.
std::optional<ProfileFile::Format> format(const CommandOptions& options, const QString& path);

/// Returns why the profiles cannot be written to an image, one message each: there are too many, or
/// the charger cannot hold their texts.
QStringList obstacles(const ProfileFile& input, const HParser::Generator& schema);

/// Write the profiles, completely or not at all; return false if the file cannot be written. A HEX
/// file requires profiles without obstacles().
bool writeHex(const QString& path, const ProfileFile& input, const HParser::Generator& schema);
bool writeXml(const QString& path, const ProfileFile& input, const HParser::Generator& schema);

/// Returns the settings of a struct with their default values.
std::unique_ptr<HParser::StructSettings> withDefaults(const HParser::StructSettings& structure);
} // namespace ProfileOutput
