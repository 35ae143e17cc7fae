#pragma once

#include <QObject>
#include <QPointer>

class ProfileName;
class QWidget;
class SettingsGridLayout;

namespace HParser
{
class Generator;
}
namespace Ui
{
class MainWindow;
}

/// Drives the right side of the main window: shows the selected profile and edits it.
///
/// Hidden while there is no profile; view mode while one is shown; edit mode from "Edit Profile" to
/// "Save Changes" or "Cancel". The keyboard focus then returns to where the edit began. The grid keeps
/// its place meanwhile, and an editor with the focus is always in sight.
class SettingsPaneManager : public QObject
{
    Q_OBJECT

public:
    /// Everything is borrowed and outlives the manager. `mainWindow` is the parent of message boxes.
    SettingsPaneManager(Ui::MainWindow* form, HParser::Generator* settingsGenerator,
                        QWidget* mainWindow);

    /// True while a profile is being edited.
    bool getEditMode() const { return editMode; }

    /// Replaces the schema. The grid is empty until a profile of the new one is shown.
    void setAllSettings(HParser::Generator* newGenerator);

    /// Stores which row is shown, without rebuilding the pane; used after a move.
    void setCurrentProfile(ProfileName* row);

    void hideEverything();
    void unhideEverything();

    /// Empties the grid: its editors release the profile that was shown.
    void clearSettingsPane();

    /// Enable and disable the parts of the pane for edit mode or view mode, and report the change.
    void enableEditing();
    void disableEditing();

    /// Asks the list to set the flags that the boxes show.
    void updateActiveDefaultButtonsInList();

signals:
    /// Emitted with true when editing starts, with false when the pane returns to view mode.
    void editing(bool on);

public slots:
    /// Shows another profile, in view mode.
    void updateSettingsPane(ProfileName* row);

    /// Updates the boxes from the row's active and default flags.
    void quickUpdateSettingsPane(ProfileName* row);

    void on_profilesListEmpty();

    void on_editButtonClicked();
    void on_saveButtonClicked();
    void on_cancelButtonClicked();
    void activateMeClicked(bool checked);
    void defaultMeClicked(bool checked);

private:
    void showGrid();
    void showFlags();
    void focusFirstEditor();
    void returnFocus();
    void restoreGrid();
    void setEditingWidgetsEnabled(bool enabled);
    void setPaneVisible(bool visible);

    Ui::MainWindow* ui;
    QWidget* parentWidget;
    QPointer<ProfileName> currentProfile;
    bool editMode = false;
    QPointer<QWidget> focusBeforeEdit; ///< gets the focus when the edit ends
    HParser::Generator* generator;     ///< kept: part of the interface; nothing reads it
    QPointer<SettingsGridLayout> grid; ///< created for the first profile, reused for the others
};
