#pragma once

#include <QDialog>

#include <memory>

class ProfileSettings;
class SettingsGridLayout;

namespace Ui
{
class GlobalSettingsDialog;
}

/// Edits the charger's global settings.
///
/// The dialog shows itself in edit mode, is application-modal and deletes itself when closed. "OK"
/// keeps the edits. "Cancel", the close control and the Escape key ask first, and then put all
/// values back: the editors write into the settings as the user types.
class GlobalSettingsDialog : public QDialog
{
    Q_OBJECT

public:
    /// `settingsToEdit` is borrowed and must outlive the dialog.
    GlobalSettingsDialog(ProfileSettings* settingsToEdit, QWidget* parent);
    ~GlobalSettingsDialog() override;

public slots:
    /// Shows the settings, ready for editing. Call this again after their block was replaced; the
    /// old block keeps its edits.
    void inflateGrid();

    /// Asks whether to discard the edits; unless the answer is no, restores the old values and
    /// closes.
    void reject() override;

    void on_okButtonClicked();
    void on_cancelButtonClicked();

private:
    std::unique_ptr<Ui::GlobalSettingsDialog> ui;
    ProfileSettings* globalSettings;
    SettingsGridLayout* grid = nullptr; ///< inside the form's container
};
