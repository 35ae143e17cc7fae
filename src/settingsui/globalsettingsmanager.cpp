#include "settingsui/globalsettingsmanager.h"

#include "messagedialogs.h"

GlobalSettingsManager::GlobalSettingsManager(QWidget* dialogParent,
                                             HParser::Generator* settingsGenerator, QObject* parent)
    : QObject(parent), parentWidget(dialogParent)
{
    setAllSettings(settingsGenerator);
}

void GlobalSettingsManager::setAllSettings(HParser::Generator* newGenerator)
{
    generator = newGenerator;
    globalSettings.makeGlobalSettings(generator);
}

void GlobalSettingsManager::on_editGlobalSettingsClicked()
{
    MessageDialogs::notAvailableYet(parentWidget, QStringLiteral("Editing the global settings"));
}
