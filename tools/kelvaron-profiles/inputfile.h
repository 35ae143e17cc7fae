#pragma once

#include <QString>

#include <optional>

/// Checks files given on the command line before they are read.
namespace InputFile
{
/// Returns why a file cannot be read: a directory, a device, too large, no permission; empty if it
/// can be read.
QString fault(const QString& path);

/// Returns the text of a file without carriage returns; reports a file that cannot be read and
/// returns nothing.
std::optional<QString> readText(const QString& path);
} // namespace InputFile
