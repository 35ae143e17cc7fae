#include "mainwindow.h"

#include "CBGenerator/generator.h"
#include "HEXGeneratorParser/hexbuffer.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/writetohex.h"
#include "applicationglobalmap.h"
#include "base/fatalassertion.h"
#include "base/standardoutput.h"
#include "firmware/finishingrun.h"
#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "input/filedrop.h"
#include "input/keyboardreturn.h"
#include "input/menukey.h"
#include "input/promptshortcuts.h"
#include "installation/installationmessages.h"
#include "look/fittedfont.h"
#include "look/screenfit.h"
#include "messagedialogs.h"
#include "profiles/profilelistactions.h"
#include "profiles/profilenameslistmanager.h"
#include "settingsui/settingspanemanager.h"
#include "transfer/comdevicewatcher.h"
#include "transfer/uploaddownloadmanager.h"
#include "ui_mainwindow.h"
#include "updatecheck/newfirmwarecheckermanager.h"
#include "versionstring.h"
#include "window/listsafety.h"
#include "window/statusarea.h"
#include "xmlformat/profileclipboard.h"
#include "xmlformat/xmlmanager.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QResizeEvent>
#include <QStyle>
#include <QTimer>

#include <cstdlib>

using FirmwareTool::KelvaronFirmwareToolWindow;
using UploadDownload::UploadDownloadManager;
using XMLGeneratorParser::XMLManager;

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    runTests(); // a failing check ends the process without a message box
    FatalAssertion::setLastStep(
        [this](const FatalAssertion::Report& report) { endOnFatalAssertion(report); });
    setWorkingDirectory();
    createRequiredFiles();
    installationChecks();
    initialised = true;
    loadSchema();
    buildWindow();
    managers.make(ui.get(), generator, this);
    listSafety = std::make_unique<ListSafety>(managers, ui->profileNamesList, this);
    extraUIAdditions();
    connectCommands();
    printCurrentEnvironmentValues();
    startDeviceWatcher();
    if (!listSafety->isOnlyEditor()) { // over the window
        QTimer::singleShot(
            0, this, [this] { InstallationMessages::otherEditor(this, listSafety->backupFile()); });
    }
    if (QCoreApplication::arguments().contains(QStringLiteral("-f"))) {
        runFirmwareToolOnly();
    }
}

MainWindow::~MainWindow()
{
    FatalAssertion::setLastStep({}); // it would use this window
    FirmwareTool::FinishingRun::waitForAll();
}

void MainWindow::runTests()
{
    KELVARON_ASSERT_TEXT(HEXGeneratorParser::HexUtility::machineIsLittleEndian(),
                         "HEXGeneratorParser::HexUtility::machineIsLittleEndian()");
    HEXGeneratorParser::WriteToHEX::runTests();
    HEXGeneratorParser::HEXBuffer::runTests();
    HEXGeneratorParser::HexUtility::runTests();
    VersionString::runTests();
}

void MainWindow::setWorkingDirectory()
{
    if (!Installation::enter(Installation::programFolder())) {
        MessageDialogs::mainFolderNotFound(this);
        endProcess(EXIT_FAILURE);
    }
}

bool MainWindow::createRequiredFiles()
{
    printLine(QStringLiteral("Bundle file being used in current dir: ")
              + getMostRecentKelvaronBundle());
    switch (installation.extract()) {
    case Installation::Outcome::EXTRACTED:
        break;
    case Installation::Outcome::EDITOR_TOO_OLD:
        MessageDialogs::currentSoftwareTooOld(this, VersionString(installation.bundleVersion()),
                                              installation.requiredVersion());
        endProcess(EXIT_SUCCESS); // an intended refusal, not an installation error
    case Installation::Outcome::BUNDLE_NOT_READ:
        InstallationMessages::bundleNotRead(this, installation);
        break;
    case Installation::Outcome::FILES_NOT_WRITTEN:
        InstallationMessages::filesNotWritten(this, installation);
        break;
    }
    return true;
}

QString MainWindow::getMostRecentKelvaronBundle()
{
    if (!installation.chooseBundle()) {
        MessageDialogs::noBundlesFound(this);
        endProcess(EXIT_FAILURE);
    }
    ApplicationGlobalMap::putString(ApplicationGlobalMap::bundleVersion,
                                    installation.bundleVersion());
    return installation.bundleFileName();
}

void MainWindow::installationChecks()
{
    const Installation::File missing = Installation::firstMissing();
    if (missing != Installation::File::SCHEMA) {
        Installation::makeSavedProfilesFolder();
    }
    switch (missing) {
    case Installation::File::NONE:
        return;
    case Installation::File::SCHEMA:
        MessageDialogs::cbFileMissing(this);
        break;
    case Installation::File::UPLOADER:
        MessageDialogs::suplMissing(this);
        break;
    case Installation::File::DEVICE:
        MessageDialogs::deviceTxtMissing(this);
        break;
    }
    endProcess(EXIT_FAILURE);
}

void MainWindow::loadSchema()
{
    generator = installation.loadSchema().release();
    generator->setParent(this);
}

void MainWindow::buildWindow()
{
    printLine(QStringLiteral("Starting the UI"));
    ui->setupUi(this);
    setWindowTitle(QStringLiteral("Kelvaron Profile Editor")
                   + QStringLiteral(" FOR FIRMWARE VERSION 0.9x ONLY"));
}

void MainWindow::extraUIAdditions()
{
    MenuKey::install(ui->menuBar);
    new PromptShortcuts(this);
    new KeyboardReturn(this);
    setContextMenuPolicy(Qt::NoContextMenu); // its menu would hide the toolbar, with no way back
    addToolbarActions();
    addToolbarTitle();
    ui->mainToolBar->setFloatable(false);
    ui->mainToolBar->setMovable(false);
    setWindowIcon(QIcon(QStringLiteral(":/new/images/upload_download.png")));
    statusArea =
        std::make_unique<StatusArea>(ui->statusBar, managers, *listSafety, ui->profileNamesList);
    addListActions();
    ui->actionEditGlobalSettings->setEnabled(false); // not offered in this version
    new FittedFont(this);
    new ScreenFit(this);
    growForLargeTexts();
}

void MainWindow::growForLargeTexts()
{
    constexpr double usual = 10; // points, for which the form was drawn
    const double scale = qMax(1.0, FittedFont::wantedSize() / usual);
    resize((QSizeF(size()) * scale).toSize().boundedTo(ScreenFit::room(*this)));
}

void MainWindow::addToolbarActions()
{
    QToolBar* toolbar = ui->mainToolBar;
    toolbar->setIconSize(QSize(20, 20));
    const auto standardIcon = [this](QStyle::StandardPixmap pixmap) {
        return style()->standardIcon(pixmap);
    };
    loadFromFileAction = toolbar->addAction(standardIcon(QStyle::SP_DialogOpenButton),
                                            QStringLiteral("Load Profiles from File"));
    saveToFileAction = toolbar->addAction(standardIcon(QStyle::SP_DialogSaveButton),
                                          QStringLiteral("Save Profiles to File"));
    toolbar->addSeparator();
    deleteAllAction = toolbar->addAction(standardIcon(QStyle::SP_DialogDiscardButton),
                                         QStringLiteral("Delete all Profiles"));
    toolbar->addSeparator();
    writeToDeviceAction = toolbar->addAction(QIcon(QStringLiteral(":/new/images/upload.png")),
                                             QStringLiteral("Write Profiles to Kelvaron"));
    readFromDeviceAction = toolbar->addAction(QIcon(QStringLiteral(":/new/images/download.png")),
                                              QStringLiteral("Read Profiles from Kelvaron"));
}

void MainWindow::addToolbarTitle()
{
    auto* expandingSpacer = new QWidget;
    expandingSpacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    ui->mainToolBar->addWidget(expandingSpacer);

    auto* title = new QLabel(QStringLiteral("Kelvaron Profile Editor"));
    title->setFont(QFont(QStringLiteral("Arial"), 13, QFont::Bold));
    ui->mainToolBar->addWidget(title);

    auto* fixedSpacer = new QWidget;
    fixedSpacer->setFixedWidth(15);
    ui->mainToolBar->addWidget(fixedSpacer);

    auto* logo = new QLabel;
    // An icon, because a pixmap never uses the pictures for high-resolution screens.
    const QIcon picture(QStringLiteral(":/new/images/tovo_logo.png"));
    logo->setPixmap(picture.pixmap(64, 20));
    logo->setAccessibleName(QStringLiteral("Tovo"));
    ui->mainToolBar->addWidget(logo);
}

void MainWindow::addListActions()
{
    auto* actions = new ProfileListActions(ui.get(), managers.list);
    connect(managers.pane, &SettingsPaneManager::editing, actions, &ProfileListActions::setEditing);
    profileClipboard =
        new XMLGeneratorParser::ProfileClipboard(managers.list, managers.importer, generator, this);
    connect(actions, &ProfileListActions::duplicateWanted, profileClipboard,
            &XMLGeneratorParser::ProfileClipboard::duplicate);
    connect(actions, &ProfileListActions::copyWanted, profileClipboard,
            &XMLGeneratorParser::ProfileClipboard::copy);
    connect(actions, &ProfileListActions::pasteWanted, profileClipboard,
            &XMLGeneratorParser::ProfileClipboard::paste);

    auto* fileDrop = new FileDrop(this);
    connect(fileDrop, &FileDrop::dropped, managers.xml, &XMLManager::loadFile);
    connect(managers.pane, &SettingsPaneManager::editing, fileDrop,
            [fileDrop](bool on) { fileDrop->setEnabled(!on); });
}

void MainWindow::connectCommands()
{
    connect(ui->actionHelp, &QAction::triggered, this, &MainWindow::on_actionHelp);
    connect(ui->actionHelp_2, &QAction::triggered, this, &MainWindow::on_actionHelp);
    connect(ui->actionAbout, &QAction::triggered, this, &MainWindow::on_actionAbout);
    connect(ui->actionExit, &QAction::triggered, this, &MainWindow::on_actionExit);
    connect(managers.pane, &SettingsPaneManager::editing, this, &MainWindow::disableToolbarActions);
    connect(managers.updateCheck, &NewFirmwareChecker::NewFirmwareCheckerManager::bundleDownloaded,
            this, &MainWindow::reloadBundle);
    connect(ui->actionFlashFirmware, &QAction::triggered, this, &MainWindow::on_flashFirmware);
    connect(readFromDeviceAction, &QAction::triggered, managers.transfers,
            &UploadDownloadManager::on_readButtonPressed);
    connect(writeToDeviceAction, &QAction::triggered, managers.transfers,
            &UploadDownloadManager::on_writeButtonPressed);
    connect(loadFromFileAction, &QAction::triggered, managers.xml,
            &XMLManager::on_importFromXMLButtonClicked);
    connect(saveToFileAction, &QAction::triggered, managers.xml,
            &XMLManager::on_exportAsXMLButtonClicked);
    connect(ui->actionDeleteAllProfiles, &QAction::triggered, managers.list,
            &ProfileNamesListManager::deleteAllProfilesAskConfirmation);
    connect(deleteAllAction, &QAction::triggered, managers.list,
            &ProfileNamesListManager::deleteAllProfilesAskConfirmation);
}

void MainWindow::printCurrentEnvironmentValues()
{
    printLine(QStringLiteral("Current working directory : ") + QDir::currentPath());
    printLine(QStringLiteral("CB File Location : ")
              + QFileInfo(Installation::schemaFile).absoluteFilePath());
}

void MainWindow::startDeviceWatcher()
{
    // Enumerating the ports takes as long as creating the window, which need not wait for it.
    constexpr int firstLook = 200; // milliseconds
    deviceWatcher = std::make_unique<COMDeviceWatcher>(nullptr);
    QTimer::singleShot(firstLook, deviceWatcher.get(), &COMDeviceWatcher::startWatching);
}

void MainWindow::runFirmwareToolOnly()
{
    KelvaronFirmwareToolWindow tool(this);
    tool.setAttribute(Qt::WA_DeleteOnClose, false); // the window is on the stack
    QEventLoop loop;
    connect(&tool, &KelvaronFirmwareToolWindow::closing, &loop, &QEventLoop::quit);
    connect(&tool, &KelvaronFirmwareToolWindow::flashed, this, &MainWindow::reloadBundle);
    loop.exec();
    endProcess(EXIT_SUCCESS);
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    if (!initialised) {
        return;
    }
    // The layouts give the list at most a third of the window, and no more than its titles need.
    constexpr int widest = 420;
    ui->listPanel->setMaximumWidth(qMax(widest, ui->listPanel->minimumSizeHint().width()));
}

void MainWindow::disableToolbarActions(bool editing)
{
    const bool enabled = !editing;
    const QList<QAction*> lockedActions = {ui->actionExportXML,     ui->actionImportXML,
                                           ui->actionExportHEX,     ui->actionImportHEX,
                                           ui->actionWriteProfiles, ui->actionReadProfiles,
                                           ui->actionFlashFirmware, ui->actionDeleteAllProfiles,
                                           loadFromFileAction,      saveToFileAction,
                                           deleteAllAction,         writeToDeviceAction,
                                           readFromDeviceAction};
    for (QAction* action : lockedActions) {
        action->setEnabled(enabled);
    }
    ui->addProfileButton->setEnabled(enabled);
    if (enabled && reloadWaitsForEdit) {
        // Queued: the pane emits the signal before it has left edit mode.
        QMetaObject::invokeMethod(this, &MainWindow::reloadBundle, Qt::QueuedConnection);
    }
}

void MainWindow::on_actionHelp()
{
    MessageDialogs::helpKelvaronProfileEditor(this);
}

void MainWindow::on_actionAbout()
{
    MessageDialogs::aboutKelvaronProfileEditor(this);
}

void MainWindow::on_actionExit()
{
    QCoreApplication::quit();
}

void MainWindow::on_flashFirmware()
{
    auto* tool = new KelvaronFirmwareToolWindow(this); // deletes itself when closed
    connect(tool, &KelvaronFirmwareToolWindow::flashed, this, &MainWindow::reloadBundle);
}

void MainWindow::reloadBundle()
{
    reloadWaitsForEdit = managers.pane->getEditMode();
    if (reloadWaitsForEdit) {
        return;
    }
    if (!listSafety->saveForReload()) {
        MessageDialogs::backupFailed(this);
        return;
    }
    createRequiredFiles();
    if (!Installation::hasSchemaFile()) {
        MessageDialogs::cbFileMissing(this);
        return; // the schema in use is kept
    }
    loadSchema();
    managers.setAllSettings(generator);
    profileClipboard->setAllSettings(generator);
    managers.list->deleteAllProfilesNoConfirmation();
    listSafety->reload();
}

void MainWindow::endProcess(int exitCode)
{
    FatalAssertion::setLastStep({});
    FirmwareTool::FinishingRun::waitForAll();
    listSafety.reset(); // leaves its seat: exit() does not destroy this window
    std::exit(exitCode);
}

void MainWindow::endOnFatalAssertion(const FatalAssertion::Report& report)
{
    const QString rescueFile = listSafety != nullptr ? listSafety->rescue() : QString();
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
