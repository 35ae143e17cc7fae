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
/// Creates settings from the texts of a file. Values are stored as they are in the file; a missing
/// one becomes 0, false or empty.
class ImportedValues
{
public:
    ImportedValues() = delete;

    /// Returns a profile with its modifiable flag; the caller sets the other flags. REQUIRES: a
    /// chemistry of the schema (fatal assertion).
    static std::unique_ptr<ProfileSettings> makeProfile(const ParsedProfile& parsed,
                                                        HParser::Generator* generator);

    /// Returns the chemistry named in the file.
    static QString chemistryOf(const ParsedProfile& parsed);

    /// Stores the texts of all visible settings and marks advanced settings that were edited.
    static void store(const ParsedProfile& parsed, HParser::StructSettings* settings);

    /// Returns the value for a setting's name; empty if it is missing.
    static QString valueFor(const QMap<QString, QString>& properties,
                            const QString& descriptiveName);

    /// Returns true if a visible advanced setting differs from its default.
    static bool hasEditedAdvancedSettings(const HParser::StructSettings& settings);

    /// Returns true if every visible setting has exactly the text in the file.
    static bool equal(const ParsedProfile& parsed, const HParser::StructSettings& settings);

private:
    static bool differsFromDefault(const HParser::StructSetting& setting);
};
} // namespace ImportProfiles
