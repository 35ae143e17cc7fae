#include "firmware/firmwareflasher.h"

#include "base/standardoutput.h"
#include "firmware/finishingrun.h"
#include "firmware/firmwareerrors.h"
#include "firmware/firmwarefiles.h"
#include "firmware/flashoutput.h"
#include "firmware/stringmanipulation.h"
#include "messagedialogs.h"
#include "serialports/portturn.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploader.h"
#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTextStream>
#include <QTimer>

#include <stdexcept>

namespace FirmwareTool
{
namespace
{
const QString noPath = QStringLiteral("NOPATH");
const QString logFolder = QStringLiteral("logs");
const QString checkMark = QString(QChar(0x221A));

constexpr int watchdogInterval = 5000; // milliseconds
constexpr int longestSilence = 4;      // seconds

void showBusy(QProgressBar* bar)
{
    bar->setRange(0, 0);
    bar->setValue(100);
}

void showMark(QLabel* mark)
{
    mark->setText(checkMark);
    mark->show();
}
} // namespace

FirmwareFlasher::FirmwareFlasher(QObject* parent, Ui::KelvaronFirmwareToolWindow* form)
    : QObject(parent), hexPath(noPath), ui(form), clock([] { return std::time(nullptr); })
{}

FirmwareFlasher::~FirmwareFlasher()
{
    // The form may have been deleted by now.
    release();
}

void FirmwareFlasher::setHexPath(const QString& path)
{
    hexPath = path.isEmpty() ? noPath : path;
}

QString FirmwareFlasher::toString() const
{
    return QStringLiteral("Path : ") + hexPath;
}

void FirmwareFlasher::startFlashing()
{
    giveUp();
    turn = new PortTurn(comPort, QStringLiteral("Updating the firmware"), this);
    isStarting = true;
    turn->whenFree([this] { beginRun(); }, [this](const QString& holder) { refuse(holder); });
    isStarting = false;
}

void FirmwareFlasher::refuse(const QString& holder)
{
    giveUp();
    report([this, port = comPort, holder] { MessageDialogs::portInUse(window(), port, holder); });
}

void FirmwareFlasher::beginRun()
{
    // Not before the port is free: a transfer that uses it may still need its device description.
    try {
        if (!extractRequiredFiles()) {
            giveUp();
            return;
        }
    } catch (const std::runtime_error&) {
        giveUp();
        if (isStarting) {
            throw;
        }
        report([this] {
            const QPointer<QWidget> shown = window();
            FirmwareErrors::error10(shown);
            if (shown != nullptr) {
                shown->close();
            }
        });
        return;
    }
    stage = FlashOutput::ERASING;
    initializeSuplLogFile();
    startUploader();
    cleanUI();
    updateGUI();
    startTimeoutTimer();
}

void FirmwareFlasher::giveUp()
{
    release();
    stage = FlashOutput::FINISHED;
}

bool FirmwareFlasher::extractRequiredFiles()
{
    switch (FirmwareFiles::extract(hexPath, overwritesProfiles)) {
    case FirmwareFiles::Extraction::IMAGE_MISSING:
        report([this] { FirmwareErrors::error2(ui, window()); });
        return false;
    case FirmwareFiles::Extraction::DEVICE_DESCRIPTION_MISSING:
        report([this] { FirmwareErrors::error3(ui, window()); });
        return false;
    case FirmwareFiles::Extraction::DONE:
        break;
    }
    return true;
}

void FirmwareFlasher::initializeSuplLogFile()
{
    // English names in every locale, because they are part of a file name.
    const QString time = QLocale::c().toString(QDateTime::currentDateTime(),
                                               QStringLiteral("ddd-MMMM-d-yyyy--h-m-s-ap"));
    const QString name = QStringLiteral("outputlog-") + time + QStringLiteral(".txt");
    QDir().mkdir(logFolder);
    logFile = std::make_unique<QFile>(QDir(logFolder).filePath(name));
    if (!logFile->open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        printLine(QStringLiteral("Could not open file!"));
        return;
    }
    QTextStream header(logFile.get());
    header.setCodec("UTF-8");
    header << "FLASHING KELVARON FIRMWARE\n"
           << "Hex File Name: " << hexPath << "\n"
           << "Output File Log Name : " << name << "\n"
           << "---------------------\n\n";
}

void FirmwareFlasher::startUploader()
{
    process = new QProcess(parent());
    connect(process, &QProcess::readyReadStandardOutput, this, &FirmwareFlasher::readStream);
    const QString image = FirmwareFiles::image();
    process->start(Uploader::program(),
                   Uploader::arguments(comPort, {QStringLiteral("-e"), QStringLiteral("-w"), image,
                                                 QStringLiteral("-v"), image}),
                   QIODevice::ReadWrite);
    Uploader::dropErrorOutput(process);
}

void FirmwareFlasher::readStream()
{
    if (process == nullptr) {
        return;
    }
    lastChunk = process->readAllStandardOutput();
    if (logFile->isOpen()) {
        logFile->write(lastChunk); // bytes: output that is not text is logged unchanged, too
        logFile->flush();
    }
    switch (FlashOutput::meaningOf(lastChunk.constData(), stage)) {
    case FlashOutput::Meaning::NONE:
        showProgress(lastChunk.constData());
        break;
    case FlashOutput::Meaning::STAGE_DONE:
        enterNextStage();
        break;
    case FlashOutput::Meaning::NO_ANSWER:
        abort(FirmwareErrors::error1);
        break;
    case FlashOutput::Meaning::IMAGE_MISSING:
        abort(FirmwareErrors::error2);
        break;
    case FlashOutput::Meaning::DEVICE_DESCRIPTION_MISSING:
        abort(FirmwareErrors::error3);
        break;
    case FlashOutput::Meaning::PORT_NOT_OPENED:
        abort(FirmwareErrors::error4);
        break;
    case FlashOutput::Meaning::FLASH_DIFFERS:
        abort(FirmwareErrors::error5);
        break;
    case FlashOutput::Meaning::GARBLED:
        abort(FirmwareErrors::error13);
        break;
    }
}

void FirmwareFlasher::showProgress(const char* chunk)
{
    const int percentage = StringManipulation::getPercentage(chunk);
    if (percentage == -1 || (stage != FlashOutput::UPLOADING && stage != FlashOutput::VERIFYING)) {
        return;
    }
    (stage == FlashOutput::UPLOADING ? ui->uploadPB : ui->verifyPB)->setValue(percentage);
    lastActivity = clock();
}

void FirmwareFlasher::enterNextStage()
{
    ++stage;
    updateGUI();
    switch (stage) {
    case FlashOutput::LOADING:
        printLine(QStringLiteral("Entering loading state"));
        break;
    case FlashOutput::UPLOADING:
        printLine(QStringLiteral("Entering uploading state"));
        break;
    case FlashOutput::VERIFYING:
        printLine(QStringLiteral("Entering verifying state"));
        break;
    default:
        finish();
        break;
    }
}

void FirmwareFlasher::abort(Error showError)
{
    letUploaderEnd();
    endRun();
    report([this, showError] { showError(ui, window()); });
}

void FirmwareFlasher::finish()
{
    letUploaderEnd();
    endRun();
    report([this] {
        const QPointer<FirmwareFlasher> self(this);
        emit flashed();
        if (self != nullptr) {
            chargingCompleteDialogueBox();
        }
    });
}

void FirmwareFlasher::checkAppFrozen()
{
    if (process == nullptr || clock() - lastActivity < longestSilence) {
        return;
    }
    const QString logName = FirmwareErrors::getFileName(logFile.get());
    endRun();
    stopWatchdog();
    report([this, logName] { FirmwareErrors::error9(window(), logName); });
}

void FirmwareFlasher::endRun()
{
    release();
    stage = FlashOutput::FINISHED;
    lastActivity = clock();
}

void FirmwareFlasher::letUploaderEnd()
{
    process->disconnect(this);
    new FinishingRun(process, turn, std::move(logFile)); // deletes itself with the process
    process.clear();
    turn.clear();
}

void FirmwareFlasher::release()
{
    Uploader::giveUp(process, this, turn);
    process.clear();
    turn.clear();
    logFile.reset();
}

void FirmwareFlasher::report(const std::function<void()>& show)
{
    // Not from within the process's own signal: its end would be handled in a dialog's event loop.
    QMetaObject::invokeMethod(
        this,
        [this, show] {
            const QPointer<FirmwareFlasher> self(this);
            show();
            if (self != nullptr) { // the window may have gone while the dialog was open
                ui->submitButton->setEnabled(true);
                emit ended();
            }
        },
        Qt::QueuedConnection);
}

void FirmwareFlasher::startTimeoutTimer()
{
    stopWatchdog();
    watchdog = new QTimer(this);
    connect(watchdog, &QTimer::timeout, this, &FirmwareFlasher::checkAppFrozen);
    watchdog->start(watchdogInterval);
}

void FirmwareFlasher::stopWatchdog()
{
    if (watchdog != nullptr) {
        watchdog->stop();
        watchdog->deleteLater(); // this may be called from its own signal
        watchdog = nullptr;
    }
}

void FirmwareFlasher::chargingCompleteDialogueBox()
{
    const QPointer<KelvaronResetDialog> dialog = new KelvaronResetDialog(
        QStringLiteral("Firmware Successfully Flashed!"), comPort, window());
    dialog->exec();
    delete dialog; // unless it was deleted with the window
}

void FirmwareFlasher::cleanUI()
{
    for (QProgressBar* bar : {ui->eraseFlashPB, ui->loadFilePB, ui->uploadPB, ui->verifyPB}) {
        bar->setMaximum(100);
        bar->setValue(0);
    }
    for (QLabel* mark : {ui->eraseFlashCM, ui->loadFileCM, ui->uploadCM, ui->verifyCM}) {
        mark->hide();
        mark->setText(checkMark);
    }
}

void FirmwareFlasher::updateGUI()
{
    lastActivity = clock();
    switch (stage) {
    case FlashOutput::ERASING:
        showBusy(ui->eraseFlashPB);
        break;
    case FlashOutput::LOADING:
        showMark(ui->eraseFlashCM);
        ui->eraseFlashPB->setMaximum(100);
        showBusy(ui->loadFilePB);
        break;
    case FlashOutput::UPLOADING:
        showMark(ui->loadFileCM);
        ui->loadFilePB->setMaximum(100);
        break;
    case FlashOutput::VERIFYING:
        showMark(ui->uploadCM);
        ui->uploadPB->setValue(100);
        break;
    case FlashOutput::VERIFIED:
        showMark(ui->verifyCM);
        ui->verifyPB->setValue(100);
        break;
    default:
        break;
    }
}

QWidget* FirmwareFlasher::window() const
{
    return qobject_cast<QWidget*>(parent());
}
} // namespace FirmwareTool
