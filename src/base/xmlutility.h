#pragma once

#include <QString>

/// Text helpers of the profile file.
namespace XMLGeneratorParser
{
class XMLUtility
{
public:
    XMLUtility() = delete;

    /// The element name of a setting: its name in lower case with each blank and each of / < > & %
    /// replaced by "_". Nothing else is changed: a name that is not a valid XML name stays
    /// unusable.
    static QString xmlTagFromDescriptiveName(const QString& descriptiveName);

    /// Returns true if this is a valid element name.
    static bool isTag(const QString& tag);

    /// Returns the text with " & ' < > replaced by entities.
    static QString escapeReservedChars(const QString& text);

    /// Returns a value as it is written to the file: reserved characters are escaped, characters
    /// not allowed in XML 1.0 are left out, and a carriage return becomes a character reference,
    /// since readers turn a bare one into a line feed.
    static QString valueText(const QString& value);
};
} // namespace XMLGeneratorParser
