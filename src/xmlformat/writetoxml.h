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
/// profile in list order; UTF-8 without an XML declaration. What takes rows of the list belongs to the
/// editor, the rest to the core.
class WriteToXML : public QObject
{
    Q_OBJECT

public:
    explicit WriteToXML(QObject* parent = nullptr);

    /// Writes the file whole or not at all: on false an older file of that name is untouched.
    bool write(const QString& fileName, const QList<ProfileName*>& profiles,
               const HParser::StructSettings* globalSettings);

    /// The file's text.
    static QString document(const QList<ProfileName*>& profiles,
                            const HParser::StructSettings* globalSettings);

    /// The same for profiles that stand in no list. Their flags are those of their settings.
    /// REQUIRES: chemistries with the flags that profiles have (fatal assertion).
    static QString document(const QList<const ProfileSettings*>& profiles,
                            const HParser::StructSettings* globalSettings);

    /// The setting lines of one struct.
    static void xmlOutputSettings(QTextStream* stream,
                                  const QList<HParser::StructSetting*>& settings);

    /// "true" or "false".
    static QString boolToString(bool value);

private:
    static void xmlOutputProfile(QTextStream* stream, int id, const ProfileSettings& profile);
};
} // namespace XMLGeneratorParser
