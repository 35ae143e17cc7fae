#include "settingsui/globalsettingsdialog.h"

#include "look/fittedfont.h"
#include "look/screenfit.h"
#include "messagedialogs.h"
#include "profiles/profilesettings.h"
#include "settingsui/focusinsight.h"
#include "settingsui/settingsgridlayout.h"
#include "settingsui/settingsgridscroll.h"
#include "ui_globalsettingsdialog.h"

#include <QMessageBox>

GlobalSettingsDialog::GlobalSettingsDialog(ProfileSettings* settingsToEdit, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::GlobalSettingsDialog>()),
      globalSettings(settingsToEdit)
{
    ui->setupUi(this);
    new FittedFont(this);
    new ScreenFit(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Global Settings Editor"));
    setWindowModality(Qt::ApplicationModal);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                   | Qt::WindowSystemMenuHint);
    SettingsGridScroll::dress(ui->gridScroll);
    new FocusInSight(ui->gridScroll);
    connect(ui->okPushButton, &QPushButton::clicked, this,
            &GlobalSettingsDialog::on_okButtonClicked);
    connect(ui->cancelPushButton, &QPushButton::clicked, this,
            &GlobalSettingsDialog::on_cancelButtonClicked);
    inflateGrid();
    show();
}

GlobalSettingsDialog::~GlobalSettingsDialog() = default;

void GlobalSettingsDialog::inflateGrid()
{
    if (grid != nullptr) {
        grid->clearGrid();
        grid->deleteLater();
    }
    grid = new SettingsGridLayout(globalSettings->settings, ui->verticalLayoutWidget);
    ui->containerLayout->addLayout(grid);
    ui->containerLayout->setAlignment(grid, Qt::AlignTop | Qt::AlignLeft);
    grid->widenIn(ui->gridScroll);
    grid->startEditing();
    grid->focusFirstEditor();
}

void GlobalSettingsDialog::on_okButtonClicked()
{
    grid->saveSettings();
    accept();
}

void GlobalSettingsDialog::on_cancelButtonClicked()
{
    const int answer = MessageDialogs::question(
        this, QStringLiteral("Cancel Editing?"),
        QStringLiteral("All your changes will be lost. Do you want to continue?"));
    if (answer == QMessageBox::Yes) {
        grid->cancelSettings();
        QDialog::reject();
    }
}

void GlobalSettingsDialog::reject()
{
    on_cancelButtonClicked();
}
