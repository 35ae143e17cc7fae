#pragma once

#include <QString>
#include <QStringList>

/// The rules of a bundle's text that a writer needs in addition to KelvaronBundle.
namespace BundleFormat
{
/// Returns the line that opens and closes the key/value block.
QString keyBlockLine();

/// Returns the line that opens and closes the section of a file of this name.
QString markerLine(const QString& name);

/// Returns the text between the two ends of a marker line, trimmed. REQUIRES:
/// KelvaronBundle::matchesStartEndLine(line).
QString markerName(const QString& line);

/// Returns true for a valid name of a section and of a file: one line without slashes, and neither
/// "." nor "..".
bool isSectionName(const QString& name);

/// Returns true for a valid key or value: one or more letters, digits, underscores and dots.
bool isKeyOrValue(const QString& text);

/// Returns the lines, each followed by a line feed.
QString textOfLines(const QStringList& lines);
} // namespace BundleFormat
