#include "transfer/downloadprofiles.h"

#include "transfer/uploader.h"

namespace UploadDownload
{
DownloadProfiles::DownloadProfiles(const QString& portName, const QString& hexFilePath,
                                   QObject* parent)
    : QObject(parent), port(portName), filePath(hexFilePath)
{}

DownloadProfiles::~DownloadProfiles()
{
    Uploader::giveUp(downloadProcess);
}

void DownloadProfiles::start()
{
    downloadHEX();
}

void DownloadProfiles::downloadHEX()
{
    downloadProcess = new QProcess(parent());
    connect(downloadProcess, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &DownloadProfiles::downloadHEXFinished);
    connect(downloadProcess, &QProcess::errorOccurred, this, &DownloadProfiles::errorDownloading);
    const QStringList operation =
        QStringList{QStringLiteral("-l")} + Uploader::profileArea() + QStringList{filePath};
    downloadProcess->start(Uploader::program(), Uploader::arguments(port, operation),
                           QIODevice::ReadWrite);
    Uploader::dropOutput(downloadProcess);
}

void DownloadProfiles::downloadHEXFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    Uploader::end(downloadProcess);
    if (Uploader::hasSucceeded(exitCode, exitStatus)) {
        emit finished();
    } else {
        emit errorDownloading();
    }
}
} // namespace UploadDownload
