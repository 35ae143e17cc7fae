#include "settingsui/settingsgridlayout.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/settingscheckbox.h"
#include "settingsui/settingslineedit.h"

#include <QLabel>

using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
// Columns 0, 2 and 4 stay empty as spacing.
constexpr int labelColumn = 1;
constexpr int editorColumn = 3;
constexpr int unitsColumn = 5;

constexpr int editorWidth = 110; // a number of 6 digits with sign and exponent

QFont gridFont()
{
    return QFont(QStringLiteral("Lucida Grande"), 11);
}

QLabel* newLabel(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(gridFont());
    return label;
}

/// Ties an editor to the label before it.
void nameEditor(QWidget* editor, QLabel* label, const QString& description)
{
    const QString name = label->text();
    editor->setAccessibleName(name);
    editor->setAccessibleDescription(description);
    label->setText(QString(name).replace(QLatin1Char('&'), QLatin1String("&&"))); // no mnemonic
    label->setBuddy(editor);
}

/// What is told of an editor beside its name: the units, and the group that the setting belongs to.
QString describe(const StructSetting& setting)
{
    QStringList parts = {setting.units, setting.categoryLabel};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

/// The flags that the list manager keeps; a grid never takes them back.
bool belongsToList(const StructSettings& settings, const StructSetting& setting)
{
    return !settings.getGlobal()
           && (setting.descriptiveName == QLatin1String("active")
               || setting.descriptiveName == QLatin1String("default"));
}

/// Copies value texts member by member; the two structs are of the same schema struct.
void copyValues(const StructSettings& from, const StructSettings& to)
{
    const QList<StructSetting*> sources = from.getOriginalOrderStructSettings();
    const QList<StructSetting*> targets = to.getOriginalOrderStructSettings();
    for (int i = 0; i < sources.size() && i < targets.size(); ++i) {
        if (!belongsToList(to, *targets.at(i))) {
            targets.at(i)->storeValueFromText(sources.at(i)->getValue());
        }
    }
}
} // namespace

SettingsGridLayout::SettingsGridLayout(StructSettings* structSettings, QWidget* parent)
    : QGridLayout(parent), settings(structSettings)
{
    setHorizontalSpacing(3);
    setColumnMinimumWidth(2, 3);
    setColumnMinimumWidth(unitsColumn, 46);
    inflateGrid();
}

SettingsGridLayout::~SettingsGridLayout() = default;

void SettingsGridLayout::inflateGrid()
{
    int row = 0;
    const QList<StructSetting*> shown = settings->getStructSettings();
    for (StructSetting* setting : shown) {
        if (!setting->isBasic && advancedToggle == nullptr) {
            addAdvancedToggle(row++);
        }
        addSetting(setting, row++);
    }
    if (advancedToggle != nullptr) {
        advancedToggle->bindSettings(shown, settings);
        advancedToggle->enableAdvancedMode(settings->getAdvancedSettingsEdited());
    }
    setGridEnabled(false);
}

void SettingsGridLayout::addAdvancedToggle(int row)
{
    QLabel* label = newLabel(QStringLiteral("Edit Advanced Settings"));
    label->setStyleSheet(QStringLiteral("QLabel { color : red; }"));
    advancedToggle = new AdvancedModeToggleCheckBox;
    nameEditor(advancedToggle, label, QStringLiteral("Opens the settings below it for changes"));
    addWidget(label, row, labelColumn);
    addWidget(advancedToggle, row, editorColumn);
}

void SettingsGridLayout::addSetting(StructSetting* setting, int row)
{
    QLabel* label = newLabel(setting->descriptiveName);
    addWidget(label, row, labelColumn);
    switch (setting->settingType) {
    case StructSetting::NUM:
    case StructSetting::STRING: {
        auto* editor = new SettingsLineEdit;
        editor->setFont(gridFont());
        editor->setMinimumWidth(editorWidth);
        nameEditor(editor, label, describe(*setting));
        editor->bindSetting(setting);
        if (setting->settingType == StructSetting::NUM) {
            addWidget(editor, row, editorColumn);
            addWidget(newLabel(setting->units), row, unitsColumn);
        } else {
            addWidget(editor, row, editorColumn, 1, unitsColumn - editorColumn + 1);
        }
        break;
    }
    case StructSetting::BOOL: {
        auto* editor = new SettingsCheckBox;
        editor->setFont(gridFont());
        nameEditor(editor, label, describe(*setting));
        editor->bindSetting(setting);
        addWidget(editor, row, editorColumn);
        break;
    }
    case StructSetting::LIST:    // not editable here: the label alone
    case StructSetting::UNKNOWN: // never in the visual order
        break;
    }
}

void SettingsGridLayout::saveSettings()
{
    commitFocusedEditor();
    for (int row = 0; row < rowCount(); ++row) {
        QLayoutItem* item = itemAtPosition(row, editorColumn);
        QWidget* widget = item != nullptr ? item->widget() : nullptr;
        if (widget == nullptr) {
            continue;
        }
        if (widget->objectName() == QLatin1String("SettingsLineEdit")) {
            static_cast<SettingsLineEdit*>(widget)->on_editingFinished();
        } else if (widget->objectName() == QLatin1String("SettingsCheckBox")) {
            static_cast<SettingsCheckBox*>(widget)->on_clicked();
        }
    }
    setGridEnabled(false);
    backup.reset();
}

void SettingsGridLayout::commitFocusedEditor()
{
    // Its text is not stored yet where a button press leaves the focus in the field. Stored after
    // the others it could be overwritten by a formula that one of them sets off.
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        auto* lineEdit = qobject_cast<SettingsLineEdit*>(widget);
        if (lineEdit != nullptr && lineEdit->hasFocus()) {
            lineEdit->on_editingFinished();
        }
    }
}

void SettingsGridLayout::startEditing()
{
    backupCurrentSettings();
    setGridEnabled(true);
    if (!settings->getAdvancedSettingsEdited() && advancedToggle != nullptr) {
        advancedToggle->disableAdvancedSettingViews();
    }
}

void SettingsGridLayout::cancelSettings()
{
    // The editors go first: one that loses the focus later would store its text once more.
    clearGrid();
    restoreBackedUpSettings();
    backup.reset();
    inflateGrid();
}

void SettingsGridLayout::backupCurrentSettings()
{
    backup = settings->deepCopy();
    copyValues(*settings, *backup);
    backup->setAdvancedSettingsEdited(settings->getAdvancedSettingsEdited());
}

void SettingsGridLayout::restoreBackedUpSettings()
{
    if (backup == nullptr) {
        return;
    }
    copyValues(*backup, *settings);
    settings->setAdvancedSettingsEdited(backup->getAdvancedSettingsEdited());
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        if (auto* lineEdit = qobject_cast<SettingsLineEdit*>(widget)) {
            lineEdit->updateView();
        } else if (auto* checkBox = qobject_cast<SettingsCheckBox*>(widget)) {
            checkBox->updateView();
        }
    }
    if (advancedToggle != nullptr) {
        advancedToggle->enableAdvancedMode(settings->getAdvancedSettingsEdited());
    }
}

QList<QWidget*> SettingsGridLayout::gridWidgets() const
{
    QList<QWidget*> widgets;
    for (int i = 0; i < count(); ++i) {
        if (QWidget* widget = itemAt(i)->widget()) {
            widgets.append(widget);
        }
    }
    return widgets;
}

void SettingsGridLayout::setGridEnabled(bool enabled)
{
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        widget->setEnabled(enabled);
    }
}

void SettingsGridLayout::clearGrid()
{
    while (QLayoutItem* item = takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

void SettingsGridLayout::hideEverything(bool hide)
{
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        widget->setVisible(!hide);
    }
}

QWidget* SettingsGridLayout::lastEditor() const
{
    QWidget* last = nullptr;
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        if (widget->focusPolicy() != Qt::NoFocus) {
            last = widget;
        }
    }
    return last;
}

void SettingsGridLayout::focusFirstEditor()
{
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        if (widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus) {
            widget->setFocus();
            return;
        }
    }
}
