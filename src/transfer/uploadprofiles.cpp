#include "transfer/uploadprofiles.h"

#include "base/textfile.h"

#include <QFile>

namespace UploadDownload
{
UploadProfiles::UploadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent)
    : QObject(parent), port(portName), filePath(hexFilePath)
{}

UploadProfiles::~UploadProfiles()
{
    Uploader::giveUp(eraseProcess, this, flashProcess == nullptr ? turn.data() : nullptr);
    Uploader::giveUp(flashProcess, this, turn);
}

void UploadProfiles::start()
{
    turn = new PortTurn(port, QStringLiteral("Writing profiles"), this);
    turn->whenFree([this] { eraseEEPROM(); }, [this](const QString& holder) { refuse(holder); });
}

void UploadProfiles::eraseEEPROM()
{
    if (!provideImage()) {
        fail(); // before anything in the charger is erased
        return;
    }
    eraseProcess = run(QStringList{QStringLiteral("-E")} + Uploader::profileArea(),
                       &UploadProfiles::eraseFinished);
}

void UploadProfiles::eraseFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    Uploader::end(eraseProcess);
    if (Uploader::hasSucceeded(exitCode, exitStatus)) {
        flashEEPROM();
    } else {
        fail();
    }
}

void UploadProfiles::flashEEPROM()
{
    if (!provideImage()) {
        fail();
        return;
    }
    flashProcess = run({QStringLiteral("-w"), filePath}, &UploadProfiles::flashFinished);
}

void UploadProfiles::flashFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    Uploader::end(flashProcess);
    if (!Uploader::hasSucceeded(exitCode, exitStatus)) {
        fail();
        return;
    }
    delete turn;
    emit finished();
}

bool UploadProfiles::provideImage() const
{
    if (image.isNull()) {
        return true;
    }
    QFile file(filePath);
    return (file.open(QIODevice::ReadOnly) && file.readAll() == image)
           || TextFile::writeBytes(filePath, image);
}

QProcess* UploadProfiles::run(const QStringList& operation, EndHandler onFinished)
{
    auto* process = new QProcess(parent());
    connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, onFinished);
    connect(process, &QProcess::errorOccurred, this, &UploadProfiles::onError);
    process->start(program, Uploader::arguments(port, operation), QIODevice::ReadWrite);
    Uploader::dropOutput(process);
    return process;
}

void UploadProfiles::onError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        delete turn; // finished() is not emitted then
    }
    emit errorUploading();
}

void UploadProfiles::refuse(const QString& holder)
{
    delete turn;
    emit portInUse(holder);
}

void UploadProfiles::fail()
{
    delete turn;
    emit errorUploading();
}
} // namespace UploadDownload
