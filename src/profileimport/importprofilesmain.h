#pragma once

#include "profileimport/importoccasion.h"
#include "profileimport/importreport.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

class ParsedProfile;
class ProfileSettings;
class QWidget;

namespace HParser
{
class Generator;
class StructSettings;
} // namespace HParser

namespace ImportProfiles
{
/// Turns what a file holds into live profiles and global settings. Values are stored as the file
/// has them; a missing one becomes 0, false or empty. What the file does not match the schema in is
/// reported afterwards in one message.
class ImportProfilesMain : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed and outlive the importer; `dialogParent` is the main window.
    ImportProfilesMain(QWidget* dialogParent, HParser::Generator* settingsGenerator,
                       QObject* parent);

    /// Replaces the schema.
    void setAllSettings(HParser::Generator* newGenerator) { generator = newGenerator; }

    /// Makes every profile and emits it, in list order. Profiles of a chemistry that the schema
    /// does not hold are left out; one message names them afterwards, and the file that has them.
    void importProfiles(const QList<ParsedProfile*>& parsedProfiles, const QString& fileName = {},
                        ImportOccasion occasion = ImportOccasion::USER_IMPORT);

    /// True when the schema holds the chemistry of at least one of the profiles.
    bool canImportAny(const QList<ParsedProfile*>& parsedProfiles) const;

    /// Asks, when they differ from the current ones, whether to take over the global settings.
    void importGlobalSettings(const ParsedProfile* parsed);

    /// The value for a setting's name; empty when it is missing.
    static QString getValueFromMapAndDescriptiveName(const QMap<QString, QString>& properties,
                                                     const QString& descriptiveName);

    /// True when a visible advanced setting differs from its default.
    static bool getAdvancedSettingsEdited(const HParser::StructSettings* settings);

    /// True when every global setting's text is exactly the imported one.
    bool getGlobalSettingsSameAsCurrentOnes(const ParsedProfile* parsed) const;

signals:
    /// Before the first and after the last profile of one import.
    void importStarted();
    void importFinished();

    /// A finished profile and its flags; the receiver takes ownership.
    void profileReadyForImport(ProfileSettings* profile, bool active, bool isDefault);

private:
    bool isKnown(const ParsedProfile* parsed) const;
    void importProfile(const ParsedProfile& parsed);
    void reportChanges(const QString& fileName, ImportOccasion occasion);

    QWidget* parentWidget;
    HParser::Generator* generator;
    ImportReport report; ///< of the import that is going on
};
} // namespace ImportProfiles
