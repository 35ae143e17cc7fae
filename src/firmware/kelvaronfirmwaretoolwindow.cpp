#include "firmware/kelvaronfirmwaretoolwindow.h"

#include "KelvaronBundle/bundlecheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "filedialogs/filedialogs.h"
#include "firmware/firmwareerrors.h"
#include "firmware/firmwarefiles.h"
#include "firmware/firmwareflasher.h"
#include "firmware/firmwaremessagedialogs.h"
#include "firmware/stringmanipulation.h"
#include "input/menukey.h"
#include "look/fittedfont.h"
#include "look/screenfit.h"
#include "serialports/portdropdown.h"
#include "transfer/comdevicewatcher.h"
#include "ui_kelvaronfirmwaretoolwindow.h"
#include "versionstring.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>

namespace FirmwareTool
{
namespace
{
constexpr int collapsedHeight = 245; // pixels
constexpr int expandedHeight = 273;

/// Hides a widget but keeps its space in the layout.
void hideInPlace(QWidget* widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    widget->hide();
}

/// Returns whether this firmware replaces the charger's profiles with its own.
bool replacesProfiles(const QString& path)
{
    const QString text = KelvaronBundle::getBundleVersion(path);
    const VersionString version(VersionString::isDottedVersion(text) ? text : QStringLiteral("0"));
    return version.greaterThanEqualTo(VersionString(QStringLiteral("0.900")))
           && version.lessThanEqualTo(VersionString(QStringLiteral("0.910")));
}
} // namespace

KelvaronFirmwareToolWindow::KelvaronFirmwareToolWindow(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::KelvaronFirmwareToolWindow>())
{
    ui->setupUi(this);
    new FittedFont(this);
    new ScreenFit(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Kelvaron Firmware Tool"));
    setWindowModality(Qt::ApplicationModal);
    extraUIAdditions();
    flasher = new FirmwareFlasher(this, ui.get());
    for (QLabel* mark : {ui->eraseFlashCM, ui->loadFileCM, ui->uploadCM, ui->verifyCM}) {
        hideInPlace(mark);
    }
    ui->consoleOut->hide();
    lastDirectory = QDir(QStringLiteral("./"));
    connect(flasher, &FirmwareFlasher::flashed, this, &KelvaronFirmwareToolWindow::flashed);
    connect(flasher, &FirmwareFlasher::ended, this, [this] { setChoicesEnabled(true); });
    ScreenFit::centre(this);
    show();
}

KelvaronFirmwareToolWindow::~KelvaronFirmwareToolWindow() = default;

void KelvaronFirmwareToolWindow::extraUIAdditions()
{
    MenuKey::install(ui->menuBar);
    connect(ui->actionLoad_File, &QAction::triggered, this,
            &KelvaronFirmwareToolWindow::on_selectFileButton_clicked);
    connect(ui->actionExit, &QAction::triggered, this, &KelvaronFirmwareToolWindow::exitProgram);
    connect(ui->actionHelp, &QAction::triggered, this, &KelvaronFirmwareToolWindow::helpProgram);
    connect(ui->helpButtonMac, &QPushButton::clicked, this,
            &KelvaronFirmwareToolWindow::helpProgram);
    portDropdown = std::make_unique<PortDropdown>(ui->comPortsDropdown);
    portDropdown->fill();
    deviceWatcher = new COMDeviceWatcher(this);
    connect(deviceWatcher, &COMDeviceWatcher::devicesAdded, this,
            &KelvaronFirmwareToolWindow::onDevicesConnected);
    connect(deviceWatcher, &COMDeviceWatcher::devicesRemoved, this,
            &KelvaronFirmwareToolWindow::onDevicesDisconnected);
    deviceWatcher->startWatching();
    showAdvancedOptions(false);
}

void KelvaronFirmwareToolWindow::on_selectFileButton_clicked()
{
    const QString path = FileDialogs::openFileName(
        this, QStringLiteral("Select Kelvaron Firmware File"), lastDirectory.absolutePath(),
        QStringLiteral("Kelvaron Firmware Files (*.kelvaron);;All Files (*.*)"));
    if (path.isEmpty()) {
        return;
    }
    lastDirectory = QFileInfo(path).dir();
    flasher->setHexPath(path);
    ui->fileInputBox->setText(flasher->getHexPath());
    showSelectedFile(path);
}

void KelvaronFirmwareToolWindow::on_fileInputBox_textEdited(const QString& path)
{
    flasher->setHexPath(path);
    showSelectedFile(path);
}

void KelvaronFirmwareToolWindow::showSelectedFile(const QString& path)
{
    ui->fileSelectedLabel->setText(QStringLiteral("File Selected : ")
                                   + StringManipulation::getFileName(path));
}

void KelvaronFirmwareToolWindow::on_submitButton_clicked()
{
    if (!mayBeFlashed(flasher->getHexPath())) {
        return;
    }
    ui->submitButton->setEnabled(false);
    setChoicesEnabled(false);
    flasher->setComPort(ui->comPortsDropdown->currentText());
    try {
        flasher->startFlashing();
    } catch (...) {
        const QPointer<KelvaronFirmwareToolWindow> self(this);
        FirmwareErrors::error10(this);
        if (self != nullptr) {
            ui->submitButton->setEnabled(true);
            setChoicesEnabled(true);
            close();
        }
    }
}

/// The file and the port cannot be changed during a flash.
void KelvaronFirmwareToolWindow::setChoicesEnabled(bool enabled)
{
    ui->fileInputBox->setEnabled(enabled);
    ui->selectFileButton->setEnabled(enabled);
    ui->comPortsDropdown->setEnabled(enabled);
    ui->actionLoad_File->setEnabled(enabled);
}

bool KelvaronFirmwareToolWindow::mayBeFlashed(const QString& path)
{
    if (path == QStringLiteral("NOPATH")) {
        FirmwareMessageDialogs::noFileSpecified(this);
        return false;
    }
    if (!BundleCheck::isSafe(path)) {
        FirmwareMessageDialogs::notAFirmwareFile(this);
        return false;
    }
    return !replacesProfiles(path)
           || FirmwareMessageDialogs::askReplaceProfiles(this) == QMessageBox::Yes;
}

void KelvaronFirmwareToolWindow::on_advancedOptionsButton_clicked()
{
    showAdvancedOptions(!advancedOptionsShown);
}

void KelvaronFirmwareToolWindow::showAdvancedOptions(bool shown)
{
    ui->advancedOptionsButton->setText(shown ? QStringLiteral("Hide Advanced Options...")
                                             : QStringLiteral("Show Advanced Options..."));
    ui->deleteProfilesCB->setVisible(shown);
    setFixedHeight(shown ? expandedHeight : collapsedHeight);
    advancedOptionsShown = shown;
}

void KelvaronFirmwareToolWindow::on_deleteProfilesCB_toggled(bool overwrite)
{
    flasher->setDeleteProfiles(overwrite);
}

void KelvaronFirmwareToolWindow::exitProgram()
{
    close();
}

void KelvaronFirmwareToolWindow::helpProgram()
{
    FirmwareMessageDialogs::firmwareToolHelp(this);
}

void KelvaronFirmwareToolWindow::onDevicesConnected(const QList<QextPortInfo>& ports)
{
    for (const QextPortInfo& port : ports) {
        addPortToDropdown(port);
    }
}

void KelvaronFirmwareToolWindow::onDevicesDisconnected(const QList<QextPortInfo>& ports)
{
    for (const QextPortInfo& port : ports) {
        removePortFromDropdown(port);
    }
}

void KelvaronFirmwareToolWindow::addPortToDropdown(const QextPortInfo& port)
{
    portDropdown->add(port);
}

void KelvaronFirmwareToolWindow::removePortFromDropdown(const QextPortInfo& port)
{
    portDropdown->remove(port);
}

void KelvaronFirmwareToolWindow::closeEvent(QCloseEvent* event)
{
    flasher->giveUp(); // before the files that its uploader reads are changed
    FirmwareFiles::restoreDeviceDescription();
    emit closing();
    QMainWindow::closeEvent(event);
}
} // namespace FirmwareTool
