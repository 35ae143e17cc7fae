#include "firmware/finishingrun.h"

#include "transfer/uploader.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTimer>

namespace FirmwareTool
{
FinishingRun::FinishingRun(QProcess* finishingProcess, PortTurn* turn,
                           std::unique_ptr<QFile> logFile, int milliseconds)
    : QObject(finishingProcess), process(finishingProcess), log(std::move(logFile))
{
    connect(process, &QProcess::readyReadStandardOutput, this, &FinishingRun::logOutput);
    QTimer::singleShot(milliseconds, process, &QProcess::kill);
    logOutput();
    Uploader::detach(process, turn);
}

FinishingRun::~FinishingRun() = default;

void FinishingRun::waitForAll()
{
    const QList<FinishingRun*> runs = QCoreApplication::instance()->findChildren<FinishingRun*>();
    for (const FinishingRun* run : runs) {
        run->process->waitForFinished(patience);
    }
}

void FinishingRun::logOutput()
{
    const QByteArray chunk = process->readAllStandardOutput();
    if (log->isOpen()) {
        log->write(chunk);
        log->flush();
    }
    outputLeft -= chunk.size();
    if (outputLeft < 0) {
        process->kill();
    }
}
} // namespace FirmwareTool
