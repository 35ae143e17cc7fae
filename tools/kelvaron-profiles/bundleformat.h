#pragma once

#include <QString>
#include <QStringList>

/// The rules of a bundle's text that a writer needs beside what KelvaronBundle reads.
namespace BundleFormat
{
/// Opens and closes the key/value block.
QString keyBlockLine();

/// The line that opens and closes the section of a file of that name.
QString markerLine(const QString& name);

/// What stands between the two ends of a marker line, trimmed.
/// REQUIRES: KelvaronBundle::matchesStartEndLine(line).
QString markerName(const QString& line);

/// True for what may be the name of a section and of a file: one line without slashes, and neither
/// "." nor "..".
bool isSectionName(const QString& name);

/// True for what may be a key or a value: letters, digits, underscores and dots, at least one.
bool isKeyOrValue(const QString& text);

/// The lines, a line feed behind each.
QString textOfLines(const QStringList& lines);
} // namespace BundleFormat
