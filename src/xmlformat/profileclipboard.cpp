#include "xmlformat/profileclipboard.h"

#include "CBGenerator/generator.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilenameslistmanager.h"
#include "xmlformat/profiledocument.h"
#include "xmlformat/readfromxml.h"

#include <QApplication>
#include <QClipboard>

namespace XMLGeneratorParser
{
ProfileClipboard::ProfileClipboard(ProfileNamesListManager* profileList,
                                   ImportProfiles::ImportProfilesMain* profileImporter,
                                   HParser::Generator* settingsGenerator, QWidget* dialogParent)
    : QObject(dialogParent), list(profileList), importer(profileImporter),
      generator(settingsGenerator), parentWidget(dialogParent)
{}

QString ProfileClipboard::selectedProfile() const
{
    if (list->getCurrentItem() == nullptr) {
        return {};
    }
    return ProfileDocument::text({list->getCurrentItem()->getProfileName()->getProfileSettings()},
                                 generator->getGlobalSettings());
}

void ProfileClipboard::copy()
{
    const QString text = selectedProfile();
    if (!text.isEmpty()) {
        QApplication::clipboard()->setText(text);
    }
}

void ProfileClipboard::paste()
{
    if (!add(QApplication::clipboard()->text())) {
        MessageDialogs::message(
            parentWidget, QStringLiteral("Nothing to Paste"),
            QStringLiteral(
                "The clipboard contains no profiles, or only part of their text. The list is "
                "unchanged. Copy a profile first, here or in another Kelvaron Profile Editor."));
    }
}

void ProfileClipboard::duplicate()
{
    add(selectedProfile());
}

bool ProfileClipboard::add(const QString& text)
{
    ReadFromXML reader;
    if (!reader.readText(text) || !reader.errorText().isEmpty() || reader.getProfiles().isEmpty()) {
        return false;
    }
    list->importBelowSelected([&] { importer->importProfiles(reader.getProfiles()); });
    return true;
}
} // namespace XMLGeneratorParser
