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
/// Copies the selected profile to the system's clipboard and adds the clipboard's profiles to the
/// list. The format is the text of a profile file (see docs/file-formats/profiles.md), so profiles
/// can be copied between editors, and into an e-mail and back.
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
    /// Puts the selected profile into the clipboard; does nothing if none is selected.
    void copy();

    /// Adds the clipboard's profiles below the selected row and selects the last one. Global
    /// settings in the clipboard are ignored. If the clipboard has no profiles or its text is
    /// incomplete, reports this and adds nothing.
    void paste();

    /// Adds a copy of the selected profile below it and selects the copy. The clipboard is not
    /// changed.
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
