#include "settingsui/settingsgridlayout.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/settingscheckbox.h"
#include "settingsui/settingslineedit.h"

#include <QResizeEvent>
#include <QScrollArea>

#include <algorithm>

using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
/// The flags that the list manager keeps; a grid never restores them.
bool belongsToList(const StructSettings& settings, const StructSetting& setting)
{
    return !settings.getGlobal()
           && (setting.descriptiveName == HParser::ProfileConventions::activeFlag
               || setting.descriptiveName == HParser::ProfileConventions::defaultFlag);
}

/// Copies value texts member by member; both belong to the same schema struct.
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
    : parentOfWidgets(parent), settings(structSettings)
{
    // No margin beside the units, whose column is wide enough.
    setContentsMargins(parent->isRightToLeft() ? QMargins(0, 9, 9, 9) : QMargins(9, 9, 0, 9));
    setHorizontalSpacing(3);
    setColumnMinimumWidth(2, 3);
    setColumnMinimumWidth(SettingsGridRow::unitsColumn, 46);
    setColumnStretch(SettingsGridRow::editorColumn, 1);
    inflateGrid();
}

SettingsGridLayout::~SettingsGridLayout() = default;

void SettingsGridLayout::widenIn(QScrollArea* scroll)
{
    room = scroll->viewport()->width();
    scroll->viewport()->installEventFilter(this);
    update();
}

QSize SettingsGridLayout::sizeHint() const
{
    const QSize narrow = QGridLayout::sizeHint();
    const int widest =
        narrow.width() + SettingsGridRow::widestEditor - SettingsGridRow::editorWidth;
    return {std::clamp(room, narrow.width(), widest), narrow.height()};
}

bool SettingsGridLayout::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        room = static_cast<QResizeEvent*>(event)->size().width();
        update();
    }
    return QGridLayout::eventFilter(watched, event);
}

void SettingsGridLayout::showSettings(StructSettings* structSettings)
{
    backup.reset();
    settings = structSettings;
    inflateGrid();
}

void SettingsGridLayout::inflateGrid()
{
    QVector<SettingsGridRow> unused = rows + spareRows;
    rows.clear();
    advancedToggle = nullptr;
    const QList<StructSetting*> shown = settings->getStructSettings();
    for (StructSetting* setting : shown) {
        if (!setting->isBasic && advancedToggle == nullptr) {
            rows.append(takeRow(SettingsGridRow::ADVANCED_TOGGLE, &unused));
            advancedToggle = static_cast<AdvancedModeToggleCheckBox*>(rows.last().getEditor());
        }
        rows.append(takeRow(SettingsGridRow::kindOf(*setting), &unused));
        rows.last().show(setting);
    }
    for (SettingsGridRow& row : unused) {
        row.putAside();
    }
    spareRows = unused;
    placeRows();
    if (advancedToggle != nullptr) {
        advancedToggle->bindSettings(shown, settings);
        advancedToggle->enableAdvancedMode(settings->getAdvancedSettingsEdited());
    }
    setGridEnabled(false);
}

SettingsGridRow SettingsGridLayout::takeRow(SettingsGridRow::Kind kind,
                                            QVector<SettingsGridRow>* unused)
{
    // Prefer the row already at this position; otherwise take the last one of this kind, which no
    // other setting will reuse.
    const int number = rows.size();
    int found = -1;
    for (int i = 0; i < unused->size(); ++i) {
        if (unused->at(i).getKind() == kind) {
            found = i;
            if (unused->at(i).getNumber() == number) {
                break;
            }
        }
    }
    return found < 0 ? SettingsGridRow(kind, this, parentOfWidgets) : unused->takeAt(found);
}

void SettingsGridLayout::placeRows()
{
    bool isOrderChanged = false;
    for (int i = 0; i < rows.size(); ++i) {
        isOrderChanged = isOrderChanged || rows.at(i).getNumber() != i;
        rows[i].placeAt(i);
    }
    if (isOrderChanged) {
        orderWidgets();
    }
}

void SettingsGridLayout::orderWidgets()
{
    QWidget* previous = nullptr;
    for (SettingsGridRow& row : rows) {
        row.raise();
        QWidget* editor = row.getEditor();
        if (editor == nullptr) {
            continue;
        }
        if (previous != nullptr) {
            QWidget::setTabOrder(previous, editor);
        }
        previous = editor;
    }
}

void SettingsGridLayout::saveSettings()
{
    commitFocusedEditor();
    for (const SettingsGridRow& row : qAsConst(rows)) {
        QWidget* widget = row.getEditor();
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
    // Where buttons take no focus, the text of the field with the focus is not stored yet. Stored
    // after the others, it could be overwritten by a formula that one of them triggers.
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
    releaseFocus(); // a value stored by this is restored, too
    restoreBackedUpSettings();
    backup.reset();
    clearGrid();
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

void SettingsGridLayout::releaseFocus()
{
    QWidget* focused = parentOfWidgets->window()->focusWidget();
    if (focused != nullptr && parentOfWidgets->isAncestorOf(focused)) {
        focused->clearFocus();
    }
}

void SettingsGridLayout::setGridEnabled(bool enabled)
{
    if (!enabled) {
        // Disabling an editor with the focus moves the focus to the next one, and a scroll area
        // would follow it to the last.
        releaseFocus();
    }
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        widget->setEnabled(enabled);
    }
}

void SettingsGridLayout::clearGrid()
{
    for (QVector<SettingsGridRow>* group : {&rows, &spareRows}) {
        for (SettingsGridRow& row : *group) {
            row.deleteWidgets();
        }
        group->clear();
    }
}

void SettingsGridLayout::hideEverything(bool hide)
{
    const QList<QWidget*> widgets = gridWidgets();
    for (QWidget* widget : widgets) {
        widget->setVisible(!hide);
    }
}

QWidget* SettingsGridLayout::firstEditor() const
{
    const auto found = std::find_if(rows.cbegin(), rows.cend(), [](const SettingsGridRow& row) {
        return row.getEditor() != nullptr;
    });
    return found != rows.cend() ? found->getEditor() : nullptr;
}

QWidget* SettingsGridLayout::lastEditor() const
{
    const auto found = std::find_if(rows.crbegin(), rows.crend(), [](const SettingsGridRow& row) {
        return row.getEditor() != nullptr;
    });
    return found != rows.crend() ? found->getEditor() : nullptr;
}

QWidget* SettingsGridLayout::firstEnabledEditor(const QRect& seen) const
{
    QWidget* nearest = nullptr;
    for (const SettingsGridRow& row : rows) {
        QWidget* editor = row.getEditor();
        if (editor == nullptr || !editor->isEnabled()) {
            continue;
        }
        const bool isAbove = editor->geometry().top() < seen.top();
        if (!isAbove && editor->geometry().bottom() <= seen.bottom()) {
            return editor;
        }
        if (isAbove || nearest == nullptr) {
            nearest = editor;
        }
    }
    return nearest;
}

QWidget* SettingsGridLayout::focusFirstEditor(const QRect& seen)
{
    QWidget* editor = firstEnabledEditor(seen);
    if (editor != nullptr) {
        editor->setFocus();
    }
    if (auto* lineEdit = qobject_cast<SettingsLineEdit*>(editor)) {
        lineEdit->selectAll();
    }
    return editor;
}
