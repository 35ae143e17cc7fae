#pragma once

#include "rescue/replaceguard.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class ProfileSettings;
class QListWidget;
class QWidget;

namespace HParser
{
class Generator;
class StructSettings;
} // namespace HParser
namespace ImportProfiles
{
class ImportProfilesMain;
}

namespace HEXGeneratorParser
{
/// The user's "Export as HEX..." and "Import from HEX...", and the files that travel to the charger
/// and back.
class HEXManager : public QObject
{
    Q_OBJECT

public:
    /// Everything is borrowed and outlives the manager; `dialogParent` is the main window.
    HEXManager(QWidget* dialogParent, QListWidget* profileList,
               HParser::Generator* settingsGenerator,
               ImportProfiles::ImportProfilesMain* profileImporter, QObject* parent);

    /// Replaces the schema.
    void setAllSettings(HParser::Generator* newGenerator);

    /// What is asked before a file replaces the list; nothing is asked without one.
    void setReplaceGuard(ReplaceGuard guard) { replaceGuard = std::move(guard); }

    /// The number of profiles in the list.
    int getCurrentNumProfiles() const;

    /// The number of profiles that fit into one image.
    int getNumProfilesAllowed() const;

    /// Adds the file's profiles to the list. Throws an int, with the list unchanged: a
    /// ReadFromHEX::Error.
    void importProfiles(const QString& fileName);

    /// What exportProfiles() writes into a file; null when it fails.
    QByteArray image() const;

    /// Whether the list may go into an image: when it holds texts that an image cannot hold, the
    /// user is told of them and asked.
    bool confirmTexts() const;

    /// The next dialog opens in this file's folder.
    void updateLastUsedDirectory(const QString& fileName);

signals:
    /// The list is to be emptied without a question, before a file replaces it.
    void deleteAllProfiles();

public slots:
    /// Writes the list to a file; false when it could not be written, an older one is then
    /// untouched. REQUIRES: no more profiles than are allowed (fatal assertion).
    bool exportProfiles(const QString& fileName);

    void on_exportAsHEXButtonClicked();
    void on_importFromHEXButtonClicked();

private:
    QList<const ProfileSettings*> profiles() const;
    QList<HParser::StructSettings*> structs() const;
    void showExportStatus(const QString& text);

    QWidget* parentWidget;
    QListWidget* profileList;
    HParser::Generator* generator;
    ImportProfiles::ImportProfilesMain* importer;
    ReplaceGuard replaceGuard;
    QString lastUsedDirectory = QStringLiteral("saved_profiles");
    int numProfilesAllowed;
};
} // namespace HEXGeneratorParser
