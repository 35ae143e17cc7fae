#pragma once

#include <QDialog>

#include <memory>

class ProfileSettings;
class QComboBox;
class SettingsGridLayout;

namespace HParser
{
class Generator;
}
namespace Ui
{
class ProfileWizardDialog;
}

/// Makes a new profile in two pages: first the chemistry, then its settings.
///
/// The dialog shows itself, is application-modal and deletes itself when closed. Cancelling it, or
/// going back, discards the unfinished profile.
class ProfileWizardDialog : public QDialog
{
    Q_OBJECT

public:
    /// `settingsGenerator` is borrowed and must outlive the dialog.
    ProfileWizardDialog(HParser::Generator* settingsGenerator, QWidget* parent);
    ~ProfileWizardDialog() override;

signals:
    /// The finished profile; the receiver takes ownership.
    void newProfileMade(ProfileSettings* profile);

public slots:
    // Connected by name to the form's buttons.
    void on_nextButton_clicked();
    void on_backButton_clicked();
    void on_cancelButton_clicked();

private:
    void askTitlesWizard();
    void askSettingsWizard();
    void saveSettings();
    void clearForm();
    void updateWizard();
    void transferSettings();

    int step = 0; ///< 0 chemistry page, 1 settings page, 2 finished
    std::unique_ptr<Ui::ProfileWizardDialog> ui;
    HParser::Generator* generator;
    std::unique_ptr<ProfileSettings> profile;
    QComboBox* chemistryBox = nullptr;  ///< a widget of page 1
    SettingsGridLayout* grid = nullptr; ///< a layout of page 2
};
