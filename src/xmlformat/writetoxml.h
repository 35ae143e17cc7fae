#pragma once

#include <QList>
#include <QObject>
#include <QString>

class ProfileName;
class ProfileSettings;
class QTextStream;

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

namespace XMLGeneratorParser
{
/// Writes the profile file (see docs/file-formats/profiles.md): the global settings, then every
/// profile in list order; UTF-8 without an XML declaration. The functions that take rows of the
/// list are part of the editor, the others of the core.
class WriteToXML : public QObject
{
    Q_OBJECT

public:
    explicit WriteToXML(QObject* parent = nullptr);

    /// Writes the file completely or not at all: on failure returns false and leaves an existing
    /// file unchanged.
    bool write(const QString& fileName, const QList<ProfileName*>& profiles,
               const HParser::StructSettings* globalSettings);

    /// Returns the file's text.
    static QString document(const QList<ProfileName*>& profiles,
                            const HParser::StructSettings* globalSettings);

    /// The same for profiles that are not in a list. Their flags are read from their settings.
    /// REQUIRES: chemistries with the flags of a profile (fatal assertion).
    static QString document(const QList<const ProfileSettings*>& profiles,
                            const HParser::StructSettings* globalSettings);

    /// Returns the lines for the settings of one struct.
    static void xmlOutputSettings(QTextStream* stream,
                                  const QList<HParser::StructSetting*>& settings);

    /// Returns "true" or "false".
    static QString boolToString(bool value);

private:
    static void xmlOutputProfile(QTextStream* stream, int id, const ProfileSettings& profile);
};
} // namespace XMLGeneratorParser
