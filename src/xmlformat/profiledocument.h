#pragma once

#include <QList>
#include <QString>

class ProfileSettings;
class QTextStream;

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

namespace XMLGeneratorParser
{
/// The text of a profile file (see docs/file-formats/profiles.md): the global settings, then every
/// profile in the given order; no XML declaration.
class ProfileDocument
{
public:
    ProfileDocument() = delete;

    /// Returns the whole text. REQUIRES: chemistries with the flags that profiles have (fatal
    /// assertion).
    static QString text(const QList<const ProfileSettings*>& profiles,
                        const HParser::StructSettings* globalSettings);

    /// Writes the lines of one struct's settings.
    static void writeSettings(QTextStream* stream, const QList<HParser::StructSetting*>& settings);

private:
    static void writeProfile(QTextStream* stream, int id, const ProfileSettings& profile);
};
} // namespace XMLGeneratorParser
