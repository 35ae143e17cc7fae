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
    /// replaced by "_". Nothing else is changed: names that are no XML names stay unusable.
    static QString xmlTagFromDescriptiveName(const QString& descriptiveName);

    /// True when an element can have this name.
    static bool isTag(const QString& tag);

    /// The text with " & ' < > as entities.
    static QString escapeReservedChars(const QString& text);

    /// A value as it stands in the file: reserved characters escaped, characters that XML 1.0 cannot
    /// hold left out, and a carriage return as a reference, since readers turn a bare one into a
    /// line feed.
    static QString valueText(const QString& value);
};
} // namespace XMLGeneratorParser
