#include "settingsui/settingslineedit.h"

#include "CBGenerator/structsetting.h"
#include "quotedtext.h"
#include "settingsui/numbervalidator.h"
#include "settingsui/storabletextvalidator.h"

#include <QToolTip>

#include <algorithm>

SettingsLineEdit::SettingsLineEdit(QWidget* parent) : QLineEdit(parent)
{
    setObjectName(QStringLiteral("SettingsLineEdit"));
    connect(this, &QLineEdit::editingFinished, this, &SettingsLineEdit::on_editingFinished);
}

void SettingsLineEdit::unbindSetting()
{
    if (setting != nullptr) {
        setting->disconnect(this);
    }
    setting = nullptr;
}

void SettingsLineEdit::bindSetting(HParser::StructSetting* boundSetting)
{
    unbindSetting();
    setting = boundSetting;
    if (validator() == nullptr) {
        addValidator();
    }
    if (setting->settingType != HParser::StructSetting::NUM) {
        constexpr int unlimited = 32767; // the toolkit's own default
        // The charger's field ends with a zero byte.
        setMaxLength(setting->arraySize > 0 ? setting->arraySize - 1 : unlimited);
    }
    updateView();
    connect(setting, &HParser::StructSetting::numValueChanged, this, &SettingsLineEdit::updateView);
    connect(setting, &HParser::StructSetting::enableView, this, &SettingsLineEdit::on_enableView);
}

void SettingsLineEdit::addValidator()
{
    if (setting->settingType == HParser::StructSetting::NUM) {
        const auto* numberValidator = new NumberValidator(this);
        setValidator(numberValidator);
        connect(numberValidator, &NumberValidator::refused, this,
                &SettingsLineEdit::showNumberHint);
        return;
    }
    textValidator = new StorableTextValidator(this);
    setValidator(textValidator);
    connect(textValidator, &StorableTextValidator::refused, this, &SettingsLineEdit::showTextHint);
}

QSize SettingsLineEdit::sizeHint() const
{
    return {minimumWidth(), QLineEdit::sizeHint().height()};
}

void SettingsLineEdit::saveSetting()
{
    if (setting == nullptr) {
        return;
    }
    switch (setting->settingType) {
    case HParser::StructSetting::NUM:
        setting->setValue(text().toDouble());
        updateView();
        break;
    case HParser::StructSetting::STRING:
    case HParser::StructSetting::LIST:
        setting->setValue(text());
        updateView();
        break;
    case HParser::StructSetting::BOOL:
    case HParser::StructSetting::UNKNOWN:
        break;
    }
}

void SettingsLineEdit::on_editingFinished()
{
    saveSetting();
}

void SettingsLineEdit::updateView()
{
    if (setting == nullptr) {
        return;
    }
    if (textValidator != nullptr) {
        textValidator->tolerate(setting->getValue());
    }
    setText(setting->getValue());
    if (!hasFocus()) {
        setCursorPosition(0); // a long text is read from its beginning
    }
}

void SettingsLineEdit::showTextHint(const QString& characters)
{
    showHint(QStringLiteral("The Kelvaron holds plain English letters, digits and signs (ASCII) "
                            "only, not %1.")
                 .arg(quotedText(characters)));
}

void SettingsLineEdit::showNumberHint()
{
    showHint(QStringLiteral("Numbers are written with digits and a decimal point alone: 1500.5"));
}

void SettingsLineEdit::showHint(const QString& hint)
{
    if (hasFocus()) { // what the user did not enter is shown as it is
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), hint, this);
    }
}

void SettingsLineEdit::on_enableView(bool on)
{
    setEnabled(on);
}
