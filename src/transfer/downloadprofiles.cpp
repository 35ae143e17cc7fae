#include "transfer/downloadprofiles.h"

namespace UploadDownload
{
DownloadProfiles::DownloadProfiles(const QString& portName, const QString& hexFilePath,
                                   QObject* parent)
    : QObject(parent), port(portName), filePath(hexFilePath)
{}

DownloadProfiles::~DownloadProfiles()
{
    Uploader::giveUp(downloadProcess, this, turn);
}

void DownloadProfiles::start()
{
    turn = new PortTurn(port, QStringLiteral("Reading profiles"), this);
    turn->whenFree([this] { downloadHEX(); }, [this](const QString& holder) { refuse(holder); });
}

void DownloadProfiles::downloadHEX()
{
    downloadProcess = new QProcess(parent());
    connect(downloadProcess, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &DownloadProfiles::downloadHEXFinished);
    connect(downloadProcess, &QProcess::errorOccurred, this, &DownloadProfiles::onError);
    const QStringList operation =
        QStringList{QStringLiteral("-l")} + Uploader::profileArea() + QStringList{filePath};
    downloadProcess->start(program, Uploader::arguments(port, operation), QIODevice::ReadWrite);
    Uploader::dropOutput(downloadProcess);
}

void DownloadProfiles::downloadHEXFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    Uploader::end(downloadProcess);
    delete turn;
    if (Uploader::hasSucceeded(exitCode, exitStatus)) {
        emit finished();
    } else {
        emit errorDownloading();
    }
}

void DownloadProfiles::refuse(const QString& holder)
{
    delete turn;
    emit portInUse(holder);
}

void DownloadProfiles::onError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        delete turn; // finished() is not emitted then
    }
    emit errorDownloading();
}
} // namespace UploadDownload
