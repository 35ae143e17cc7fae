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
    /// The uploader overwrites the file at `hexFilePath`.
    DownloadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent);

    /// A run that still goes on is given up.
    ~DownloadProfiles() override;

    void start();

    /// What to start in place of the uploader in the working folder.
    void setProgram(const QString& path) { program = path; }

signals:
    /// The area was read.
    void finished();

    /// The run could not be started or failed. Emitted twice when the uploader crashes.
    void errorDownloading();

    /// Another program has the port, `holder` says which, for the user. Nothing was started.
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
