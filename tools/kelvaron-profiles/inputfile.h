#pragma once

#include <QString>

#include <optional>

/// Files that the command line names, looked at before anything reads them.
namespace InputFile
{
/// Why a file cannot be read: a directory, a device, too large, no rights; empty when it can.
QString fault(const QString& path);

/// The text of a file without carriage returns; nothing, reported, when it cannot be read.
std::optional<QString> readText(const QString& path);
} // namespace InputFile
