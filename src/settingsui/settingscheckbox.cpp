#include "settingsui/settingscheckbox.h"

#include "CBGenerator/structsetting.h"

SettingsCheckBox::SettingsCheckBox(QWidget* parent) : QCheckBox(parent)
{
    setObjectName(QStringLiteral("SettingsCheckBox"));
    connect(this, &QCheckBox::clicked, this, &SettingsCheckBox::on_clicked);
}

void SettingsCheckBox::unbindSetting()
{
    if (setting != nullptr) {
        setting->disconnect(this);
    }
    setting = nullptr;
}

void SettingsCheckBox::bindSetting(HParser::StructSetting* boundSetting)
{
    unbindSetting();
    setting = boundSetting;
    updateView();
    connect(setting, &HParser::StructSetting::enableView, this, &SettingsCheckBox::on_enableView);
}

void SettingsCheckBox::saveSetting(bool on)
{
    if (setting != nullptr) {
        setting->setValue(on);
    }
}

void SettingsCheckBox::on_clicked()
{
    saveSetting(isChecked());
}

void SettingsCheckBox::updateView()
{
    if (setting != nullptr) {
        setChecked(setting->isOn());
    }
}

void SettingsCheckBox::on_enableView(bool on)
{
    setEnabled(on);
}
