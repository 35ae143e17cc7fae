#pragma once

#include <QObject>

class ProfileNamesListManager;
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
/// Copies the selected profile to the system's clipboard and adds what the clipboard holds to the list:
/// as the text of a profile file (see docs/file-formats/profiles.md), so that profiles go from one
/// editor to another, and into a mail and back.
class ProfileClipboard : public QObject
{
    Q_OBJECT

public:
    /// Everything is borrowed and outlives this object; `dialogParent` is the main window.
    ProfileClipboard(ProfileNamesListManager* profileList,
                     ImportProfiles::ImportProfilesMain* profileImporter,
                     HParser::Generator* settingsGenerator, QWidget* dialogParent);

    /// Replaces the schema.
    void setAllSettings(HParser::Generator* newGenerator) { generator = newGenerator; }

public slots:
    /// Puts the selected profile into the clipboard; nothing without one.
    void copy();

    /// Adds the clipboard's profiles below the selected row and selects the last one. Global settings
    /// that lie beside them are left alone. A clipboard without profiles, or whose text breaks off, is
    /// reported, and nothing is added.
    void paste();

    /// Adds a copy of the selected profile below it and selects the copy. The clipboard is left alone.
    void duplicate();

private:
    QString selectedProfile() const;
    bool add(const QString& text);

    ProfileNamesListManager* list;
    ImportProfiles::ImportProfilesMain* importer;
    HParser::Generator* generator;
    QWidget* parentWidget;
};
} // namespace XMLGeneratorParser
