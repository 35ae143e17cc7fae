#pragma once

#include "serialports/portturn.h"
#include "transfer/uploader.h"

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
    /// The uploader writes to the file at `hexFilePath`, replacing it.
    DownloadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent);

    /// Abandons a run in progress.
    ~DownloadProfiles() override;

    void start();

    /// Sets the program to start instead of the uploader in the working folder.
    void setProgram(const QString& path) { program = path; }

signals:
    /// Emitted when the area was read.
    void finished();

    /// Emitted when the run could not be started or failed; twice if the uploader crashes.
    void errorDownloading();

    /// Emitted when another program, `holder`, has the port. Nothing was started.
    void portInUse(const QString& holder);

public slots:
    void downloadHEX();
    void downloadHEXFinished(int exitCode, QProcess::ExitStatus exitStatus);

private:
    void onError(QProcess::ProcessError error);
    void refuse(const QString& holder);

    QString port;
    QString program = Uploader::program();
    QString filePath;
    QPointer<PortTurn> turn;
    QPointer<QProcess> downloadProcess;
};
} // namespace UploadDownload
