#include "updatecheck/newfirmwarecheckerdialog.h"

#include "applicationglobalmap.h"
#include "messagedialogs.h"
#include "ui_newfirmwarecheckerdialog.h"
#include "updatecheck/newfirmwarechecker.h"

#include <QCoreApplication>

namespace NewFirmwareChecker
{
namespace
{
constexpr int complete = 100;

/// Returns a version for display. The server may send anything instead, of any length.
QString shownVersion(const QString& version)
{
    constexpr int longest = 200;
    return QLatin1Char('v')
           + (version.size() > longest ? version.left(longest) + QChar(0x2026) : version);
}
} // namespace

NewFirmwareCheckerDialog::NewFirmwareCheckerDialog(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::NewFirmwareCheckerDialog>()),
      checker(new NewFirmwareChecker(nullptr))
{
    ui->setupUi(this);
    fixTextSize();
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(QStringLiteral("Firmware Checker"));
    show();
    ui->installedBundleVersion->setText(
        shownVersion(ApplicationGlobalMap::getString(ApplicationGlobalMap::bundleVersion)));

    connect(checker, &NewFirmwareChecker::firmwareInfoDownloaded, this,
            &NewFirmwareCheckerDialog::onFirmwareInfoDownloaded);
    connect(checker, &NewFirmwareChecker::firmwareDownloaded, this,
            &NewFirmwareCheckerDialog::onFirmwareDownloaded);
    connect(checker, &NewFirmwareChecker::error, this, &NewFirmwareCheckerDialog::onError);
    connect(ui->mainButton, &QPushButton::clicked, this,
            &NewFirmwareCheckerDialog::onMainButtonPressed);
    // An outstanding request ends with the program.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, checker,
            &QObject::deleteLater);

    checker->downloadFirmwareInfo();
    showBusy(QStringLiteral("Checking for Firmware Updates..."));
}

NewFirmwareCheckerDialog::~NewFirmwareCheckerDialog()
{
    if (checker != nullptr) {
        checker->deleteWhenDone();
    }
}

void NewFirmwareCheckerDialog::onFirmwareInfoDownloaded(const QMap<QString, QString>& info)
{
    ui->mostRecentBundleVersion->setText(
        shownVersion(info.value(QStringLiteral("current_version"))));
    if (!checker->hasUsableVersion()) {
        onError();
        return;
    }
    if (checker->downloadNeeded()) {
        showBusy(QStringLiteral("Downloading Firmware..."));
        checker->downloadLatestFirmware();
        return;
    }
    showEnd(QStringLiteral("Firmware already up-to-date"), complete);
    MessageDialogs::firmwareDownloadNotNeeded(this);
}

void NewFirmwareCheckerDialog::onFirmwareDownloaded()
{
    const QPointer<NewFirmwareCheckerDialog> self(this); // reloading may show messages
    emit bundleDownloaded();
    if (self == nullptr) {
        return;
    }
    showEnd(QStringLiteral("Latest Firmware Downloaded!"), complete);
    MessageDialogs::firmwareDownloaded(this);
}

void NewFirmwareCheckerDialog::onError()
{
    showEnd(QStringLiteral("Error!"), 0);
    MessageDialogs::firmwareCheckerError(this);
}

void NewFirmwareCheckerDialog::onMainButtonPressed()
{
    close();
}

void NewFirmwareCheckerDialog::fixTextSize()
{
    // The dialog's size is fixed in pixels, so its font size has to be, too. The title has its own.
    QFont texts = font();
    texts.setPixelSize(13);
    setFont(texts);
}

void NewFirmwareCheckerDialog::showBusy(const QString& status)
{
    ui->statusLabel->setText(status);
    ui->progressBar->setRange(0, 0); // busy indicator
    ui->progressBar->setValue(0);
}

void NewFirmwareCheckerDialog::showEnd(const QString& status, int progress)
{
    ui->statusLabel->setText(status);
    ui->progressBar->setMaximum(complete);
    ui->progressBar->setValue(progress);
    ui->mainButton->setText(QStringLiteral("Close"));
}
} // namespace NewFirmwareChecker
