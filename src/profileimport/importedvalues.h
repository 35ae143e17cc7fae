#pragma once

#include <QMap>
#include <QString>

#include <memory>

class ParsedProfile;
class ProfileSettings;

namespace HParser
{
class Generator;
class StructSetting;
class StructSettings;
} // namespace HParser

namespace ImportProfiles
{
/// Makes settings of the texts of a file. Values are stored as the file has them; a missing one becomes
/// 0, false or empty.
class ImportedValues
{
public:
    ImportedValues() = delete;

    /// A profile with its modifiable flag; the others are the caller's.
    /// REQUIRES: a chemistry that the schema holds (fatal assertion).
    static std::unique_ptr<ProfileSettings> makeProfile(const ParsedProfile& parsed,
                                                        HParser::Generator* generator);

    /// The chemistry that the file names.
    static QString chemistryOf(const ParsedProfile& parsed);

    /// Stores the texts of all visible settings and marks edited advanced ones.
    static void store(const ParsedProfile& parsed, HParser::StructSettings* settings);

    /// The value for a setting's name; empty when it is missing.
    static QString valueFor(const QMap<QString, QString>& properties,
                            const QString& descriptiveName);

    /// True when a visible advanced setting differs from its default.
    static bool hasEditedAdvancedSettings(const HParser::StructSettings& settings);

    /// True when every visible setting's text is exactly the file's.
    static bool equal(const ParsedProfile& parsed, const HParser::StructSettings& settings);

private:
    static bool differsFromDefault(const HParser::StructSetting& setting);
};
} // namespace ImportProfiles
