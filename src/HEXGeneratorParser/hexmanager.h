#pragma once

#include "filedialogs/profilefiledialog.h"
#include "rescue/replaceguard.h"

#include <QByteArray>
#include <QObject>
#include <QString>

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
/// Implements "Export as HEX..." and "Import from HEX...", and writes and reads the files exchanged
/// with the charger.
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

    /// Sets the function called before a file replaces the list; without one the list is replaced.
    void setReplaceGuard(ReplaceGuard guard) { replaceGuard = std::move(guard); }

    /// Returns the number of profiles in the list.
    int getCurrentNumProfiles() const;

    /// Returns the number of profiles that fit into one image.
    int getNumProfilesAllowed() const;

    /// Adds the file's profiles to the list. On failure throws a ReadFromHEX::Error as an int and
    /// leaves the list unchanged.
    void importProfiles(const QString& fileName);

    /// Returns what exportProfiles() writes to the file; null on failure.
    QByteArray image() const;

    /// Shows why importProfiles() failed: `error` is what it throws.
    static int showImportError(QWidget* parent, int error);

    /// Returns whether to write the list to an image. If the list has texts that an image cannot
    /// hold, shows them and asks the user.
    bool confirmTexts() const;

    /// Makes the next dialog open in this file's folder.
    void updateLastUsedDirectory(const QString& fileName);

signals:
    /// Emitted to empty the list without asking, before a file replaces it.
    void deleteAllProfiles();

public slots:
    /// Writes the list to a file; on failure returns false and leaves an existing file unchanged.
    /// REQUIRES: no more profiles than are allowed (fatal assertion).
    bool exportProfiles(const QString& fileName);

    void on_exportAsHEXButtonClicked();
    void on_importFromHEXButtonClicked();

private:
    QList<HParser::StructSettings*> structs() const;

    QWidget* parentWidget;
    QListWidget* profileList;
    HParser::Generator* generator;
    ImportProfiles::ImportProfilesMain* importer;
    ReplaceGuard replaceGuard;
    int numProfilesAllowed;
    ProfileFileDialog fileDialog;
};
} // namespace HEXGeneratorParser
