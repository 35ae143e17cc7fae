#pragma once

#include "settingsui/settingsgridrow.h"

#include <QGridLayout>
#include <QPointer>
#include <QVector>

#include <memory>

class AdvancedModeToggleCheckBox;
class QScrollArea;

namespace HParser
{
class StructSettings;
}

/// The grid of one settings struct: a row per visible setting with its label, editor and units.
///
/// Editors write into the settings as the user types; cancelSettings() restores the backup taken by
/// startEditing().
class SettingsGridLayout : public QGridLayout
{
    Q_OBJECT

public:
    /// `structSettings` is borrowed and must outlive the grid's widgets, which become children of
    /// `parent`. The new grid is in no layout; add it to the layout of `parent` or one inside it.
    SettingsGridLayout(HParser::StructSettings* structSettings, QWidget* parent);
    ~SettingsGridLayout() override;

    /// Gives the editors the available width of this scroll area, which contains the grid, up to
    /// the width of a long text, as long as both exist.
    void widenIn(QScrollArea* scroll);

    QSize sizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Shows another struct instead of the current one, disabled. Rows of the right kind are
    /// reused.
    void showSettings(HParser::StructSettings* structSettings);

    /// Stores the text of every editor in its setting and disables the grid.
    void saveSettings();

    /// Takes the backup and enables the grid; advanced editors only when they were edited before.
    void startEditing();

    /// Restores the backup and rebuilds the grid, disabled.
    void cancelSettings();

    /// Makes a backup of all settings' values and of the advanced state.
    void backupCurrentSettings();

    /// Restores the backup's values and shows them. A profile's active and default flags are left
    /// alone: they belong to the list.
    void restoreBackedUpSettings();

    void setGridEnabled(bool enabled);

    /// Empties the grid and schedules its widgets for deletion.
    void clearGrid();

    void hideEverything(bool hide);

    /// Gives the keyboard focus to the first enabled editor that is completely within the top and
    /// bottom of `seen`, a part of the widgets' parent. If there is none, to the nearest one above
    /// it, or else to the first of all. Selects the text. Returns that editor; nullptr if no editor
    /// is enabled.
    QWidget* focusFirstEditor(const QRect& seen = QRect());

    /// Return the first and last editor in the tab order; nullptr if there is none.
    QWidget* firstEditor() const;
    QWidget* lastEditor() const;

private:
    void inflateGrid();
    SettingsGridRow takeRow(SettingsGridRow::Kind kind, QVector<SettingsGridRow>* unused);
    void placeRows();
    void orderWidgets();
    void commitFocusedEditor();
    void releaseFocus();
    QWidget* firstEnabledEditor(const QRect& seen) const;
    QList<QWidget*> gridWidgets() const;

    QWidget* parentOfWidgets;
    int room = 0; ///< the width that the grid may have, in pixels
    QPointer<HParser::StructSettings> settings;
    QVector<SettingsGridRow> rows;                       ///< from top to bottom
    QVector<SettingsGridRow> spareRows;                  ///< not shown, for other structs
    QPointer<AdvancedModeToggleCheckBox> advancedToggle; ///< none without advanced settings
    std::unique_ptr<HParser::StructSettings> backup;     ///< from startEditing() to save or cancel
};
