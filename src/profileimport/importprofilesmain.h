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
/// Turns the content of a file into profiles and global settings. Values are stored as they are in
/// the file; a missing one becomes 0, false or empty. Deviations from the schema are reported
/// afterwards in one message.
class ImportProfilesMain : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed and outlive the importer; `dialogParent` is the main window.
    ImportProfilesMain(QWidget* dialogParent, HParser::Generator* settingsGenerator,
                       QObject* parent);

    /// Replaces the schema.
    void setAllSettings(HParser::Generator* newGenerator) { generator = newGenerator; }

    /// Creates every profile and emits it, in list order. Profiles of a chemistry that the schema
    /// does not have are left out; one message afterwards names them and the file.
    void importProfiles(const QList<ParsedProfile*>& parsedProfiles, const QString& fileName = {},
                        ImportOccasion occasion = ImportOccasion::USER_IMPORT);

    /// Returns true if the schema has the chemistry of at least one of the profiles.
    bool canImportAny(const QList<ParsedProfile*>& parsedProfiles) const;

    /// If the global settings differ from the current ones, asks whether to use them.
    void importGlobalSettings(const ParsedProfile* parsed);

    /// Returns the value for a setting's name; empty if it is missing.
    static QString getValueFromMapAndDescriptiveName(const QMap<QString, QString>& properties,
                                                     const QString& descriptiveName);

    /// Returns true if a visible advanced setting differs from its default.
    static bool getAdvancedSettingsEdited(const HParser::StructSettings* settings);

    /// Returns true if every global setting has exactly the imported text.
    bool getGlobalSettingsSameAsCurrentOnes(const ParsedProfile* parsed) const;

signals:
    /// Emitted before the first and after the last profile of an import.
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
    ImportReport report; ///< of the import in progress
};
} // namespace ImportProfiles
