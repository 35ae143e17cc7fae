#pragma once

#include "filedialogs/profilefiledialog.h"
#include "profileimport/importoccasion.h"
#include "rescue/replaceguard.h"

#include <QObject>
#include <QString>

class QListWidget;
class QWidget;

namespace HParser
{
class Generator;
}
namespace ImportProfiles
{
class ImportProfilesMain;
}

namespace XMLGeneratorParser
{
class ReadFromXML;

/// Implements "Save Profiles to File..." and "Load Profiles from File...".
class XMLManager : public QObject
{
    Q_OBJECT

public:
    /// Everything is borrowed and outlives the manager; `dialogParent` is the main window.
    XMLManager(QWidget* dialogParent, QListWidget* profileList,
               ImportProfiles::ImportProfilesMain* profileImporter,
               HParser::Generator* settingsGenerator, QObject* parent);

    /// Replaces the schema.
    void setAllSettings(HParser::Generator* newGenerator) { generator = newGenerator; }

    /// Sets the function called before a file replaces the list; without one the list is replaced.
    void setReplaceGuard(ReplaceGuard guard) { replaceGuard = std::move(guard); }

    /// Writes every profile of the list and the global settings; on failure returns false and
    /// leaves an existing file unchanged.
    bool exportToXML(const QString& fileName) const;

    /// Returns the text of such a file.
    QString document() const;

    /// Adds the file's profiles to the list and offers its global settings. Shows a message if the
    /// file cannot be opened or is incomplete.
    void importFromXML(const QString& fileName,
                       ImportOccasion occasion = ImportOccasion::USER_IMPORT);

    /// Makes the next dialog open in this file's folder.
    void updateLastUsedDirectory(const QString& fileName);

    /// Loads a file chosen by the user, like "Load Profiles from File...".
    void loadFile(const QString& fileName);

signals:
    /// Emitted when the list matches a file: it has just been saved to it, or loaded from it as a
    /// whole.
    void listSaved();

    /// Emitted to empty the list without asking, before a file replaces it.
    void deleteAllProfiles();

public slots:
    /// Asks for a file name, offering the file that was loaded or saved last, and writes the list
    /// to it.
    void on_exportAsXMLButtonClicked();
    void on_importFromXMLButtonClicked();

private:
    void deliver(const ReadFromXML& reader, const QString& fileName, ImportOccasion occasion);
    bool canReplaceList(const ReadFromXML& reader) const;

    QWidget* parentWidget;
    QListWidget* profileList;
    HParser::Generator* generator;
    ImportProfiles::ImportProfilesMain* importer;
    ReplaceGuard replaceGuard;
    ProfileFileDialog fileDialog;
};
} // namespace XMLGeneratorParser
