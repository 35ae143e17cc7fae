#pragma once

#include "transfer/portturn.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>

namespace UploadDownload
{
/// Reads the charger's profile area into an Intel HEX file, in one run of the uploader.
///
/// The process becomes a child of the worker's own parent.
class DownloadProfiles : public QObject
{
    Q_OBJECT

public:
    /// The uploader overwrites the file at `hexFilePath`.
    DownloadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent);

    /// A run that still goes on is given up.
    ~DownloadProfiles() override;

    void start();

signals:
    /// The area was read.
    void finished();

    /// The run could not be started or failed. Emitted twice when the uploader crashes.
    void errorDownloading();

public slots:
    void downloadHEX();
    void downloadHEXFinished(int exitCode, QProcess::ExitStatus exitStatus);

private:
    void onError(QProcess::ProcessError error);

    QString port;
    QString filePath;
    QPointer<PortTurn> turn;
    QPointer<QProcess> downloadProcess;
};
} // namespace UploadDownload
