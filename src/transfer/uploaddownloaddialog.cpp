#include "transfer/uploaddownloaddialog.h"

#include "look/fittedfont.h"
#include "look/screenfit.h"
#include "messagedialogs.h"
#include "transfer/downloadprofiles.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploadprofiles.h"
#include "ui_uploaddownloaddialog.h"

#include <QPointer>

namespace UploadDownload
{
namespace
{
constexpr int fullProgress = 100;

std::unique_ptr<Ui::UploadDownloadDialog> makeForm(QDialog* dialog)
{
    auto form = std::make_unique<Ui::UploadDownloadDialog>();
    form->setupUi(dialog);
    new FittedFont(dialog);
    new ScreenFit(dialog);
    return form;
}
} // namespace

UploadDownloadDialog::UploadDownloadDialog(bool writes, QWidget* parent)
    : QDialog(parent), isWriteMode(writes), ui(makeForm(this)), portDropdown(ui->comPortsDropdown)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);
    setUpTexts();
    connect(ui->okButton, &QPushButton::clicked, this, &UploadDownloadDialog::on_okButtonPressed);
    portDropdown.fill();
    connect(&watcher, &COMDeviceWatcher::devicesAdded, this,
            &UploadDownloadDialog::onDevicesConnected);
    connect(&watcher, &COMDeviceWatcher::devicesRemoved, this,
            &UploadDownloadDialog::onDevicesDisconnected);
    watcher.startWatching();
    ui->statusLabel->setText(QStringLiteral("Stopped"));
    ui->progressBar->setValue(0);
    show(); // last: the system positions a window by its size at this moment
}

UploadDownloadDialog::~UploadDownloadDialog() = default;

void UploadDownloadDialog::setUpTexts()
{
    const QString title =
        isWriteMode ? QStringLiteral("Profile Writer") : QStringLiteral("Profile Reader");
    setWindowTitle(title);
    ui->dialogTitleLabel->setText(title);
    ui->okButton->setText(isWriteMode ? QStringLiteral("Write Profiles")
                                      : QStringLiteral("Read Profiles"));
    ui->okButton->setAccessibleDescription(QStringLiteral("Uses the chosen port"));
}

void UploadDownloadDialog::setFileLocation(const QString& path)
{
    fileLocation = path;
}

void UploadDownloadDialog::setOnWritten(const QObject* context, std::function<void()> function)
{
    writtenContext = context;
    onWritten = std::move(function);
}

void UploadDownloadDialog::on_okButtonPressed()
{
    if (isDone) {
        close(); // and continue: this click starts another operation although the dialog closes
    }
    ui->okButton->setEnabled(false);
    ui->comPortsDropdown->setEnabled(false);
    ui->statusLabel->setText(QStringLiteral("Working..."));
    ui->progressBar->setMinimum(0);
    ui->progressBar->setMaximum(0);
    startWorker();
}

void UploadDownloadDialog::startWorker()
{
    transferPort = currentPort();
    if (isWriteMode) {
        auto* worker = new UploadProfiles(transferPort, fileLocation, parent());
        worker->setImage(image);
        if (onWritten && writtenContext != nullptr) {
            connect(worker, &UploadProfiles::finished, writtenContext, onWritten);
        }
        connect(worker, &UploadProfiles::finished, this,
                &UploadDownloadDialog::uploadDownloadSuccess);
        connect(worker, &UploadProfiles::errorUploading, this,
                &UploadDownloadDialog::uploadDownloadFailed);
        connect(worker, &UploadProfiles::portInUse, this, &UploadDownloadDialog::onPortInUse);
        worker->start();
    } else {
        auto* worker = new DownloadProfiles(transferPort, fileLocation, parent());
        connect(worker, &DownloadProfiles::finished, this,
                &UploadDownloadDialog::uploadDownloadSuccess);
        connect(worker, &DownloadProfiles::errorDownloading, this,
                &UploadDownloadDialog::uploadDownloadFailed);
        connect(worker, &DownloadProfiles::portInUse, this, &UploadDownloadDialog::onPortInUse);
        worker->start();
    }
}

void UploadDownloadDialog::uploadDownloadSuccess()
{
    if (isClosed()) {
        return;
    }
    showEnd(isWriteMode ? QStringLiteral("Write Success!") : QStringLiteral("Read Success!"),
            fullProgress);

    // Receivers of the signal and the question below run event loops that may delete this dialog.
    const QPointer<UploadDownloadDialog> self(this);
    emit finished();
    if (self == nullptr || isClosed()) {
        return;
    }
    isDone = true;
    ui->okButton->setText(QStringLiteral("Close Window"));
    ui->okButton->setAccessibleDescription(QStringLiteral("The transfer has ended"));
    ui->okButton->setEnabled(true);
    auto* resetDialog = new KelvaronResetDialog(
        isWriteMode ? QStringLiteral("Profiles successfully written to the Kelvaron!")
                    : QStringLiteral("Profiles successfully read from the Kelvaron!"),
        transferPort, this); // deleted with this dialog
    resetDialog->exec();
    if (self != nullptr) {
        close();
    }
}

void UploadDownloadDialog::uploadDownloadFailed()
{
    // The failure of a crashing uploader is reported twice; the second time this dialog has already
    // been closed.
    if (isClosed()) {
        return;
    }
    showEnd(QStringLiteral("Failed!"), 0);
    const QPointer<UploadDownloadDialog> self(this);
    MessageDialogs::message(this, QStringLiteral("Failed!"),
                            QStringLiteral("Please make sure to select the correct COM port, and "
                                           "that the Kelvaron is in bootloader mode, and try "
                                           "again."));
    if (self != nullptr) {
        close();
    }
}

void UploadDownloadDialog::onPortInUse(const QString& holder)
{
    if (isClosed()) {
        return;
    }
    showEnd(QStringLiteral("Stopped"), 0);
    ui->okButton->setEnabled(true); // for another try
    MessageDialogs::portInUse(this, transferPort, holder);
}

void UploadDownloadDialog::showEnd(const QString& status, int progress)
{
    ui->statusLabel->setText(status);
    ui->progressBar->setMaximum(fullProgress);
    ui->progressBar->setValue(progress);
    ui->comPortsDropdown->setEnabled(true);
}

void UploadDownloadDialog::onDevicesConnected(const QList<QextPortInfo>& ports)
{
    for (const QextPortInfo& port : ports) {
        addPortToDropdown(port);
    }
}

void UploadDownloadDialog::onDevicesDisconnected(const QList<QextPortInfo>& ports)
{
    for (const QextPortInfo& port : ports) {
        removePortFromDropdown(port);
    }
}

void UploadDownloadDialog::addPortToDropdown(const QextPortInfo& port)
{
    portDropdown.add(port);
}

void UploadDownloadDialog::removePortFromDropdown(const QextPortInfo& port)
{
    portDropdown.remove(port);
}

QString UploadDownloadDialog::formatCOMPort(const QString& portName)
{
    return portName;
}

QString UploadDownloadDialog::currentPort() const
{
    return formatCOMPort(ui->comPortsDropdown->currentText());
}

bool UploadDownloadDialog::isClosed() const
{
    return isHidden(); // a closed dialog is deleted only later, by the event loop
}
} // namespace UploadDownload
