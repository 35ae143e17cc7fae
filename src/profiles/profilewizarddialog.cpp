#include "profiles/profilewizarddialog.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsettings.h"
#include "look/fittedfont.h"
#include "look/screenfit.h"
#include "profiles/profilesettings.h"
#include "settingsui/focusinsight.h"
#include "settingsui/settingsgridlayout.h"
#include "settingsui/settingsgridscroll.h"
#include "ui_profilewizarddialog.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>

ProfileWizardDialog::ProfileWizardDialog(HParser::Generator* settingsGenerator, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::ProfileWizardDialog>()), generator(settingsGenerator)
{
    ui->setupUi(this);
    new FittedFont(this);
    new ScreenFit(this);
    new FocusInSight(ui->gridScroll);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Profile Wizard"));
    setWindowModality(Qt::ApplicationModal);
    askTitlesWizard();
    show();
}

ProfileWizardDialog::~ProfileWizardDialog()
{
    clearForm(); // the editors must release the profile before it is deleted
}

void ProfileWizardDialog::askTitlesWizard()
{
    clearForm();
    SettingsGridScroll::undress(ui->gridScroll);
    profile = std::make_unique<ProfileSettings>();
    ui->backButton->setEnabled(false);
    ui->nextButton->setText(QStringLiteral("Next >"));
    ui->nextButton->setAccessibleName(QStringLiteral("Next"));
    ui->nextButton->setAccessibleDescription(QStringLiteral("Continues with the settings"));
    ui->chemistryLabel->clear();

    chemistryBox = new QComboBox;
    const QList<HParser::StructSettings*> chemistries = generator->getChemistrySettings();
    for (const HParser::StructSettings* chemistry : chemistries) {
        chemistryBox->addItem(chemistry->getDescriptiveName());
    }
    auto* chemistryPrompt = new QLabel(QStringLiteral("Chemistry:"));
    chemistryPrompt->setBuddy(chemistryBox);
    chemistryBox->setAccessibleName(QStringLiteral("Chemistry"));
    chemistryBox->setAccessibleDescription(QStringLiteral("The type of battery to charge"));
    chemistryBox->view()->setAccessibleName(chemistryBox->accessibleName());
    ui->containerLayout->addWidget(chemistryPrompt);
    ui->containerLayout->addWidget(chemistryBox);
    ui->containerLayout->setAlignment(Qt::AlignTop);
    chemistryBox->setFocus();
}

void ProfileWizardDialog::askSettingsWizard()
{
    clearForm();
    ui->chemistryLabel->setText(QStringLiteral("- ") + profile->chemistry);
    SettingsGridScroll::dress(ui->gridScroll);
    grid = new SettingsGridLayout(profile->settings, ui->horizontalLayoutWidget);
    ui->containerLayout->addLayout(grid);
    ui->containerLayout->setAlignment(grid, Qt::AlignLeft);
    grid->widenIn(ui->gridScroll);
    grid->startEditing();
    grid->focusFirstEditor();
}

void ProfileWizardDialog::on_nextButton_clicked()
{
    saveSettings();
    clearForm();
    ++step;
    ui->backButton->setEnabled(true);
    updateWizard();
}

void ProfileWizardDialog::on_backButton_clicked()
{
    clearForm();
    --step;
    updateWizard();
}

void ProfileWizardDialog::on_cancelButton_clicked()
{
    close();
}

void ProfileWizardDialog::saveSettings()
{
    ui->nextButton->setText(QStringLiteral("Finish"));
    ui->nextButton->setAccessibleName(QStringLiteral("Finish"));
    ui->nextButton->setAccessibleDescription(QStringLiteral("Adds the profile to the list"));
    if (step == 0) {
        profile->setChemistry(chemistryBox->currentText(), generator);
    } else if (step == 1) {
        grid->saveSettings();
    }
}

void ProfileWizardDialog::clearForm()
{
    if (grid != nullptr) {
        grid->clearGrid();
        grid->deleteLater();
        grid = nullptr;
    }
    chemistryBox = nullptr;
    for (int i = 0; i < ui->containerLayout->count(); ++i) {
        if (QWidget* widget = ui->containerLayout->itemAt(i)->widget()) {
            widget->hide(); // the next page is shown before this one is deleted
            widget->deleteLater();
        }
    }
}

void ProfileWizardDialog::updateWizard()
{
    switch (step) {
    case 0:
        askTitlesWizard();
        break;
    case 1:
        askSettingsWizard();
        break;
    case 2:
        transferSettings();
        break;
    default:
        break;
    }
}

void ProfileWizardDialog::transferSettings()
{
    emit newProfileMade(profile.release());
    close();
}
