#include "profiles/profilewizarddialog.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsettings.h"
#include "profiles/profilesettings.h"
#include "settingsui/settingsgridlayout.h"
#include "settingsui/settingsgridscroll.h"
#include "ui_profilewizarddialog.h"
#include "widgets/fittedfont.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>

ProfileWizardDialog::ProfileWizardDialog(HParser::Generator* settingsGenerator, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::ProfileWizardDialog>()), generator(settingsGenerator)
{
    ui->setupUi(this);
    new FittedFont(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Profile Wizard"));
    setWindowModality(Qt::ApplicationModal);
    connect(ui->nextButton, &QPushButton::clicked, this,
            &ProfileWizardDialog::on_nextButton_clicked);
    connect(ui->backButton, &QPushButton::clicked, this,
            &ProfileWizardDialog::on_backButton_clicked);
    connect(ui->cancelButton, &QPushButton::clicked, this,
            &ProfileWizardDialog::on_cancelButton_clicked);
    askTitlesWizard();
    show();
}

ProfileWizardDialog::~ProfileWizardDialog()
{
    clearForm(); // the editors go before the profile that they are bound to
}

void ProfileWizardDialog::askTitlesWizard()
{
    clearForm();
    profile = std::make_unique<ProfileSettings>();
    ui->backButton->setEnabled(false);
    ui->nextButton->setText(QStringLiteral("Next >"));
    ui->nextButton->setAccessibleName(QStringLiteral("Next"));
    ui->nextButton->setAccessibleDescription(QStringLiteral("On to the settings"));
    ui->chemistryLabel->clear();

    chemistryBox = new QComboBox;
    const QList<HParser::StructSettings*> chemistries = generator->getChemistrySettings();
    for (const HParser::StructSettings* chemistry : chemistries) {
        chemistryBox->addItem(chemistry->getDescriptiveName());
    }
    auto* chemistryPrompt = new QLabel(QStringLiteral("Chemistry:"));
    chemistryPrompt->setBuddy(chemistryBox);
    chemistryBox->setAccessibleName(QStringLiteral("Chemistry"));
    chemistryBox->setAccessibleDescription(QStringLiteral("The kind of battery to be charged"));
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
    auto* scroll = new SettingsGridScroll(profile->settings, nullptr);
    grid = scroll->getGrid();
    ui->containerLayout->setAlignment({});
    ui->containerLayout->addWidget(scroll);
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
    grid = nullptr;
    chemistryBox = nullptr;
    while (QLayoutItem* item = ui->containerLayout->takeAt(0)) {
        delete item->widget();
        delete item;
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
