#include "transfer/uploadprofiles.h"

#include "transfer/uploader.h"

namespace UploadDownload
{
UploadProfiles::UploadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent)
    : QObject(parent), port(portName), filePath(hexFilePath)
{}

UploadProfiles::~UploadProfiles()
{
    Uploader::giveUp(eraseProcess);
    Uploader::giveUp(flashProcess);
}

void UploadProfiles::start()
{
    eraseEEPROM();
}

void UploadProfiles::eraseEEPROM()
{
    eraseProcess = run(QStringList{QStringLiteral("-E")} + Uploader::profileArea(),
                       &UploadProfiles::eraseFinished);
}

void UploadProfiles::eraseFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    Uploader::end(eraseProcess);
    if (Uploader::hasSucceeded(exitCode, exitStatus)) {
        flashEEPROM();
    } else {
        emit errorUploading();
    }
}

void UploadProfiles::flashEEPROM()
{
    flashProcess = run({QStringLiteral("-w"), filePath}, &UploadProfiles::flashFinished);
}

void UploadProfiles::flashFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    Uploader::end(flashProcess);
    if (Uploader::hasSucceeded(exitCode, exitStatus)) {
        emit finished();
    } else {
        emit errorUploading();
    }
}

QProcess* UploadProfiles::run(const QStringList& operation, EndHandler onFinished)
{
    auto* process = new QProcess(parent());
    connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, onFinished);
    connect(process, &QProcess::errorOccurred, this, &UploadProfiles::errorUploading);
    process->start(Uploader::program(), Uploader::arguments(port, operation), QIODevice::ReadWrite);
    Uploader::dropOutput(process);
    return process;
}
} // namespace UploadDownload
