// The start-up half of MainWindow: everything that must be true before the user sees the window.

#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "HEXGeneratorParser/hexmanager.h"
#include "HEXGeneratorParser/hexutility.h"
#include "KelvaronBundle/bundlechooser.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "KelvaronBundle/versionstring.h"
#include "applicationglobalmap.h"
#include "base/buildconstants.h"
#include "base/fatalassertion.h"
#include "base/installedfilescope.h"
#include "base/standardoutput.h"
#include "base/textfile.h"
#include "firmware/finishingrun.h"
#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "installation/folderseat.h"
#include "mainwindow.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/liststatus.h"
#include "profiles/profilename.h"
#include "profiles/profilenameslistmanager.h"
#include "rescue/profilebackups.h"
#include "rescue/profilerescue.h"
#include "settingsui/globalsettingsmanager.h"
#include "settingsui/settingspanemanager.h"
#include "transfer/comdevicewatcher.h"
#include "transfer/uploaddownloadmanager.h"
#include "ui_mainwindow.h"
#include "updatecheck/newfirmwarecheckermanager.h"
#include "xmlformat/xmlmanager.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <cstdlib>

using FirmwareTool::KelvaronFirmwareToolWindow;
using HEXGeneratorParser::HEXManager;
using ImportProfiles::ImportProfilesMain;
using NewFirmwareChecker::NewFirmwareCheckerManager;
using UploadDownload::UploadDownloadManager;
using XMLGeneratorParser::XMLManager;

namespace
{
const QString filesFolder = QStringLiteral("KelvaronProfileEditorFiles");
const QString schemaFile = QStringLiteral("kelvaron_chemistries.cb");
const QString deviceFile = QStringLiteral("device.txt");
const QString savedProfilesFolder = QStringLiteral("saved_profiles");
const QString bundleVersionKey = QStringLiteral("bundle_version");

/// The folder of the executable. A file that was replaced after its start, by an upgrade or by another
/// start of the launcher, has no name in the system any more, so the name that it was started by counts.
QString programFolder()
{
    return QCoreApplication::applicationFilePath().isEmpty()
               ? QFileInfo(QCoreApplication::arguments().value(0)).absolutePath()
               : QCoreApplication::applicationDirPath();
}
} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    runTests(); // a failing check ends the process without a message box
    FatalAssertion::setLastStep(
        [this](const FatalAssertion::Report& report) { endOnFatalAssertion(report); });
    setWorkingDirectory();
    seat = std::make_unique<FolderSeat>(QStringLiteral("."));
    createRequiredFiles();
    installationChecks();
    initialised = true;
    loadSchema();
    buildWindow();
    createManagers();
    extraUIAdditions();
    connectCommands();
    printCurrentEnvironmentValues();
    startDeviceWatcher();
    if (!seat->isFirst()) {
        QTimer::singleShot(0, this, &MainWindow::reportOtherEditor); // over the window
    }
    if (QCoreApplication::arguments().contains(QStringLiteral("-f"))) {
        runFirmwareToolOnly();
    }
}

void MainWindow::setWorkingDirectory()
{
    QDir folder(programFolder());
    if (!folder.cd(filesFolder) || !QDir::setCurrent(folder.absolutePath())) {
        MessageDialogs::mainFolderNotFound(this);
        endProcess(EXIT_FAILURE);
    }
}

bool MainWindow::createRequiredFiles()
{
    bundleFileName = getMostRecentKelvaronBundle();
    printLine(QStringLiteral("Bundle file being used in current dir: ") + bundleFileName);
    const InstalledFileScope scope(bundleFileName);
    KelvaronBundle bundle(bundleFileName);
    bundle.parseKeyValuePairs();
    const QString required = bundle.valueFromKey(QStringLiteral("MIN_SOFTWARE_VERSION_REQUIRED"));
    if (!required.isEmpty()) {
        const VersionString own(QString::fromLatin1(BuildConstants::editorVersion));
        const VersionString requiredVersion(required);
        if (own.lessThan(requiredVersion)) {
            const VersionString bundleVersion(ApplicationGlobalMap::getString(bundleVersionKey));
            MessageDialogs::currentSoftwareTooOld(this, bundleVersion, requiredVersion);
            endProcess(EXIT_SUCCESS); // an orderly refusal, not an installation error
        }
    }
    bundle.parseBundle(); // a mismatch is only reported on standard output
    if (bundle.getNumEmbedded() > KelvaronBundle::SCHEMA_HEADER) {
        extract(bundle);
    } else if (hasSchemaFile() && hasDeviceFile()) {
        reportBundleNotRead();
    } // without older files the installation checks end the start
    return true;
}

void MainWindow::reportBundleNotRead()
{
    const bool isTooLarge = QFileInfo(bundleFileName).size() > TextFile::largestFile;
    MessageDialogs::message(
        this, QStringLiteral("Bundle Not Read"),
        QStringLiteral("The file %1 is %2, so it was not read and the bundle used before stays in "
                       "use. Please replace the file, or remove it from the folder %3, and restart "
                       "the program.")
            .arg(bundleFileName,
                 isTooLarge ? QStringLiteral("far too large for a Kelvaron Bundle")
                            : QStringLiteral("not a complete Kelvaron Bundle"),
                 filesFolder),
        Qt::PlainText);
}

void MainWindow::extract(const KelvaronBundle& bundle)
{
    const QVector<TextFile::Content> files = {
        {deviceFile, bundle.bytesOf(KelvaronBundle::DEVICE_DESCRIPTION)},
        {schemaFile, bundle.bytesOf(KelvaronBundle::SCHEMA_HEADER)}};
    // At most starts they are up to date; waiting for the disk takes longer than all the rest.
    const bool areThere = std::all_of(files.cbegin(), files.cend(), [](const auto& content) {
        QFile file(content.path);
        return file.open(QIODevice::ReadOnly) && file.readAll() == content.bytes;
    });
    if (areThere || TextFile::writeTogether(files)) {
        return;
    }
    if (!hasSchemaFile()
        && !hasDeviceFile()) { // nothing older that one of them could be mixed with
        bundle.saveFile(KelvaronBundle::DEVICE_DESCRIPTION, QStringLiteral("./") + deviceFile);
        bundle.saveFile(KelvaronBundle::SCHEMA_HEADER, QStringLiteral("./") + schemaFile);
    }
    if (!hasSchemaFile() || !hasDeviceFile()) {
        return; // the installation checks report a missing file
    }
    MessageDialogs::message(
        this, QStringLiteral("Files Not Written"),
        QStringLiteral("The files %1 and %2 of the Kelvaron Bundle %3 could not be written, so the "
                       "older ones are used. They may not fit the charger. Please make room on the "
                       "disk, or make the folder %4 writable, and restart the program.")
            .arg(deviceFile, schemaFile, bundleFileName, filesFolder),
        Qt::PlainText);
}

bool MainWindow::hasSchemaFile()
{
    return QFileInfo(schemaFile).isFile();
}

bool MainWindow::hasDeviceFile()
{
    return QFileInfo(deviceFile).isFile();
}

QString MainWindow::getMostRecentKelvaronBundle()
{
    const std::optional<BundleChooser::Choice> choice =
        BundleChooser::mostRecent(QStringLiteral("./"));
    if (!choice) {
        MessageDialogs::noBundlesFound(this);
        endProcess(EXIT_FAILURE);
    }
    ApplicationGlobalMap::putString(bundleVersionKey, choice->version);
    return choice->fileName;
}

void MainWindow::installationChecks()
{
    if (!hasSchemaFile()) {
        MessageDialogs::cbFileMissing(this);
        endProcess(EXIT_FAILURE);
    }
    if (!QFileInfo::exists(savedProfilesFolder)) {
        QDir().mkdir(savedProfilesFolder);
    }
    if (!QFileInfo(QString::fromLatin1(BuildConstants::uploaderFileName)).isFile()) {
        MessageDialogs::suplMissing(this);
        endProcess(EXIT_FAILURE);
    }
    if (!hasDeviceFile()) {
        MessageDialogs::deviceTxtMissing(this);
        endProcess(EXIT_FAILURE);
    }
}

void MainWindow::loadSchema()
{
    // The schema comes out of the bundle at every start: the bundle is what can be replaced.
    const InstalledFileScope bundleScope(bundleFileName);
    auto* newGenerator = new HParser::Generator(this);
    newGenerator->setHFileLocation(schemaFile);
    newGenerator->generate();
    const InstalledFileScope schemaScope(schemaFile);
    HParser::SchemaCheck::run(*newGenerator);
    HEXGeneratorParser::HexUtility::numProfilesAllowed(newGenerator); // a schema must have a size
    generator = newGenerator;
}

void MainWindow::buildWindow()
{
    printLine(QStringLiteral("Starting the UI"));
    ui->setupUi(this);
    setWindowTitle(QStringLiteral("Kelvaron Profile Editor")
                   + QStringLiteral(" FOR FIRMWARE VERSION 0.9x ONLY"));
}

void MainWindow::createManagers()
{
    settingsPaneManager = new SettingsPaneManager(ui.get(), generator, this);
    profileNamesListManager = new ProfileNamesListManager(
        this, ui->profileNamesList, ui->addProfileButton, ui->profileNameUpButton,
        ui->profileNameDownButton, generator, settingsPaneManager);
    connect(profileNamesListManager, &ProfileNamesListManager::settingsPaneUpdateNeeded,
            settingsPaneManager, &SettingsPaneManager::updateSettingsPane);
    connect(profileNamesListManager, &ProfileNamesListManager::quickSettingsPaneUpdateNeeded,
            settingsPaneManager, &SettingsPaneManager::quickUpdateSettingsPane);
    connect(profileNamesListManager, &ProfileNamesListManager::noMoreProfilesLeft,
            settingsPaneManager, &SettingsPaneManager::on_profilesListEmpty);
    connect(settingsPaneManager, &SettingsPaneManager::editing, this,
            &MainWindow::disableToolbarActions);
    settingsPaneManager->hideEverything();

    importProfilesMain = new ImportProfilesMain(this, generator, this);
    connect(importProfilesMain, &ImportProfilesMain::profileReadyForImport, profileNamesListManager,
            &ProfileNamesListManager::on_profileReadyForImport);
    connect(importProfilesMain, &ImportProfilesMain::importStarted, profileNamesListManager,
            &ProfileNamesListManager::holdBackRows);
    connect(importProfilesMain, &ImportProfilesMain::importFinished, profileNamesListManager,
            &ProfileNamesListManager::showHeldBackRows);

    xmlManager = new XMLManager(this, ui->profileNamesList, importProfilesMain, generator, this);
    connect(ui->actionExportXML, &QAction::triggered, xmlManager,
            &XMLManager::on_exportAsXMLButtonClicked);
    connect(ui->actionImportXML, &QAction::triggered, xmlManager,
            &XMLManager::on_importFromXMLButtonClicked);
    connect(xmlManager, &XMLManager::deleteAllProfiles, profileNamesListManager,
            &ProfileNamesListManager::deleteAllProfilesNoConfirmation);

    profileRescue = new ProfileRescue(
        ui->profileNamesList, [this] { return xmlManager->document(); }, savedProfilesFolder,
        seat->ownName(QStringLiteral("rescued_profiles")), this);

    profileBackups = new ProfileBackups(
        [this] { return ui->profileNamesList->count() > 0 ? xmlManager->document() : QString(); },
        savedProfilesFolder + QStringLiteral("/backups"), seat->ownName(QStringLiteral("profiles")),
        this);
    connect(profileBackups, &ProfileBackups::notKept, ui->statusBar, [this](const QString& text) {
        constexpr int shownFor = 20000; // milliseconds
        ui->statusBar->showMessage(text, shownFor);
    });
    connect(profileNamesListManager, &ProfileNamesListManager::aboutToDeleteAll, profileBackups,
            [this] { profileBackups->keep(ProfileBackups::Occasion::DELETED); });

    hexManager = new HEXManager(this, ui->profileNamesList, generator, importProfilesMain, this);
    connect(ui->actionExportHEX, &QAction::triggered, hexManager,
            &HEXManager::on_exportAsHEXButtonClicked);
    connect(ui->actionImportHEX, &QAction::triggered, hexManager,
            &HEXManager::on_importFromHEXButtonClicked);
    connect(hexManager, &HEXManager::deleteAllProfiles, profileNamesListManager,
            &ProfileNamesListManager::deleteAllProfilesNoConfirmation);

    globalSettingsManager = new GlobalSettingsManager(this, generator, this);
    connect(ui->actionEditGlobalSettings, &QAction::triggered, globalSettingsManager,
            &GlobalSettingsManager::on_editGlobalSettingsClicked);

    uploadDownloadManager = new UploadDownloadManager(hexManager, this);
    connect(ui->actionReadProfiles, &QAction::triggered, uploadDownloadManager,
            &UploadDownloadManager::on_readButtonPressed);
    connect(ui->actionWriteProfiles, &QAction::triggered, uploadDownloadManager,
            &UploadDownloadManager::on_writeButtonPressed);
    connect(uploadDownloadManager, &UploadDownloadManager::deleteAllProfiles,
            profileNamesListManager, &ProfileNamesListManager::deleteAllProfilesNoConfirmation);

    // What a file or the charger replaces is saved first.
    const ReplaceGuard guard = [this] { return backUpBeforeReplacing(); };
    xmlManager->setReplaceGuard(guard);
    hexManager->setReplaceGuard(guard);
    uploadDownloadManager->setReplaceGuard(guard);
    uploadDownloadManager->setBackups(profileBackups);

    newFirmwareCheckerManager = new NewFirmwareCheckerManager(this);
    connect(ui->actionCheckNewFirmware, &QAction::triggered, newFirmwareCheckerManager,
            &NewFirmwareCheckerManager::on_checkFirmwareButtonPressed);
    connect(newFirmwareCheckerManager, &NewFirmwareCheckerManager::bundleDownloaded, this,
            &MainWindow::reloadBundle);
}

void MainWindow::connectCommands()
{
    connect(ui->actionHelp, &QAction::triggered, this, &MainWindow::on_actionHelp);
    connect(ui->actionHelp_2, &QAction::triggered, this, &MainWindow::on_actionHelp);
    connect(ui->actionAbout, &QAction::triggered, this, &MainWindow::on_actionAbout);
    connect(ui->actionExit, &QAction::triggered, this, &MainWindow::on_actionExit);
    connect(ui->actionFlashFirmware, &QAction::triggered, this, &MainWindow::on_flashFirmware);
    connect(readFromDeviceAction, &QAction::triggered, uploadDownloadManager,
            &UploadDownloadManager::on_readButtonPressed);
    connect(writeToDeviceAction, &QAction::triggered, uploadDownloadManager,
            &UploadDownloadManager::on_writeButtonPressed);
    connect(loadFromFileAction, &QAction::triggered, xmlManager,
            &XMLManager::on_importFromXMLButtonClicked);
    connect(saveToFileAction, &QAction::triggered, xmlManager,
            &XMLManager::on_exportAsXMLButtonClicked);
    connect(ui->actionDeleteAllProfiles, &QAction::triggered, profileNamesListManager,
            &ProfileNamesListManager::deleteAllProfilesAskConfirmation);
    connect(deleteAllAction, &QAction::triggered, profileNamesListManager,
            &ProfileNamesListManager::deleteAllProfilesAskConfirmation);
}

void MainWindow::printCurrentEnvironmentValues()
{
    printLine(QStringLiteral("Current working directory : ") + QDir::currentPath());
    printLine(QStringLiteral("CB File Location : ") + QFileInfo(schemaFile).absoluteFilePath());
}

void MainWindow::startDeviceWatcher()
{
    // A list of all ports takes as long as the whole window, which need not wait for it.
    constexpr int firstLook = 200; // milliseconds
    deviceWatcher = std::make_unique<COMDeviceWatcher>(nullptr);
    QTimer::singleShot(firstLook, deviceWatcher.get(), &COMDeviceWatcher::startWatching);
}

void MainWindow::reportOtherEditor()
{
    MessageDialogs::message(
        this, QStringLiteral("Another Editor Is Open"),
        QStringLiteral(
            "Another Kelvaron Profile Editor is open in the same folder. The profiles of "
            "the two are separate: save them under different names. This editor makes "
            "its backups in files of its own, such as %1.")
            .arg(seat->ownName(QStringLiteral("backup_before_replace.xml"))),
        Qt::PlainText);
}

void MainWindow::runFirmwareToolOnly()
{
    KelvaronFirmwareToolWindow tool(this);
    tool.setAttribute(Qt::WA_DeleteOnClose, false); // it stands on the stack
    QEventLoop loop;
    connect(&tool, &KelvaronFirmwareToolWindow::closing, &loop, &QEventLoop::quit);
    connect(&tool, &KelvaronFirmwareToolWindow::flashed, this, &MainWindow::reloadBundle);
    loop.exec();
    endProcess(EXIT_SUCCESS);
}

void MainWindow::endProcess(int exitCode)
{
    FatalAssertion::setLastStep({});
    FirmwareTool::FinishingRun::waitForAll();
    seat.reset(); // exit() does not destroy this window
    std::exit(exitCode);
}

void MainWindow::endOnFatalAssertion(const FatalAssertion::Report& report)
{
    const QString rescueFile = profileRescue != nullptr ? profileRescue->save() : QString();
    QString details = report.assertion;
    if (!report.context.isEmpty()) {
        details += QLatin1Char('\n') + report.context;
    }
    if (!report.installedFile.isEmpty()) {
        const QString advice =
            QStringLiteral("To see every problem of this file with its line and what to write "
                           "instead, run: kelvaron-profiles check \"%1\"")
                .arg(QDir::toNativeSeparators(QFileInfo(report.installedFile).absoluteFilePath()));
        printLine(advice);
        details += QLatin1Char('\n') + advice;
    }
    MessageDialogs::fatalError(nullptr, report.installedFile, details, rescueFile);
}
