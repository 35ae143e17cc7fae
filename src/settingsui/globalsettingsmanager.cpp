#include "settingsui/globalsettingsmanager.h"

#include "settingsui/globalsettingsdialog.h"

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
    emit settingsReplaced();
}

void GlobalSettingsManager::on_editGlobalSettingsClicked()
{
    const auto* dialog = new GlobalSettingsDialog(&globalSettings, parentWidget); // deletes itself
    connect(this, &GlobalSettingsManager::settingsReplaced, dialog,
            &GlobalSettingsDialog::inflateGrid);
}
