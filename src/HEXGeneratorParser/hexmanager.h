#pragma once

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

namespace HEXGeneratorParser
{
/// The profile image as an Intel HEX file. This version cannot write or read one yet: every
/// operation tells so and changes nothing.
class HEXManager : public QObject
{
    Q_OBJECT

public:
    /// Everything is borrowed and outlives the manager; `dialogParent` is the main window.
    HEXManager(QWidget* dialogParent, QListWidget* profileList,
               HParser::Generator* settingsGenerator,
               ImportProfiles::ImportProfilesMain* profileImporter, QObject* parent);

    /// Replaces the schema.
    void setAllSettings(HParser::Generator* newGenerator) { generator = newGenerator; }

    /// The number of profiles in the list.
    int getCurrentNumProfiles() const;

    /// The number of profiles that fit into one image.
    int getNumProfilesAllowed() const;

    /// Reads a file into the list. Throws an int: 0 read, 1 checksum, 2 type.
    void importProfiles(const QString& fileName);

signals:
    /// The list is to be emptied without a question, before a file replaces it.
    void deleteAllProfiles();

public slots:
    /// Writes the list to a file; true when it was written.
    bool exportProfiles(const QString& fileName);

    void on_exportAsHEXButtonClicked();
    void on_importFromHEXButtonClicked();

private:
    QWidget* parentWidget;
    QListWidget* profileList;
    HParser::Generator* generator;
    ImportProfiles::ImportProfilesMain* importer;
};
} // namespace HEXGeneratorParser
