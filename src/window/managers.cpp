#include "window/managers.h"

#include "HEXGeneratorParser/hexmanager.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/profilename.h"
#include "profiles/profilenameslistmanager.h"
#include "settingsui/globalsettingsmanager.h"
#include "settingsui/settingspanemanager.h"
#include "transfer/uploaddownloadmanager.h"
#include "ui_mainwindow.h"
#include "updatecheck/newfirmwarecheckermanager.h"
#include "xmlformat/xmlmanager.h"

using HEXGeneratorParser::HEXManager;
using ImportProfiles::ImportProfilesMain;
using NewFirmwareChecker::NewFirmwareCheckerManager;
using UploadDownload::UploadDownloadManager;
using XMLGeneratorParser::XMLManager;

void Managers::make(Ui::MainWindow* form, HParser::Generator* generator, QWidget* window)
{
    makeEditing(form, generator, window);
    makeFiles(form, generator, window);
    makeDevices(form, window);
}

void Managers::makeEditing(Ui::MainWindow* form, HParser::Generator* generator, QWidget* window)
{
    pane = new SettingsPaneManager(form, generator, window);
    list = new ProfileNamesListManager(window, form->profileNamesList, form->addProfileButton,
                                       form->profileNameUpButton, form->profileNameDownButton,
                                       generator, pane);
    QObject::connect(list, &ProfileNamesListManager::settingsPaneUpdateNeeded, pane,
                     &SettingsPaneManager::updateSettingsPane);
    QObject::connect(list, &ProfileNamesListManager::quickSettingsPaneUpdateNeeded, pane,
                     &SettingsPaneManager::quickUpdateSettingsPane);
    QObject::connect(list, &ProfileNamesListManager::noMoreProfilesLeft, pane,
                     &SettingsPaneManager::on_profilesListEmpty);
    pane->hideEverything();

    importer = new ImportProfilesMain(window, generator, window);
    QObject::connect(importer, &ImportProfilesMain::profileReadyForImport, list,
                     &ProfileNamesListManager::on_profileReadyForImport);
    QObject::connect(importer, &ImportProfilesMain::importStarted, list,
                     &ProfileNamesListManager::holdBackRows);
    QObject::connect(importer, &ImportProfilesMain::importFinished, list,
                     &ProfileNamesListManager::showHeldBackRows);
}

void Managers::makeFiles(Ui::MainWindow* form, HParser::Generator* generator, QWidget* window)
{
    xml = new XMLManager(window, form->profileNamesList, importer, generator, window);
    QObject::connect(form->actionExportXML, &QAction::triggered, xml,
                     &XMLManager::on_exportAsXMLButtonClicked);
    QObject::connect(form->actionImportXML, &QAction::triggered, xml,
                     &XMLManager::on_importFromXMLButtonClicked);
    QObject::connect(xml, &XMLManager::deleteAllProfiles, list,
                     &ProfileNamesListManager::deleteAllProfilesNoConfirmation);

    hex = new HEXManager(window, form->profileNamesList, generator, importer, window);
    QObject::connect(form->actionExportHEX, &QAction::triggered, hex,
                     &HEXManager::on_exportAsHEXButtonClicked);
    QObject::connect(form->actionImportHEX, &QAction::triggered, hex,
                     &HEXManager::on_importFromHEXButtonClicked);
    QObject::connect(hex, &HEXManager::deleteAllProfiles, list,
                     &ProfileNamesListManager::deleteAllProfilesNoConfirmation);

    globalSettings = new GlobalSettingsManager(window, generator, window);
    QObject::connect(form->actionEditGlobalSettings, &QAction::triggered, globalSettings,
                     &GlobalSettingsManager::on_editGlobalSettingsClicked);
}

void Managers::makeDevices(Ui::MainWindow* form, QWidget* window)
{
    transfers = new UploadDownloadManager(hex, window);
    QObject::connect(form->actionReadProfiles, &QAction::triggered, transfers,
                     &UploadDownloadManager::on_readButtonPressed);
    QObject::connect(form->actionWriteProfiles, &QAction::triggered, transfers,
                     &UploadDownloadManager::on_writeButtonPressed);
    QObject::connect(transfers, &UploadDownloadManager::deleteAllProfiles, list,
                     &ProfileNamesListManager::deleteAllProfilesNoConfirmation);

    updateCheck = new NewFirmwareCheckerManager(window);
    QObject::connect(form->actionCheckNewFirmware, &QAction::triggered, updateCheck,
                     &NewFirmwareCheckerManager::on_checkFirmwareButtonPressed);
}

void Managers::setAllSettings(HParser::Generator* generator) const
{
    pane->setAllSettings(generator);
    list->setAllSettings(generator);
    importer->setAllSettings(generator);
    xml->setAllSettings(generator);
    hex->setAllSettings(generator);
    globalSettings->setAllSettings(generator);
}
