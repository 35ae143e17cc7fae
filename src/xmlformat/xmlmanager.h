#pragma once

#include "profileimport/importoccasion.h"
#include "rescue/replaceguard.h"

#include <QList>
#include <QObject>
#include <QString>

class ProfileName;
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

/// The user's "Save Profiles to File..." and "Load Profiles from File...".
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

    /// What is asked before a file replaces the list; nothing is asked without one.
    void setReplaceGuard(ReplaceGuard guard) { replaceGuard = std::move(guard); }

    /// Writes every profile of the list and the global settings; false when the file could not be
    /// written, an older one is then untouched.
    bool exportToXML(const QString& fileName) const;

    /// The text of such a file.
    QString document() const;

    /// Adds the file's profiles to the list and offers its global settings. Shows a message when the
    /// file cannot be opened or breaks off.
    void importFromXML(const QString& fileName,
                       ImportOccasion occasion = ImportOccasion::USER_IMPORT);

    /// The next dialog opens in this file's folder.
    void updateLastUsedDirectory(const QString& fileName);

    /// Loads a file that the user has chosen as "Load Profiles from File..." does.
    void loadFile(const QString& fileName);

signals:
    /// The list is what a file holds: it has just been saved to it, or loaded from it as a whole.
    void listSaved();

    /// The list is to be emptied without a question, before a file replaces it.
    void deleteAllProfiles();

public slots:
    /// Asks for a file, offering the one that was loaded or saved last, and writes the list to it.
    void on_exportAsXMLButtonClicked();
    void on_importFromXMLButtonClicked();

private:
    QList<ProfileName*> rows() const;
    QString askExportFileName();
    void deliver(const ReadFromXML& reader, const QString& fileName, ImportOccasion occasion);
    bool canReplaceList(const ReadFromXML& reader) const;

    QWidget* parentWidget;
    QListWidget* profileList;
    HParser::Generator* generator;
    ImportProfiles::ImportProfilesMain* importer;
    ReplaceGuard replaceGuard;
    QString lastUsedDirectory = QStringLiteral("saved_profiles");
    QString lastUsedName; ///< of the file that was loaded or saved last, without its folder
};
} // namespace XMLGeneratorParser
