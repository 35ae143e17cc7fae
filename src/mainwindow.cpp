#include "mainwindow.h"

#include "CBGenerator/generator.h"
#include "HEXGeneratorParser/hexbuffer.h"
#include "HEXGeneratorParser/hexmanager.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/writetohex.h"
#include "KelvaronBundle/versionstring.h"
#include "base/buildconstants.h"
#include "base/fatalassertion.h"
#include "firmware/finishingrun.h"
#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "input/filedrop.h"
#include "input/keyboardreturn.h"
#include "input/menukey.h"
#include "input/promptshortcuts.h"
#include "installation/folderseat.h"
#include "look/elidedlabel.h"
#include "look/fittedfont.h"
#include "look/screenfit.h"
#include "look/shrinkinglabel.h"
#include "messagedialogs.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/liststatus.h"
#include "profiles/profilelistactions.h"
#include "profiles/profilenameslistmanager.h"
#include "rescue/profilebackups.h"
#include "rescue/profilerescue.h"
#include "serialports/portturns.h"
#include "settingsui/globalsettingsmanager.h"
#include "settingsui/settingspanemanager.h"
#include "transfer/comdevicewatcher.h"
#include "transfer/uploaddownloadmanager.h"
#include "ui_mainwindow.h"
#include "xmlformat/profileclipboard.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/xmlmanager.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QResizeEvent>
#include <QStyle>

namespace
{
/// An empty status leaves its room to the others; one with a text has some room in every window.
void showStatus(QLabel* label, const QString& text)
{
    constexpr int most = 160; // pixels
    label->setText(text);
    label->setMinimumWidth(qMin(most, label->fontMetrics().horizontalAdvance(text)));
    label->setVisible(!text.isEmpty());
}
} // namespace

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
    addListStatus();
    addTransferStatus();
    addListActions();
    ui->statusBar->addPermanentWidget(
        new ShrinkingLabel(QStringLiteral("Kelvaron Profile Editor for Mac OS: ")
                           + QString::fromLatin1(BuildConstants::buildText)));
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
    // An icon, for a pixmap alone never takes the pictures of dense screens.
    const QIcon picture(QStringLiteral(":/new/images/tovo_logo.png"));
    logo->setPixmap(picture.pixmap(64, 20));
    logo->setAccessibleName(QStringLiteral("Tovo"));
    ui->mainToolBar->addWidget(logo);
}

QLabel* MainWindow::addStatus(const QString& objectName, const QString& accessibleName)
{
    auto* status = new ElidedLabel;
    status->setObjectName(objectName);
    status->setAccessibleName(accessibleName);
    ui->statusBar->addWidget(status);
    status->hide();
    return status;
}

void MainWindow::addListStatus()
{
    listStatus = std::make_unique<ListStatus>(
        [this] { return xmlManager->document(); }, [this] { return ui->profileNamesList->count(); },
        [this] { return hexManager->getNumProfilesAllowed(); });
    const ListStatus* status = listStatus.get();
    connect(profileRescue, &ProfileRescue::copyKept, status, &ListStatus::update);
    // The copy is made when the list has been calm for a while; the number of profiles is known at once.
    const QAbstractItemModel* rows = ui->profileNamesList->model();
    connect(rows, &QAbstractItemModel::rowsInserted, status, &ListStatus::changed);
    connect(rows, &QAbstractItemModel::rowsRemoved, status, &ListStatus::changed);
    connect(rows, &QAbstractItemModel::modelReset, status, &ListStatus::changed);
    connect(xmlManager, &XMLGeneratorParser::XMLManager::listSaved, status, &ListStatus::markSaved);
    connect(uploadDownloadManager, &UploadDownload::UploadDownloadManager::listWritten, status,
            &ListStatus::markWritten);
    QLabel* label = addStatus(QStringLiteral("listStatus"), QStringLiteral("List"));
    connect(status, &ListStatus::changed, label,
            [label, status] { showStatus(label, status->text()); });
}

void MainWindow::addListActions()
{
    auto* actions = new ProfileListActions(ui.get(), profileNamesListManager);
    connect(settingsPaneManager, &SettingsPaneManager::editing, actions,
            &ProfileListActions::setEditing);
    profileClipboard = new XMLGeneratorParser::ProfileClipboard(
        profileNamesListManager, importProfilesMain, generator, this);
    connect(actions, &ProfileListActions::duplicateWanted, profileClipboard,
            &XMLGeneratorParser::ProfileClipboard::duplicate);
    connect(actions, &ProfileListActions::copyWanted, profileClipboard,
            &XMLGeneratorParser::ProfileClipboard::copy);
    connect(actions, &ProfileListActions::pasteWanted, profileClipboard,
            &XMLGeneratorParser::ProfileClipboard::paste);

    auto* fileDrop = new FileDrop(this);
    connect(fileDrop, &FileDrop::dropped, xmlManager, &XMLGeneratorParser::XMLManager::loadFile);
    connect(settingsPaneManager, &SettingsPaneManager::editing, fileDrop,
            [fileDrop](bool on) { fileDrop->setEnabled(!on); });
}

void MainWindow::addTransferStatus()
{
    QLabel* status = addStatus(QStringLiteral("transferStatus"), QStringLiteral("Transfers"));
    // A transfer goes on when its dialog is closed; here is where it still can be seen.
    connect(&PortTurns::ofApplication(), &PortTurns::changed, status, [status] {
        showStatus(status, PortTurns::ofApplication().descriptions().join(QStringLiteral("; ")));
    });
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    if (!initialised) {
        return;
    }
    // The layouts give the list a third of the window, but no more than its titles need.
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
        // Queued: the pane tells before it has left its edit mode.
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
    auto* tool = new FirmwareTool::KelvaronFirmwareToolWindow(this); // deletes itself when closed
    connect(tool, &FirmwareTool::KelvaronFirmwareToolWindow::flashed, this,
            &MainWindow::reloadBundle);
}

void MainWindow::reloadBundle()
{
    const QString backupFile = seat->ownName(QStringLiteral("backup_fw_update.xml"));
    reloadWaitsForEdit = settingsPaneManager->getEditMode();
    if (reloadWaitsForEdit) {
        return;
    }
    if (!backUpProfiles(backupFile)) {
        MessageDialogs::backupFailed(this);
        return;
    }
    profileBackups->keep(ProfileBackups::Occasion::RELOADED);
    createRequiredFiles();
    if (!hasSchemaFile()) {
        MessageDialogs::cbFileMissing(this);
        return; // the schema in use goes on
    }
    loadSchema();
    handOverGenerator();
    profileNamesListManager->deleteAllProfilesNoConfirmation();
    xmlManager->importFromXML(backupFile, ImportOccasion::BUNDLE_RELOAD);
}

bool MainWindow::backUpProfiles(const QString& fileName)
{
    if (!xmlManager->exportToXML(fileName)) {
        return false;
    }
    XMLGeneratorParser::ReadFromXML reader;
    return reader.readProfiles(fileName)
           && reader.getProfiles().size() == hexManager->getCurrentNumProfiles();
}

/// False when the list could not be saved and the user would rather keep it.
bool MainWindow::backUpBeforeReplacing()
{
    profileBackups->keep(ProfileBackups::Occasion::REPLACED);
    const QString backupFile = seat->ownName(QStringLiteral("backup_before_replace.xml"));
    return backUpProfiles(backupFile)
           || MessageDialogs::askReplaceWithoutBackup(this, backupFile) == QMessageBox::Yes;
}

void MainWindow::handOverGenerator()
{
    settingsPaneManager->setAllSettings(generator);
    profileNamesListManager->setAllSettings(generator);
    importProfilesMain->setAllSettings(generator);
    xmlManager->setAllSettings(generator);
    hexManager->setAllSettings(generator);
    globalSettingsManager->setAllSettings(generator);
    profileClipboard->setAllSettings(generator);
}
