#include "transfer/uploader.h"

#include "base/buildconstants.h"
#include "serialports/portturn.h"

#include <QCoreApplication>

#include <cstdlib>

QString Uploader::program()
{
    return QStringLiteral("./") + QString::fromLatin1(BuildConstants::uploaderFileName);
}

QStringList Uploader::arguments(const QString& portName, const QStringList& operation)
{
    return QStringList{QStringLiteral("-s"), portName, QStringLiteral("-h"), QStringLiteral("-V")}
           + operation;
}

QStringList Uploader::profileArea()
{
    return {QStringLiteral("0x9C00"), QStringLiteral("0xA000")};
}

bool Uploader::hasSucceeded(int exitCode, QProcess::ExitStatus exitStatus)
{
    return exitStatus == QProcess::NormalExit && exitCode == EXIT_SUCCESS;
}

void Uploader::dropOutput(QProcess* process)
{
    process->closeReadChannel(QProcess::StandardOutput);
    dropErrorOutput(process);
}

void Uploader::dropErrorOutput(QProcess* process)
{
    process->closeReadChannel(QProcess::StandardError);
}

void Uploader::end(QProcess* process)
{
    if (process == nullptr) {
        return;
    }
    process->kill();
    if (process->state() == QProcess::NotRunning) {
        process->close();
    }
}

void Uploader::giveUp(QProcess* process, const QObject* owner, PortTurn* turn)
{
    if (process == nullptr) {
        delete turn;
        return;
    }
    process->disconnect(owner);
    process->kill();
    // A killed process ends in a moment. One that hangs in its driver must not block the window.
    constexpr int patience = 100; // milliseconds
    if (process->state() == QProcess::NotRunning || process->waitForFinished(patience)) {
        delete turn;
        process->deleteLater();
        return;
    }
    detach(process, turn);
}

void Uploader::detach(QProcess* process, PortTurn* turn)
{
    process->setParent(QCoreApplication::instance());
    if (turn != nullptr) {
        turn->setParent(process);
    }
    QObject::connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), process,
                     &QObject::deleteLater);
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
    }
}
