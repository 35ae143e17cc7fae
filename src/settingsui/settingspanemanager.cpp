#include "settingsui/settingspanemanager.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "messagedialogs.h"
#include "profiles/profilename.h"
#include "profiles/profilesettings.h"
#include "settingsui/focusinsight.h"
#include "settingsui/settingsgridlayout.h"
#include "settingsui/settingsgridscroll.h"
#include "ui_mainwindow.h"

#include <QMessageBox>
#include <QScrollBar>

namespace
{
/// The value of the setting of this name; `otherwise` for a schema without it.
QString valueOf(const ProfileSettings& profile, const QString& name, const QString& otherwise)
{
    const HParser::StructSetting* setting =
        profile.settings->getStructSettingByDescriptiveName(name);
    return setting != nullptr ? setting->getValue() : otherwise;
}
/// View mode disables the heading, which must still be readable in every theme.
void keepReadableWhenDisabled(QWidget* widget)
{
    QPalette palette = widget->palette();
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor background = palette.color(QPalette::Active, QPalette::Window);
    const auto blend = [](int strong, int weak) { return (3 * strong + weak) / 4; };
    palette.setColor(QPalette::Disabled, QPalette::WindowText,
                     QColor(blend(text.red(), background.red()),
                            blend(text.green(), background.green()),
                            blend(text.blue(), background.blue())));
    widget->setPalette(palette);
}
} // namespace

SettingsPaneManager::SettingsPaneManager(Ui::MainWindow* form,
                                         HParser::Generator* settingsGenerator, QWidget* mainWindow)
    : QObject(mainWindow), ui(form), parentWidget(mainWindow), generator(settingsGenerator)
{
    connect(ui->editProfileButton, &QPushButton::clicked, this,
            &SettingsPaneManager::on_editButtonClicked);
    connect(ui->cancelChangesButton, &QPushButton::clicked, this,
            &SettingsPaneManager::on_cancelButtonClicked);
    connect(ui->saveChangesButton, &QPushButton::clicked, this,
            &SettingsPaneManager::on_saveButtonClicked);
    connect(ui->profileSettingsActiveCB, &QCheckBox::clicked, this,
            &SettingsPaneManager::activateMeClicked);
    connect(ui->profileSettingsDefaultCB, &QCheckBox::clicked, this,
            &SettingsPaneManager::defaultMeClicked);

    // A click leaves the focus on the editor, as on systems whose buttons take no focus.
    ui->editProfileButton->setFocusPolicy(Qt::TabFocus);
    new FocusInSight(ui->containerScroll);

    keepReadableWhenDisabled(ui->profileSettingsTitle);
    keepReadableWhenDisabled(ui->profileSettingsSubtitle);
    keepReadableWhenDisabled(ui->profileSettingsActiveCB);
    keepReadableWhenDisabled(ui->profileSettingsDefaultCB);
    keepReadableWhenDisabled(ui->profileSettingsModifiableCB);
}

void SettingsPaneManager::setAllSettings(HParser::Generator* newGenerator)
{
    generator = newGenerator;
    clearSettingsPane();
}

void SettingsPaneManager::setCurrentProfile(ProfileName* row)
{
    currentProfile = row;
}

void SettingsPaneManager::updateSettingsPane(ProfileName* row)
{
    currentProfile = row;
    unhideEverything();
    ui->editProfileButton->setEnabled(true);
    const ProfileSettings& profile = *row->getProfileSettings();
    ui->profileSettingsTitle->setText(
        valueOf(profile, QStringLiteral("Title"), profile.getTitle()));
    ui->profileSettingsSubtitle->setText(
        valueOf(profile, QStringLiteral("Subtitle"), profile.getSubtitle()));
    showFlags();
    showGrid();
    disableEditing();
}

void SettingsPaneManager::showFlags()
{
    quickUpdateSettingsPane(currentProfile);
    ui->profileSettingsModifiableCB->setChecked(
        currentProfile->getProfileSettings()->getModifiable());
}

void SettingsPaneManager::showGrid()
{
    HParser::StructSettings* settings = currentProfile->getProfileSettings()->settings;
    if (grid == nullptr) {
        auto* container = new QWidget;
        grid = new SettingsGridLayout(settings, container);
        grid->setSizeConstraint(QLayout::SetFixedSize);
        container->setLayout(grid);
        ui->containerScroll->setWidget(container);
        SettingsGridScroll::dress(ui->containerScroll);
        grid->widenIn(ui->containerScroll);
        return;
    }
    grid->showSettings(settings);
    ui->containerScroll->verticalScrollBar()->setValue(0);
    ui->containerScroll->horizontalScrollBar()->setValue(0);
}

void SettingsPaneManager::quickUpdateSettingsPane(ProfileName* row)
{
    ui->profileSettingsActiveCB->setChecked(row->getActiveStatus());
    ui->profileSettingsDefaultCB->setChecked(row->getDefaultStatus());
}

void SettingsPaneManager::on_profilesListEmpty()
{
    hideEverything();
    currentProfile = nullptr;
}

void SettingsPaneManager::clearSettingsPane()
{
    if (grid != nullptr) {
        grid->clearGrid();
    }
}

void SettingsPaneManager::on_editButtonClicked()
{
    if (grid == nullptr || currentProfile == nullptr || editMode) {
        return;
    }
    focusBeforeEdit = parentWidget->focusWidget();
    grid->startEditing();
    enableEditing();
    // The editors are newer than the widgets above and below them.
    QWidget::setTabOrder(ui->containerScroll, grid->firstEditor());
    QWidget::setTabOrder(grid->lastEditor(), ui->cancelChangesButton);
    QWidget::setTabOrder(ui->cancelChangesButton, ui->saveChangesButton);
    focusFirstEditor();
}

void SettingsPaneManager::focusFirstEditor()
{
    const QWidget* viewport = ui->containerScroll->viewport();
    const QPoint topLeft = grid->parentWidget()->mapFrom(viewport, QPoint(0, 0));
    grid->focusFirstEditor(QRect(topLeft, viewport->size()));
}

void SettingsPaneManager::enableEditing()
{
    editMode = true;
    ui->editProfileButton->setEnabled(false);
    setEditingWidgetsEnabled(true);
    emit editing(true);
}

void SettingsPaneManager::disableEditing()
{
    setEditingWidgetsEnabled(false);
    emit editing(false);
}

void SettingsPaneManager::setEditingWidgetsEnabled(bool enabled)
{
    ui->profileSettingsTitle->setEnabled(enabled);
    ui->profileSettingsSubtitle->setEnabled(enabled);
    ui->profileSettingsActiveCB->setEnabled(enabled);
    ui->profileSettingsDefaultCB->setEnabled(enabled);
    ui->profileSettingsModifiableCB->setEnabled(enabled);
    ui->saveChangesButton->setEnabled(enabled);
    ui->cancelChangesButton->setEnabled(enabled);
}

void SettingsPaneManager::activateMeClicked(bool checked)
{
    if (!checked) {
        ui->profileSettingsDefaultCB->setChecked(false); // a default profile is always active
    }
}

void SettingsPaneManager::defaultMeClicked(bool checked)
{
    if (checked) {
        ui->profileSettingsActiveCB->setChecked(true);
    }
}

void SettingsPaneManager::on_saveButtonClicked()
{
    if (!editMode || grid == nullptr || currentProfile == nullptr) {
        return;
    }
    // Read before the list's rules are applied: they refresh the flag boxes.
    const bool modifiable = ui->profileSettingsModifiableCB->isChecked();
    ProfileSettings& profile = *currentProfile->getProfileSettings();
    grid->saveSettings();
    currentProfile->setTitle(profile.getTitle());
    currentProfile->setSubtitle(profile.getSubtitle());
    updateActiveDefaultButtonsInList();
    ui->profileSettingsTitle->setText(profile.getTitle());
    ui->profileSettingsSubtitle->setText(profile.getSubtitle());
    profile.setModifiable(modifiable);
    disableEditing();
    ui->editProfileButton->setEnabled(true);
    editMode = false;
    returnFocus();
}

void SettingsPaneManager::returnFocus()
{
    QWidget* target = focusBeforeEdit;
    if (target == nullptr || !target->isVisible() || !target->isEnabled()) {
        target = ui->editProfileButton;
    }
    target->setFocus();
}

void SettingsPaneManager::updateActiveDefaultButtonsInList()
{
    if (currentProfile == nullptr) {
        return;
    }
    // A click on the light updates both boxes from the row, so both are read first.
    const bool active = ui->profileSettingsActiveCB->isChecked();
    const bool isDefault = ui->profileSettingsDefaultCB->isChecked();
    if (active != currentProfile->getActiveStatus()) {
        currentProfile->requestActiveChange();
    }
    if (isDefault != currentProfile->getDefaultStatus()) {
        currentProfile->requestDefaultChange();
    }
}

void SettingsPaneManager::on_cancelButtonClicked()
{
    if (!editMode || grid == nullptr || currentProfile == nullptr) {
        return;
    }
    const int answer = MessageDialogs::question(
        parentWidget, QStringLiteral("Cancel Editing?"),
        QStringLiteral("All your changes will be lost. Do you want to continue?"));
    if (answer != QMessageBox::Yes || grid == nullptr || currentProfile == nullptr) {
        return;
    }
    restoreGrid();
    showFlags();
    ui->editProfileButton->setEnabled(true);
    disableEditing();
    editMode = false;
    returnFocus();
}

void SettingsPaneManager::restoreGrid()
{
    // Without its rows the grid is so low for a moment that the view would scroll to the top.
    QScrollBar* down = ui->containerScroll->verticalScrollBar();
    QScrollBar* across = ui->containerScroll->horizontalScrollBar();
    const QPoint place(across->value(), down->value());
    grid->cancelSettings();
    grid->activate();
    across->setValue(place.x());
    down->setValue(place.y());
}

void SettingsPaneManager::hideEverything()
{
    setPaneVisible(false);
}

void SettingsPaneManager::unhideEverything()
{
    setPaneVisible(true);
}

void SettingsPaneManager::setPaneVisible(bool visible)
{
    ui->noProfileLabel->setVisible(!visible);
    ui->editProfileButton->setVisible(visible);
    ui->profileSettingsTitle->setVisible(visible);
    ui->profileSettingsSubtitle->setVisible(visible);
    ui->profileSettingsActiveCB->setVisible(visible);
    ui->profileSettingsDefaultCB->setVisible(visible);
    ui->profileSettingsModifiableCB->setVisible(visible);
    if (grid != nullptr) {
        grid->hideEverything(!visible);
    }
    ui->containerScroll->setVisible(visible);
    ui->saveChangesButton->setVisible(visible);
    ui->cancelChangesButton->setVisible(visible);
}
