#include "HEXGeneratorParser/hexmanager.h"

#include "HEXGeneratorParser/hexutility.h"
#include "messagedialogs.h"

#include <QListWidget>

namespace HEXGeneratorParser
{
HEXManager::HEXManager(QWidget* dialogParent, QListWidget* list,
                       HParser::Generator* settingsGenerator,
                       ImportProfiles::ImportProfilesMain* profileImporter, QObject* parent)
    : QObject(parent), parentWidget(dialogParent), profileList(list), generator(settingsGenerator),
      importer(profileImporter)
{}

int HEXManager::getCurrentNumProfiles() const
{
    return profileList->count();
}

int HEXManager::getNumProfilesAllowed() const
{
    return HexUtility::numProfilesAllowed(generator);
}

bool HEXManager::exportProfiles(const QString&)
{
    return false;
}

void HEXManager::importProfiles(const QString&)
{
    constexpr int readError = 0;
    throw readError;
}

void HEXManager::on_exportAsHEXButtonClicked()
{
    MessageDialogs::notAvailableYet(parentWidget, QStringLiteral("Exporting profiles as HEX"));
}

void HEXManager::on_importFromHEXButtonClicked()
{
    MessageDialogs::notAvailableYet(parentWidget, QStringLiteral("Importing profiles from HEX"));
}
} // namespace HEXGeneratorParser
