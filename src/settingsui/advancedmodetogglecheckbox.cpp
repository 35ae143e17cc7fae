#include "settingsui/advancedmodetogglecheckbox.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"

AdvancedModeToggleCheckBox::AdvancedModeToggleCheckBox(QWidget* parent) : QCheckBox(parent)
{
    setObjectName(QStringLiteral("AdvancedModeToggleCheckBox"));
    connect(this, &QCheckBox::clicked, this, &AdvancedModeToggleCheckBox::on_clicked);
}

void AdvancedModeToggleCheckBox::bindSettings(const QList<HParser::StructSetting*>& boundSettings,
                                              HParser::StructSettings* boundStruct)
{
    settings = boundSettings;
    structSettings = boundStruct;
}

void AdvancedModeToggleCheckBox::enableAdvancedMode(bool on)
{
    setChecked(on);
    if (structSettings == nullptr) {
        return;
    }
    for (HParser::StructSetting* setting : qAsConst(settings)) {
        setting->enableAdvancedMode(on);
    }
}

void AdvancedModeToggleCheckBox::disableAdvancedSettingViews()
{
    if (structSettings == nullptr) {
        return;
    }
    for (HParser::StructSetting* setting : qAsConst(settings)) {
        if (!setting->isBasic) {
            emit setting->enableView(false);
        }
    }
}

void AdvancedModeToggleCheckBox::on_clicked()
{
    if (structSettings == nullptr) {
        return;
    }
    const bool on = isChecked();
    enableAdvancedMode(on);
    if (!on) {
        for (HParser::StructSetting* setting : qAsConst(settings)) {
            setting->updateValue();
        }
    }
    structSettings->setAdvancedSettingsEdited(on);
}
