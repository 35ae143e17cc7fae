#include "settingsui/settingsgridrow.h"

#include "CBGenerator/structsetting.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/settingscheckbox.h"
#include "settingsui/settingslineedit.h"

#include <QGridLayout>
#include <QLabel>

using HParser::StructSetting;

namespace
{
QFont gridFont()
{
    return QFont(QStringLiteral("Lucida Grande"), 11);
}

QLabel* newLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(gridFont());
    return label;
}

QWidget* newPlainEditor(SettingsGridRow::Kind kind, QWidget* parent)
{
    switch (kind) {
    case SettingsGridRow::ADVANCED_TOGGLE:
        return new AdvancedModeToggleCheckBox(parent);
    case SettingsGridRow::NUMBER:
    case SettingsGridRow::TEXT: {
        auto* editor = new SettingsLineEdit(parent);
        editor->setMinimumWidth(SettingsGridRow::editorWidth);
        return editor;
    }
    case SettingsGridRow::FLAG:
        return new SettingsCheckBox(parent);
    case SettingsGridRow::LABEL_ALONE:
        break;
    }
    return nullptr;
}

QWidget* newEditor(SettingsGridRow::Kind kind, QWidget* parent)
{
    QWidget* editor = newPlainEditor(kind, parent);
    if (editor != nullptr) {
        editor->setFont(gridFont());
    }
    return editor;
}

/// Setting the same text again would trigger a layout.
void setLabelText(QLabel* label, const QString& text)
{
    if (label->text() != text) {
        label->setText(text);
    }
}
} // namespace

SettingsGridRow::SettingsGridRow(Kind rowKind, QGridLayout* settingsGrid, QWidget* parent)
    : kind(rowKind), grid(settingsGrid), label(newLabel(parent)), editor(newEditor(rowKind, parent))
{
    if (editor != nullptr) {
        label->setBuddy(editor);
    }
    if (kind == NUMBER) {
        unitsLabel = newLabel(parent);
    }
    if (kind == ADVANCED_TOGGLE) {
        label->setStyleSheet(QStringLiteral("QLabel { color : red; }"));
        setName(QStringLiteral("Edit Advanced Settings"));
        editor->setAccessibleDescription(QStringLiteral("Makes the settings below it editable"));
    }
}

void SettingsGridRow::placeAt(int rowNumber)
{
    if (number == rowNumber) {
        return;
    }
    putAside();
    number = rowNumber;
    grid->addWidget(label, number, labelColumn);
    label->show();
    if (editor != nullptr) {
        grid->addWidget(editor, number, editorColumn);
        editor->show();
    }
    if (unitsLabel != nullptr) {
        grid->addWidget(unitsLabel, number, unitsColumn);
        unitsLabel->show();
    }
}

void SettingsGridRow::putAside()
{
    if (number < 0) {
        return;
    }
    number = -1;
    const QList<QWidget*> all = widgets();
    for (QWidget* widget : all) {
        grid->removeWidget(widget);
        widget->hide();
    }
}

void SettingsGridRow::raise()
{
    const QList<QWidget*> all = widgets();
    for (QWidget* widget : all) {
        widget->raise();
    }
}

QList<QWidget*> SettingsGridRow::widgets() const
{
    QList<QWidget*> all = {label, editor, unitsLabel};
    all.removeAll(nullptr);
    return all;
}

SettingsGridRow::Kind SettingsGridRow::kindOf(const StructSetting& setting)
{
    switch (setting.settingType) {
    case StructSetting::NUM:
        return NUMBER;
    case StructSetting::STRING:
        return TEXT;
    case StructSetting::BOOL:
        return FLAG;
    case StructSetting::LIST:
    case StructSetting::UNKNOWN: // never visible
        break;
    }
    return LABEL_ALONE;
}

void SettingsGridRow::show(StructSetting* setting)
{
    setName(setting->descriptiveName);
    if (kind == FLAG) {
        editor->setAccessibleDescription(setting->categoryLabel);
        static_cast<SettingsCheckBox*>(editor)->bindSetting(setting);
    } else if (kind == NUMBER || kind == TEXT) {
        static_cast<SettingsLineEdit*>(editor)->bindSetting(setting);
    }
    if (unitsLabel != nullptr) {
        setLabelText(unitsLabel, setting->units);
    }
}

void SettingsGridRow::setName(const QString& name)
{
    if (editor == nullptr) {
        setLabelText(label, name);
        return;
    }
    if (editor->accessibleName()
        != name) { // a screen reader would be notified of an unchanged name
        editor->setAccessibleName(name);
    }
    // The editor is the label's buddy, so an "&" would mark a mnemonic.
    setLabelText(label, QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
}

void SettingsGridRow::deleteWidgets()
{
    // Released first: an editor that loses the focus stores its text.
    if (kind == FLAG) {
        static_cast<SettingsCheckBox*>(editor)->unbindSetting();
    } else if (kind == NUMBER || kind == TEXT) {
        static_cast<SettingsLineEdit*>(editor)->unbindSetting();
    } else if (kind == ADVANCED_TOGGLE) {
        static_cast<AdvancedModeToggleCheckBox*>(editor)->bindSettings({}, nullptr);
    }
    putAside();
    const QList<QWidget*> all = widgets();
    for (QWidget* widget : all) {
        widget->deleteLater();
    }
}
