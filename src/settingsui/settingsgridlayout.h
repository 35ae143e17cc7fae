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
/// Editors write into the settings as the user types; the backup taken by startEditing() is what
/// cancelSettings() goes back to.
class SettingsGridLayout : public QGridLayout
{
    Q_OBJECT

public:
    /// `structSettings` is borrowed and must outlive the grid's widgets, which become children of
    /// `parent`. The grid itself is in no layout yet: that of `parent` or one inside it takes it.
    SettingsGridLayout(HParser::StructSettings* structSettings, QWidget* parent);
    ~SettingsGridLayout() override;

    /// Gives the editors what width there is in this scroll area, which holds the grid, up to the width
    /// of a long text; as long as both live.
    void widenIn(QScrollArea* scroll);

    QSize sizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Shows another struct, in place of the one shown so far, disabled. Rows are used again where
    /// they are of the right kind.
    void showSettings(HParser::StructSettings* structSettings);

    /// Stores every editor into its setting and disables the grid.
    void saveSettings();

    /// Takes the backup and enables the grid; advanced editors only when they were edited before.
    void startEditing();

    /// Restores the backup and builds the grid anew, disabled.
    void cancelSettings();

    /// Value texts of all settings and the advanced mark, kept for the restoration.
    void backupCurrentSettings();

    /// Puts the backup's values back as they were and shows them. A profile's active and default
    /// flags are left alone: they belong to the list.
    void restoreBackedUpSettings();

    void setGridEnabled(bool enabled);

    /// Empties the grid and schedules its widgets for deletion.
    void clearGrid();

    void hideEverything(bool hide);

    /// Puts the keyboard focus into the first enabled editor that is wholly between the top and the
    /// bottom of `seen`, a part of the widgets' parent; without one, into the nearest above it or
    /// else the first of all. A text is selected. Returns that editor; nullptr without any.
    QWidget* focusFirstEditor(const QRect& seen = QRect());

    /// The editors that the Tab key reaches first and last; nullptr in a grid without any.
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
    int room = 0; ///< pixels that the grid may be wide
    QPointer<HParser::StructSettings> settings;
    QVector<SettingsGridRow> rows;                       ///< from top to bottom
    QVector<SettingsGridRow> spareRows;                  ///< not shown, for other structs
    QPointer<AdvancedModeToggleCheckBox> advancedToggle; ///< none without advanced settings
    std::unique_ptr<HParser::StructSettings> backup;     ///< from startEditing() to save or cancel
};
